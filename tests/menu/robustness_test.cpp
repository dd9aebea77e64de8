// Menus and file selectors on hostile data: rows past the object table,
// listings counted beyond their arrays, menus outside the table or listing
// themselves.
#include "velumo_test.hpp"

#include <cstdio>

namespace velumo::test {
namespace {

constexpr uint32_t kList = 8, kTemplate = 9;

class MenuGuards : public ScreenTest {
protected:
    // List 8 with template row 9, the last loaded record, and two spare records.
    void load_list()
    {
        FormBuilder form;
        vel_object_file_rec &list = form.object(kList);
        list.type = VEL_TYPE_WINDOW;
        list.x = 50, list.y = 40, list.width = 220, list.height = 300;
        list.dep_objs[0] = kTemplate;
        vel_object_file_rec &row = form.object(kTemplate);
        row.type = VEL_TYPE_LABEL;
        row.x = 60, row.y = 50, row.width = 150, row.height = 20;
        row.master = kList;
        load(form, nullptr, 2);
    }
};

TEST_F(MenuGuards, RowsStopAtTheEndOfTheTable)
{
    load_list();
    ctx().object_count = 1000; // claims more records than the table has
    vel_prepare_fileselector(&ctx(), kList, 20);
    const uint32_t *rows = object(kList).dep_objs;
    EXPECT_EQ(rows[1], 10u);
    EXPECT_EQ(rows[2], 11u);
    EXPECT_EQ(rows[3], 0u);
    EXPECT_EQ(object(11).master, kList);

    // A template outside the table makes no rows; nor does a list outside it.
    object(kList).dep_objs[0] = 5000;
    object(kList).dep_objs[1] = 0;
    vel_prepare_fileselector(&ctx(), kList, 20);
    EXPECT_EQ(object(kList).dep_objs[1], 0u);
    vel_prepare_fileselector(&ctx(), 5000, 20);
    EXPECT_EQ(object(0).dep_objs[0], 0u);
}

TEST_F(MenuGuards, ListingsAreReadOnlyInsideTheirArrays)
{
    load_list();
    vel_prepare_fileselector(&ctx(), kList, 2);
    ctx().dir_last = 500;
    for (uint32_t i = 0; i < VEL_DIR_ENTRIES; ++i) {
        ctx().dir_order[i] = i % 2 == 0 ? 5000 : i;
        std::snprintf(ctx().dir_names[i], VEL_DIR_NAME_BYTES, "name%u", i);
    }
    vel_load_dir_entries(&ctx(), kList);
    EXPECT_STREQ(object(kTemplate).label, "");
    EXPECT_STREQ(object(10).label, "name1");
    EXPECT_EQ(object(kList).height, 2u * (20 + 3) + 40);
    vel_load_dir_entries(&ctx(), 5000);
}

TEST_F(MenuGuards, MenusOutsideTheTableOrListingThemselvesEnd)
{
    load_list();
    EXPECT_EQ(vel_move_out_menu(&ctx(), 5000, 0), 0u);

    vel_object &menu = object(kList);
    menu.type = VEL_TYPE_MENU;
    menu.dep_objs[0] = kList;
    menu.dep_objs[1] = kTemplate;
    object(kTemplate).dep_objs[0] = kList;
    SDL_WarpMouse(kScreenWidth - 1, kScreenHeight - 1); // off the menu: it closes at once
    EXPECT_EQ(vel_move_out_menu(&ctx(), kList, 0), 0u);
    EXPECT_EQ(menu.hidden, 1u);
}

} // namespace
} // namespace velumo::test
