// Start-up and shutdown: which record fields reach the objects, when the text
// file is read, fonts and pictures, the mark colour, and the exits on missing files.
#include "velumo_test.hpp"

#include <SDL_image.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace velumo::test {
namespace {

using StartUp = ScreenTest;

FormBuilder form_of(uint32_t records)
{
    FormBuilder form;
    for (uint32_t k = 1; k <= records; ++k)
        form.object(k).type = VEL_TYPE_LABEL;
    return form;
}

TEST_F(StartUp, LoadsWholeRecordsAndIgnoresTrailingBytes)
{
    FormBuilder form = form_of(9);
    vel_object_file_rec &last = form.object(9);
    last.x = 123;
    last.y = 45;
    last.width = 67;
    last.height = 89;
    set_string(last.label, "last one");
    last.clip_mode = 2;
    last.scroll_max_y = 777;
    const std::string path = dir_.path("form.vel");
    form.write(path, 300);

    ASSERT_EQ(vel_load_form(&ctx(), 5, 0, path.c_str(), "/nonexistent"), 1);
    EXPECT_EQ(ctx().object_count, 9u);
    EXPECT_EQ(object(9).x, 123u);
    EXPECT_EQ(object(9).height, 89u);
    EXPECT_STREQ(object(9).label, "last one");
    EXPECT_EQ(object(9).clip_mode, 2u);
    EXPECT_EQ(object(9).scroll_max_y, 777u);
    // The first record is object 1; the spare records behind are zero.
    EXPECT_EQ(object(1).type, static_cast<uint32_t>(VEL_TYPE_LABEL));
    for (uint32_t k = 10; k <= 14; ++k)
        EXPECT_EQ(object(k).type, 0u) << k;
}

TEST_F(StartUp, HiddenIsLoadedOnlyForTopLevelObjectsAndMenus)
{
    FormBuilder form = form_of(12);
    auto hidden = [&](uint32_t n, uint32_t type, uint32_t master) {
        form.object(n).type = type;
        form.object(n).master = master;
        form.object(n).hidden = 1;
    };
    hidden(8, VEL_TYPE_WINDOW, 0);
    hidden(9, VEL_TYPE_LABEL, 8);
    hidden(10, VEL_TYPE_MENU, 8);
    hidden(11, VEL_TYPE_EMPTY, 0);
    hidden(12, VEL_TYPE_TEXT, 0);
    load(form);
    EXPECT_EQ(object(8).hidden, 1u);
    EXPECT_EQ(object(9).hidden, 0u) << "a dependent starts visible";
    EXPECT_EQ(object(10).hidden, 1u) << "a menu keeps its flag";
    EXPECT_EQ(object(11).hidden, 0u) << "an empty record never hides";
    EXPECT_EQ(object(12).hidden, 1u);
}

TEST_F(StartUp, DependentsAreLoadedOnlyWhenTheFirstIsNonzero)
{
    FormBuilder form = form_of(10);
    form.object(8).dep_objs[0] = 9;
    form.object(8).dep_objs[1] = 0;
    form.object(8).dep_objs[2] = 10;
    form.object(9).dep_objs[0] = 0;
    form.object(9).dep_objs[1] = 10;
    load(form);
    EXPECT_EQ(object(8).dep_objs[0], 9u);
    EXPECT_EQ(object(8).dep_objs[2], 10u) << "entries behind a gap are still copied";
    EXPECT_EQ(object(9).dep_objs[1], 0u);
}

TEST_F(StartUp, RunTimeFieldsStartAtZero)
{
    FormBuilder form = form_of(8);
    vel_object_file_rec &r = form.object(8);
    r.reserved_number_of_lines = 5;
    r.reserved_cursor_x = 6;
    r.reserved_cursor_y = 7;
    r.reserved_cursor_line = 8;
    r.reserved_cursor_column = 9;
    r.reserved_scroll_x = 10;
    r.reserved_scroll_y = 11;
    r.text_length = 12;
    load(form);
    const vel_object &o = object(8);
    EXPECT_EQ(o.number_of_lines + o.cursor_x + o.cursor_y + o.cursor_line + o.cursor_column, 0u);
    EXPECT_EQ(o.scroll_x + o.scroll_y, 0u);
    EXPECT_EQ(o.own_font, nullptr);
    EXPECT_EQ(o.image, nullptr);
    EXPECT_EQ(o.stream, nullptr);
    EXPECT_EQ(o.text_length, 12u);
}

TEST_F(StartUp, StringWithoutTerminatorIsCutAndReported)
{
    FormBuilder form = form_of(8);
    std::fill(std::begin(form.object(8).label), std::end(form.object(8).label), 'x');
    OutputCapture out;
    load(form);
    EXPECT_EQ(std::string(object(8).label), std::string(67, 'x'));
    EXPECT_NE(out.finish().find("object 8: label"), std::string::npos);
}

TEST_F(StartUp, TextFileIsReadOnlyWhenAnObjectHasText)
{
    load(form_of(8));
    EXPECT_EQ(ctx().text_count, 0u);
    EXPECT_EQ(ctx().text_recs, nullptr);
    EXPECT_EQ(ctx().text_bufs, nullptr);
}

TEST_F(StartUp, TextRecordsStartAtOneWithSpareRecordsZeroed)
{
    FormBuilder form = form_of(8);
    form.object(8).text_index = 2;
    TextBuilder texts;
    texts.set(1, "first");
    texts.set(2, "second");
    texts.text(2).cursor_index = 3;
    load(form, &texts, 0, 2);
    EXPECT_EQ(ctx().text_count, 2u);
    EXPECT_STREQ(ctx().text_recs[1].text, "first");
    EXPECT_STREQ(ctx().text_recs[2].text, "second");
    EXPECT_EQ(ctx().text_recs[2].cursor_index, 3u);
    EXPECT_EQ(ctx().text_recs[4].text[0], '\0');
    // Line buffers for records 0..4 plus one spare behind the block.
    for (int i = 0; i < 6 * VEL_LINE_BUFFER_BYTES; ++i)
        ASSERT_EQ(ctx().text_bufs[i], '\0') << i;
}

TEST_F(StartUp, MissingFormFileReportsFailure)
{
    OutputCapture out;
    EXPECT_EQ(vel_load_form(&ctx(), 0, 0, dir_.path("none.vel").c_str(), "x"), -1);
    EXPECT_EQ(out.finish(), "Can't open file.\n");
    EXPECT_EQ(ctx().objects, nullptr);
}

TEST_F(StartUp, MissingTextFileReportsFailureWithTwoLineEnds)
{
    FormBuilder form = form_of(8);
    form.object(8).text_index = 1;
    form.write(dir_.path("form.vel"));
    OutputCapture out;
    EXPECT_EQ(
        vel_load_form(&ctx(), 0, 0, dir_.path("form.vel").c_str(), dir_.path("none.vel").c_str()),
        -1);
    EXPECT_EQ(out.finish(), "Can't open file !\n\n");
    EXPECT_EQ(ctx().objects, nullptr);
}

// vel_start_velumo ends the process with status 0; its message goes to
// standard output, which the death test child sends to stderr to match it.
void start_with_stdout_on_stderr(vel_context *ctx, const std::string &form, const std::string &text)
{
    std::fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    vel_start_velumo(ctx, 0, 0, form.c_str(), text.c_str());
}

TEST_F(StartUp, StartExitsWithStatusZeroOnMissingFormFile)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(start_with_stdout_on_stderr(&ctx(), dir_.path("none.vel"), "x"),
                ::testing::ExitedWithCode(0), "Can't open file\\.");
}

TEST_F(StartUp, StartExitsWithStatusZeroOnMissingTextFile)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    FormBuilder form = form_of(8);
    form.object(8).text_index = 1;
    form.write(dir_.path("form.vel"));
    EXPECT_EXIT(start_with_stdout_on_stderr(&ctx(), dir_.path("form.vel"), dir_.path("none.vel")),
                ::testing::ExitedWithCode(0), "Can't open file !");
}

// Start-up asks for write access and counts a read-only form as missing;
// vel_load_form only reads, so an installed read-only form loads.
TEST_F(StartUp, ReadOnlyFormLoadsOnlyThroughLoadForm)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string path = dir_.path("form.vel");
    form_of(8).write(path);
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(dir_.root().c_str(), 0755), 0);
    EXPECT_EXIT(
        {
            become_unprivileged();
            vel_context fresh{};
            std::_Exit(vel_load_form(&fresh, 0, 0, path.c_str(), "x") == 1 ? 3 : 4);
        },
        ::testing::ExitedWithCode(3), "");
    EXPECT_EXIT(
        {
            become_unprivileged();
            start_with_stdout_on_stderr(&ctx(), path, "x");
        },
        ::testing::ExitedWithCode(0), "Permission denied(.|\n)*Can't open file\\.");
}

// Besides the quoted lines on standard output, loading tells standard error
// which file failed and why, and warns of bytes that are no whole record.
TEST_F(StartUp, LoadingExplainsFileProblemsOnStandardError)
{
    struct Case {
        const char *name;
        long bytes; // -1: no file at all
        const char *message;
    };
    constexpr long record = sizeof(vel_object_file_rec);
    const Case cases[] = {
        {"missing", -1, "velumo: cannot open form file '%s': No such file or directory\n"},
        {"no whole record", 100,
         "velumo: warning: form file '%s' holds no whole 776-byte record\n"},
        {"trailing bytes", 2 * record + 5,
         "velumo: warning: form file '%s' ends in 5 bytes that are no whole 776-byte record; "
         "they are ignored\n"},
        {"whole records", 2 * record, ""},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = dir_.path(std::string(c.name) + ".vel");
        if (c.bytes >= 0) std::ofstream(path, std::ios::binary) << std::string(c.bytes, '\0');
        vel_context fresh{};
        OutputCapture out;
        OutputCapture err(stderr);
        const int32_t result = vel_load_form(&fresh, 0, 0, path.c_str(), "x");
        char expected[256];
        std::snprintf(expected, sizeof expected, c.message, path.c_str());
        EXPECT_EQ(err.finish(), expected);
        EXPECT_EQ(result, c.bytes < 0 ? -1 : 1);
        std::free(fresh.objects);
    }
}

TEST_F(StartUp, StartLoadsLikeLoadForm)
{
    FormBuilder form = form_of(8);
    form.write(dir_.path("form.vel"));
    vel_start_velumo(&ctx(), 0, 0, dir_.path("form.vel").c_str(), "/nonexistent");
    EXPECT_EQ(ctx().object_count, 8u);
}

TEST_F(StartUp, MarkColourFollowsFrameMode)
{
    const vel_rgb preset{1, 2, 3};
    for (uint32_t mode : {0u, 1u, 2u}) {
        vel_context c{};
        c.mark_colour = preset;
        c.mark_colour_a = {10, 20, 30};
        c.mark_colour_b = {40, 50, 60};
        c.frame_mode = mode;
        form_of(8).write(dir_.path("form.vel"));
        ASSERT_EQ(vel_load_form(&c, 0, 0, dir_.path("form.vel").c_str(), "x"), 1);
        const vel_rgb expected = mode == 0 ? c.mark_colour_a : mode == 1 ? c.mark_colour_b : preset;
        EXPECT_EQ(c.mark_colour, expected) << "frame_mode " << mode;
        std::free(c.objects);
    }
}

TEST_F(StartUp, FontsOpenAndTheLastTriedDecidesTheResult)
{
    FormBuilder form = form_of(10);
    form.object(8).font_choice = 1;
    // A '%' in the path is no format: nothing reads stray arguments.
    const std::string missing = dir_.path("missing%s%s%n.ttf");
    set_string(form.object(8).font_path, missing);
    form.object(9).font_choice = 1;
    form.object(9).font_size = 20;
    set_string(form.object(9).font_path, kFontPath);
    form.object(10).font_choice = 0;
    OutputCapture out;
    load(form);
    const std::string printed = out.finish();
    EXPECT_EQ(object(8).own_font, nullptr);
    ASSERT_NE(object(9).own_font, nullptr);
    EXPECT_EQ(TTF_FontHeight(object(9).own_font) > TTF_FontHeight(ctx().font), true);
    EXPECT_EQ(object(10).own_font, nullptr);
    EXPECT_EQ(printed.rfind("TTF_OpenFont: Couldn't open " + missing, 0), 0u) << printed;

    EXPECT_EQ(vel_load_object_fonts(&ctx(), 9), 1);
    OutputCapture again;
    EXPECT_EQ(vel_load_object_fonts(&ctx(), 8), 1) << "a failure followed by a success reports 1";
    EXPECT_EQ(vel_load_object_fonts(&ctx(), 11), 0) << "nothing tried";
}

TEST_F(StartUp, PicturesReplaceTheSizeAndBecomeTypeNine)
{
    SDL_Surface *picture = SDL_CreateRGBSurface(SDL_SWSURFACE, 3, 5, 32, 0xFF0000, 0xFF00, 0xFF, 0);
    ASSERT_NE(picture, nullptr);
    const std::string picture_path = dir_.path("picture.bmp");
    ASSERT_EQ(SDL_SaveBMP(picture, picture_path.c_str()), 0);
    SDL_FreeSurface(picture);

    FormBuilder form = form_of(9);
    form.object(8).type = VEL_TYPE_PICTURE_FILE;
    form.object(8).width = 100;
    form.object(8).height = 100;
    set_string(form.object(8).image_path, picture_path);
    form.object(9).type = VEL_TYPE_PICTURE_FILE;
    set_string(form.object(9).image_path, dir_.path("missing.png"));
    load(form);

    EXPECT_EQ(object(8).type, static_cast<uint32_t>(VEL_TYPE_PICTURE));
    ASSERT_NE(object(8).image, nullptr);
    EXPECT_EQ(object(8).width, 3u);
    EXPECT_EQ(object(8).height, 5u);
    EXPECT_EQ(object(9).type, static_cast<uint32_t>(VEL_TYPE_PICTURE_FILE));
    EXPECT_EQ(object(9).image, nullptr);

    // The last picture tried decides: object 9 fails after 8 is already loaded.
    EXPECT_EQ(vel_load_object_images(&ctx(), 0), -1);
    object(9).type = VEL_TYPE_PICTURE_FILE;
    set_string(object(9).image_path, picture_path);
    object(8).type = VEL_TYPE_PICTURE_FILE;
    set_string(object(8).image_path, dir_.path("missing.png"));
    SDL_Surface *kept = object(8).image;
    EXPECT_EQ(vel_load_object_images(&ctx(), 0), 1) << "a failure followed by a success reports 1";
    SDL_FreeSurface(kept);
}

TEST_F(StartUp, CloseFreesEverythingOnceAndLeavesTextsWhenAsked)
{
    FormBuilder form = form_of(8);
    form.object(8).text_index = 1;
    form.object(8).font_choice = 1;
    form.object(8).font_size = 12;
    set_string(form.object(8).font_path, kFontPath);
    TextBuilder texts;
    texts.set(1, "hello");
    load(form, &texts);
    ctx().texts_loaded = 0;
    ctx().text_surface = SDL_CreateRGBSurface(SDL_SWSURFACE, 4, 4, 32, 0, 0, 0, 0);
    vel_text_rec *records = ctx().text_recs;
    char *buffers = ctx().text_bufs;
    close();
    EXPECT_EQ(ctx().objects, nullptr);
    EXPECT_EQ(ctx().font, nullptr);
    EXPECT_EQ(ctx().text_surface, nullptr);
    EXPECT_EQ(ctx().text_recs, records) << "texts_loaded 0 keeps the text memory";
    EXPECT_EQ(ctx().text_bufs, buffers);
    std::free(records);
    std::free(buffers);
}

// Unloading keeps the display and the default font, so a second form loads
// into the same context; numbers of the first form's objects are cleared.
TEST_F(StartUp, UnloadReleasesTheFormAndKeepsTheDisplay)
{
    FormBuilder form = form_of(9);
    form.object(9).text_index = 1;
    form.object(9).font_choice = 1;
    form.object(9).font_size = 12;
    set_string(form.object(9).font_path, kFontPath);
    TextBuilder texts;
    texts.set(1, "hello");
    load(form, &texts);
    ctx().texts_loaded = 1;
    ctx().active_window = ctx().cursor_object = ctx().window_to_activate = 9;
    ctx().window_count = 1;
    vel_unload_form(&ctx());
    EXPECT_EQ(ctx().objects, nullptr);
    EXPECT_EQ(ctx().text_recs, nullptr);
    EXPECT_EQ(ctx().object_count + ctx().text_count + ctx().active_window + ctx().cursor_object +
                  ctx().window_to_activate + ctx().window_count,
              0u);
    ASSERT_NE(ctx().screen, nullptr);
    ASSERT_NE(ctx().font, nullptr);

    const std::string second = dir_.path("second.vel");
    form_of(12).write(second);
    ASSERT_EQ(vel_load_form(&ctx(), 0, 0, second.c_str(), "x"), 1);
    EXPECT_EQ(ctx().object_count, 12u);
}

} // namespace
} // namespace velumo::test
