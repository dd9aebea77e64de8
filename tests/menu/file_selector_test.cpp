// The file selector: rows from a template, the directory listing and its
// first-character order, rows filled and the rest hidden, bad listings.
#include "menu/file_selector.hpp"
#include "velumo_test.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace velumo::test {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kList = 8;
constexpr uint32_t kTemplate = 9;

// Makes a directory the working directory while alive.
class WorkingDirectory {
public:
    explicit WorkingDirectory(const fs::path &dir) : saved_(fs::current_path())
    {
        fs::current_path(dir);
    }
    ~WorkingDirectory() { fs::current_path(saved_); }
    WorkingDirectory(const WorkingDirectory &) = delete;
    WorkingDirectory &operator=(const WorkingDirectory &) = delete;

private:
    fs::path saved_;
};

class FileSelectorTest : public ScreenTest {
protected:
    // `records` objects: the list 8 and its template row 9.
    void load_list(uint32_t records, uint32_t extra_objs = 0)
    {
        FormBuilder form;
        form.object(records);
        vel_object_file_rec &list = form.object(kList);
        list.x = 50, list.y = 40, list.width = 220, list.height = 300;
        list.type = VEL_TYPE_WINDOW;
        list.dep_objs[0] = kTemplate;
        vel_object_file_rec &row = form.object(kTemplate);
        row.x = 60, row.y = 50, row.width = 150, row.height = 20;
        row.type = VEL_TYPE_LABEL;
        row.master = kList;
        row.fill_r = 1, row.fill_g = 2, row.fill_b = 3;
        row.text_r = 4, row.text_g = 5, row.text_b = 6;
        row.margin_top = 2, row.margin_left = 3, row.margin_right = 7;
        load(form, nullptr, extra_objs);
    }
    fs::path make_directory(const std::vector<std::string> &files, const std::string &name = "d")
    {
        const fs::path dir = dir_.root() / name;
        fs::create_directory(dir);
        for (const std::string &file : files)
            std::ofstream(dir / file).put('x');
        return dir;
    }
    void set_listing(const std::vector<std::string> &names)
    {
        for (std::size_t i = 0; i < names.size(); ++i) {
            set_string(ctx().dir_names[i], names[i]);
            ctx().dir_order[i] = static_cast<uint32_t>(i);
        }
        ctx().dir_last = static_cast<uint32_t>(names.size() - 1);
    }
    std::vector<std::string> listing()
    {
        std::vector<std::string> names;
        for (uint32_t k = 0; k <= ctx().dir_last; ++k)
            names.emplace_back(ctx().dir_names[ctx().dir_order[k]]);
        return names;
    }
};

TEST_F(FileSelectorTest, RowsAreStackedThreePixelsApartUnderTheTemplate)
{
    load_list(20);
    vel_prepare_fileselector(&ctx(), kList, 4);
    for (uint32_t k = 1; k <= 4; ++k) {
        const vel_object &row = object(kTemplate + k);
        EXPECT_EQ(object(kList).dep_objs[k], kTemplate + k);
        EXPECT_EQ(row.y, 50u + 23 * k);
        EXPECT_EQ(row.x, 60u);
        EXPECT_EQ(row.width, 150u);
        EXPECT_EQ(row.height, 20u);
        EXPECT_EQ(row.type, static_cast<uint32_t>(VEL_TYPE_LABEL));
        EXPECT_EQ(row.master, kList);
        EXPECT_EQ(row.fill_b, 3u);
        EXPECT_EQ(row.text_g, 5u);
        EXPECT_EQ(row.margin_top, 2u);
        EXPECT_EQ(row.margin_left, 3u);
        EXPECT_EQ(row.margin_right, 0u) << "not copied";
    }
    EXPECT_EQ(object(kList).dep_objs[5], 0u);
}

TEST_F(FileSelectorTest, AtMostOneRowPastTheLoadedObjects)
{
    load_list(12, 3);
    vel_prepare_fileselector(&ctx(), kList, 6);
    EXPECT_EQ(object(kList).dep_objs[4], 13u);
    EXPECT_EQ(object(kList).dep_objs[5], 0u);
    EXPECT_EQ(object(14).master, 0u);
}

TEST_F(FileSelectorTest, RowsStayWithinTheDependentList)
{
    load_list(120);
    vel_prepare_fileselector(&ctx(), kList, 500);
    EXPECT_EQ(object(kList).dep_objs[99], 108u);
    EXPECT_EQ(object(kList).scroll_x, 0u) << "the field behind the list";
    EXPECT_EQ(object(109).master, 0u);
}

TEST_F(FileSelectorTest, AListWithoutDependentsGetsNoRows)
{
    load_list(20);
    object(kList).dep_objs[0] = 0;
    vel_prepare_fileselector(&ctx(), kList, 3);
    EXPECT_EQ(object(kList).dep_objs[1], 0u);
    EXPECT_EQ(object(10).master, 0u);
}

TEST_F(FileSelectorTest, TheListingHoldsEveryEntryOrderedByFirstCharacter)
{
    load_list(20);
    const fs::path dir = make_directory({"b", "a2", "a1", "Zed"});
    {
        WorkingDirectory cwd(dir);
        vel_read_app_dir(&ctx());
    }
    const std::vector<std::string> names = listing();
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()),
              (std::set<std::string>{".", "..", "a1", "a2", "b", "Zed"}));
    ASSERT_EQ(names.size(), 6u);
    EXPECT_TRUE(
        std::is_sorted(names.begin(), names.end(), [](const std::string &a, const std::string &b) {
            return static_cast<unsigned char>(a[0]) < static_cast<unsigned char>(b[0]);
        }));
}

TEST_F(FileSelectorTest, ExchangesDecideTheOrderWithinAFirstCharacter)
{
    load_list(20);
    set_listing({"b", "a2", "a1"});
    detail::order_by_first_character(&ctx());
    EXPECT_EQ(listing(), (std::vector<std::string>{"a2", "a1", "b"}));

    set_listing({"b1", "a1", "b2", "a2"});
    detail::order_by_first_character(&ctx());
    EXPECT_EQ(listing(), (std::vector<std::string>{"a1", "a2", "b2", "b1"}));
}

TEST_F(FileSelectorTest, AHundredEntriesAreKeptAndLongNamesCut)
{
    load_list(20);
    std::vector<std::string> files;
    for (int i = 0; i < 147; ++i)
        files.push_back("f" + std::to_string(i));
    const std::string long_name(200, 'L');
    files.push_back(long_name);
    const fs::path dir = make_directory(files);
    {
        WorkingDirectory cwd(dir);
        vel_read_app_dir(&ctx());
    }
    EXPECT_EQ(ctx().dir_last, 99u);
    std::set<uint32_t> order(ctx().dir_order, ctx().dir_order + 100);
    EXPECT_EQ(order.size(), 100u);
    EXPECT_EQ(*order.rbegin(), 99u);
    for (const std::string &name : listing())
        EXPECT_LE(name.size(), 64u);

    const fs::path only_long = make_directory({long_name}, "long");
    {
        WorkingDirectory cwd(only_long);
        vel_read_app_dir(&ctx());
    }
    const std::vector<std::string> names = listing();
    EXPECT_NE(std::find(names.begin(), names.end(), long_name.substr(0, 64)), names.end());
}

TEST_F(FileSelectorTest, ARemovedDirectoryLeavesNothingToShow)
{
    load_list(20);
    vel_prepare_fileselector(&ctx(), kList, 2);
    const fs::path dir = make_directory({}, "gone");
    {
        WorkingDirectory cwd(dir);
        fs::remove(dir);
        vel_read_app_dir(&ctx());
    }
    EXPECT_EQ(ctx().dir_last, 0u);
    vel_load_dir_entries(&ctx(), kList);
    EXPECT_EQ(object(kTemplate).width, 150u);
    EXPECT_EQ(object(kList).height, 300u);
}

TEST_F(FileSelectorTest, RowsShowTheNamesAndTheRestAreHidden)
{
    load_list(20);
    vel_prepare_fileselector(&ctx(), kList, 4);
    set_listing({"zeta", ".", "alpha"});
    ctx().dir_order[0] = 2, ctx().dir_order[2] = 0;
    vel_load_dir_entries(&ctx(), kList);

    EXPECT_STREQ(object(9).label, "alpha") << "the template is the first row";
    EXPECT_STREQ(object(10).label, ".");
    EXPECT_STREQ(object(11).label, "zeta");
    for (uint32_t r : {9u, 10u, 11u}) {
        EXPECT_EQ(object(r).width, 180u);
        EXPECT_EQ(object(r).hidden, 0u);
    }
    for (uint32_t r : {12u, 13u}) {
        EXPECT_EQ(object(r).width, 0u);
        EXPECT_EQ(object(r).hidden, 1u);
    }
    EXPECT_EQ(object(kList).height, 3u * (20 + 3) + 40);
}

TEST_F(FileSelectorTest, ASingleEntryIsNotShown)
{
    load_list(20);
    set_listing({"."});
    vel_load_dir_entries(&ctx(), kList);
    EXPECT_STREQ(object(kTemplate).label, "");
    EXPECT_EQ(object(kList).height, 300u);
}

TEST_F(FileSelectorTest, ABadListingStaysInsideItsTables)
{
    load_list(20);
    vel_prepare_fileselector(&ctx(), kList, 4);
    set_listing({"a", "b", "c", "d", "e"});
    std::fill(std::begin(ctx().dir_names[1]), std::end(ctx().dir_names[1]), 'q'); // no NUL
    ctx().dir_order[0] = 500;
    ctx().dir_last = 1000;
    vel_load_dir_entries(&ctx(), kList);
    EXPECT_STREQ(object(9).label, "");
    EXPECT_EQ(std::string(object(10).label), std::string(64, 'q'));
    EXPECT_STREQ(object(13).label, "e");
    EXPECT_EQ(object(kList).height, 5u * 23 + 40);

    detail::order_by_first_character(&ctx()); // must not index past the tables
}

} // namespace
} // namespace velumo::test
