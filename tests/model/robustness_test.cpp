// Loading malformed forms: the table sizes kept in record 0, numbers outside
// the tables reported once and set to none, cycles reported and kept.
#include "velumo_test.hpp"

#include <cstdlib>
#include <string>

namespace velumo::test {
namespace {

FormBuilder labels(uint32_t records)
{
    FormBuilder form;
    for (uint32_t k = 1; k <= records; ++k)
        form.object(k).type = VEL_TYPE_LABEL;
    return form;
}

class Loading : public ScreenTest {
protected:
    std::string load_printing(const FormBuilder &form, const TextBuilder *texts = nullptr,
                              uint32_t extra_objs = 0, uint32_t extra_texts = 0)
    {
        OutputCapture capture;
        load(form, texts, extra_objs, extra_texts);
        return capture.finish();
    }
};

TEST_F(Loading, AValidFormRecordsTheTableSizesAndPrintsNothing)
{
    FormBuilder form = labels(10);
    form.object(8).type = VEL_TYPE_WINDOW;
    form.object(8).dep_objs[0] = 9;
    form.object(8).dep_objs[1] = 13; // a spare record is a valid target
    form.object(9).master = 8;
    form.object(9).text_index = 4; // a spare text record too
    TextBuilder texts;
    texts.set(2, "two");
    EXPECT_EQ(load_printing(form, &texts, 3, 2), "");
    EXPECT_EQ(object(0).reserved, 10u + 3 + 1);
    EXPECT_EQ(ctx().text_recs[0].reserved, 2u + 2 + 1);
    EXPECT_EQ(object(8).dep_objs[1], 13u);
    EXPECT_EQ(object(9).master, 8u);
    EXPECT_EQ(object(9).text_index, 4u);
}

TEST_F(Loading, NumbersOutsideTheTablesAreReportedOnceAndBecomeNone)
{
    FormBuilder form = labels(12);
    form.object(8).master = 5000;
    form.object(8).hidden = 1;
    form.object(9).master = 9;
    form.object(9).hidden = 1;
    uint32_t *deps = form.object(10).dep_objs;
    deps[0] = 11, deps[1] = 900, deps[2] = 12, deps[3] = 901;
    form.object(11).text_index = 3;
    form.object(12).text_index = 4; // one text record and two spare: 4 is outside
    TextBuilder texts;
    texts.set(1, "one");

    EXPECT_EQ(load_printing(form, &texts, 2, 2),
              "velumo: object 8: master 5000 is outside the table, set to 0\n"
              "velumo: object 9: master is the object itself, set to 0\n"
              "velumo: object 10: dep_objs entry 900 is outside the table, set to 0\n"
              "velumo: object 12: text_index 4 is outside the text records, set to 0\n");
    // Top level now, so the record's hidden flag is taken.
    EXPECT_EQ(object(8).master, 0u);
    EXPECT_EQ(object(8).hidden, 1u);
    EXPECT_EQ(object(9).master, 0u);
    EXPECT_EQ(object(9).hidden, 1u);
    const uint32_t *kept = object(10).dep_objs;
    EXPECT_EQ(kept[0], 11u);
    EXPECT_EQ(kept[1], 0u);
    EXPECT_EQ(kept[2], 12u);
    EXPECT_EQ(kept[3], 0u);
    EXPECT_EQ(object(11).text_index, 3u);
    EXPECT_EQ(object(12).text_index, 0u);
}

TEST_F(Loading, CyclesAreReportedAndLeftForTheWalks)
{
    FormBuilder form = labels(16);
    form.object(8).master = 9;
    form.object(9).master = 10;
    form.object(10).master = 8;
    form.object(11).dep_objs[0] = 12;
    form.object(12).dep_objs[0] = 11;
    form.object(13).dep_objs[0] = 13;
    // A diamond is no cycle: 14 lists 15 three times, 15 lists 16 twice.
    for (int i = 0; i < 3; ++i)
        form.object(14).dep_objs[i] = 15;
    form.object(15).dep_objs[0] = form.object(15).dep_objs[1] = 16;

    EXPECT_EQ(load_printing(form), "velumo: object 8: master chain runs in a cycle\n"
                                   "velumo: object 9: master chain runs in a cycle\n"
                                   "velumo: object 10: master chain runs in a cycle\n"
                                   "velumo: object 12: dep_objs entry 11 closes a cycle\n"
                                   "velumo: object 13: dep_objs entry 13 closes a cycle\n");
    EXPECT_EQ(object(10).master, 8u);
    EXPECT_EQ(object(12).dep_objs[0], 11u);
    EXPECT_EQ(object(13).dep_objs[0], 13u);
}

// A table the application allocates itself has no size in record 0: its
// objects 1..object_count count, and keys, hits and drawing reach them.
TEST_F(Loading, ATableMadeWithoutTheLoaderCountsObjectCountRecords)
{
    constexpr uint32_t kWindow = 9, kField = 8, kCount = 10;
    auto *objects = static_cast<vel_object *>(std::calloc(kCount + 1, sizeof(vel_object)));
    ASSERT_NE(objects, nullptr);
    vel_object &window = objects[kWindow];
    window.type = VEL_TYPE_WINDOW;
    window.x = 100, window.y = 100, window.width = 200, window.height = 150;
    window.fill_g = 200;
    window.dep_objs[0] = kField;
    vel_object &field = objects[kField];
    field.type = VEL_TYPE_ENTRY;
    field.editable = 1;
    field.master = kWindow;
    field.x = 120, field.y = 120, field.width = 100, field.height = 30;
    field.fill_b = 200;
    ctx().objects = objects;
    ctx().object_count = kCount;
    ctx().cursor_object = kField;
    ctx().active_window = kWindow;
    ctx().window_stack[0] = kWindow;
    ctx().window_count = 1;

    ctx().event.type = SDL_KEYDOWN;
    ctx().event.key.keysym.sym = SDLK_a;
    vel_getfirstkeyinformation(&ctx());
    EXPECT_EQ(ctx().key_code, uint32_t{'a'});
    EXPECT_EQ(vel_test_all_objects(&ctx(), 150, 130), kField);
    EXPECT_EQ(vel_test_all_objects(&ctx(), 250, 200), kWindow);
    vel_draw_all_objects(&ctx(), 0, 0);
    EXPECT_EQ(at(250, 200), (vel_rgb{0, 200, 0}));
    EXPECT_EQ(at(150, 140), (vel_rgb{0, 0, 200}));
}

} // namespace
} // namespace velumo::test
