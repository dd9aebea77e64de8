// Form checks on the loaded records: table ranges, type codes, master and
// dependent agreement, cycles, files, and warnings for suspicious geometry.
#include "checker.hpp"

#include "fields.hpp"

#include <algorithm>
#include <system_error>

namespace velform {

namespace {

std::string text_range(const Form &form)
{
    return form.text_count() == 0 ? "the text file holds no texts"
                                  : "texts 1.." + std::to_string(form.text_count());
}

class FormChecker {
public:
    FormChecker(const Form &form, const Locator &where, Severity disagreement, Diagnostics &d)
        : form_(form), where_(where), disagreement_(disagreement), d_(d)
    {
    }

    void run()
    {
        for (uint32_t n = 1; n <= form_.object_count(); ++n) {
            check_numbers(n);
            check_files(n);
            check_geometry(n);
        }
        // Agreement and cycles only make sense once every number is inside.
        if (!numbers_inside_) return;
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            check_agreement(n);
        check_cycles();
    }

private:
    bool inside(uint32_t number) const { return number >= 1 && number <= form_.object_count(); }

    void check_numbers(uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        if (o.type >= kTypeWords.size())
            d_.error(where_.object(n, "type"), "type code " + std::to_string(o.type) +
                                                   " is not one the library knows; valid: 0.." +
                                                   std::to_string(kTypeWords.size() - 1) + " (" +
                                                   one_of(kTypeWords) + ")");
        if (o.master == n) {
            numbers_inside_ = false;
            d_.error(where_.object(n, "master"), "the object is its own master");
        } else if (o.master != 0 && !inside(o.master)) {
            numbers_inside_ = false;
            d_.error(where_.object(n, "master"), "master " + std::to_string(o.master) +
                                                     " is outside the table (" +
                                                     object_range(form_) + ", or 0 for none)");
        }
        for (uint32_t d : o.dep_objs)
            if (d != 0 && !inside(d)) {
                numbers_inside_ = false;
                d_.error(where_.object(n, "children"), "dependent " + std::to_string(d) +
                                                           " is outside the table (" +
                                                           object_range(form_) + ")");
                break;
            }
        if (o.text_index > form_.text_count())
            d_.error(where_.object(n, "text"), "text " + std::to_string(o.text_index) +
                                                   " is outside the text file (" +
                                                   text_range(form_) + ", or 0 for none)");
    }

    void check_file(uint32_t n, std::string_view field, std::string_view path,
                    std::string_view what)
    {
        if (path.empty()) {
            d_.warning(where_.object(n, field),
                       "no " + std::string(what) + " named; " + std::string(field) + " is empty");
            return;
        }
        const std::filesystem::path file = where_.asset(n, field);
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error))
            d_.error(where_.object(n, field),
                     std::string(what) + " '" + file.string() + "' does not exist");
    }

    void check_files(uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        if (opens_image(o)) check_file(n, "image_path", field_text(o.image_path), "picture");
        if (opens_font(o)) check_file(n, "font_path", field_text(o.font_path), "font");
    }

    void check_geometry(uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        if (o.type == VEL_TYPE_EMPTY) return;
        if (o.width == 0 || o.height == 0)
            d_.warning(where_.object(n, o.width == 0 ? "width" : "height"),
                       "zero size: the object is neither drawn nor hit");
        if (o.hidden != 0 && o.master != 0 && o.type != VEL_TYPE_MENU)
            d_.warning(where_.object(n, "hidden"),
                       "hidden is not loaded for a dependent other than a menu; the object "
                       "starts visible");
        if (!inside(o.master) || n <= kFrameButtons) return;
        const vel_object_file_rec &m = form_.object(o.master);
        const auto apart = [](uint64_t a, uint64_t a_size, uint64_t b, uint64_t b_size) {
            return a + a_size <= b || b + b_size <= a;
        };
        if (o.width != 0 && o.height != 0 &&
            (apart(o.x, o.width, m.x, m.width) || apart(o.y, o.height, m.y, m.height)))
            d_.warning(where_.object(n, "x"),
                       "the object lies wholly outside its master '" + form_.names[o.master - 1] +
                           "' (" + std::to_string(m.x) + "," + std::to_string(m.y) + " size " +
                           std::to_string(m.width) + "x" + std::to_string(m.height) + ")");
    }

    void check_agreement(uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        const auto lists = [&](uint32_t master, uint32_t dependent) {
            const std::vector<uint32_t> list = listed_dependents(form_.object(master));
            return std::find(list.begin(), list.end(), dependent) != list.end();
        };
        if (o.master != 0 && !lists(o.master, n))
            d_.add(disagreement_, where_.object(n, "master"),
                   "master is '" + form_.names[o.master - 1] +
                       "', but that object does not list it among its dependents");
        // A chain head's list is its chain: the members may hang on another
        // master (the window that moves and clips them).
        const bool chain_head = o.type == VEL_TYPE_CHAIN && o.master == 0;
        for (uint32_t d : listed_dependents(o))
            if (form_.object(d).master != n &&
                !(chain_head && form_.object(d).type == VEL_TYPE_CHAIN))
                d_.add(disagreement_, where_.object(n, "children"),
                       "lists '" + form_.names[d - 1] + "' as a dependent, but its master is " +
                           (form_.object(d).master == 0
                                ? std::string("none")
                                : "'" + form_.names[form_.object(d).master - 1] + "'"));
    }

    // A cycle among masters or among dependents lists; reported once, at
    // its lowest-numbered object.
    void check_cycles()
    {
        for (uint32_t n = 1; n <= form_.object_count(); ++n) {
            std::vector<uint32_t> chain{n};
            for (uint32_t m = form_.object(n).master;
                 m != 0 && chain.size() <= form_.objects.size(); m = form_.object(m).master) {
                if (m == n) {
                    if (*std::min_element(chain.begin(), chain.end()) == n)
                        d_.error(where_.object(n, "master"),
                                 "masters run in a cycle: " + path_of(chain, n));
                    break;
                }
                chain.push_back(m);
            }
        }
        std::vector<int> state(form_.objects.size() + 1, 0);
        std::vector<uint32_t> path;
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            visit(n, state, path);
    }

    // Depth first over the dependents lists: state 1 on the path, 2 done.
    void visit(uint32_t n, std::vector<int> &state, std::vector<uint32_t> &path)
    {
        if (state[n] != 0) return;
        state[n] = 1;
        path.push_back(n);
        for (uint32_t d : listed_dependents(form_.object(n))) {
            if (state[d] == 1) {
                const auto from = std::find(path.begin(), path.end(), d);
                d_.error(where_.object(n, "children"),
                         "dependents run in a cycle: " +
                             path_of(std::vector<uint32_t>(from, path.end()), d));
            } else {
                visit(d, state, path);
            }
        }
        path.pop_back();
        state[n] = 2;
    }

    std::string path_of(const std::vector<uint32_t> &chain, uint32_t closing) const
    {
        std::string out;
        for (uint32_t k : chain)
            out += "'" + form_.names[k - 1] + "' -> ";
        return out + "'" + form_.names[closing - 1] + "'";
    }

    const Form &form_;
    const Locator &where_;
    Severity disagreement_;
    Diagnostics &d_;
    bool numbers_inside_ = true;
};

} // namespace

std::string object_range(const Form &form)
{
    return form.object_count() == 0 ? "the table is empty"
                                    : "objects 1.." + std::to_string(form.object_count());
}

void check_form(const Form &form, const Locator &where, Severity disagreement,
                Diagnostics &diagnostics)
{
    FormChecker(form, where, disagreement, diagnostics).run();
}

} // namespace velform
