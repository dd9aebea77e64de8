// Form edits for the designer.  Values and new objects are read by the TOML
// reader and whole forms judged by a write-and-read round trip, so the
// designer accepts exactly what `velform check` accepts.
#include "designer/edits.hpp"

#include "fields.hpp"
#include "toml_reader.hpp"
#include "toml_writer.hpp"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>

namespace velform::designer {

namespace {

namespace fs = std::filesystem;

// Objects as the palette makes them: a size and the look of a finished form.
struct Template {
    std::string_view word;
    std::string_view keys;
};
constexpr Template kTemplates[] = {
    {"window", "width = 240\nheight = 160\nfill = \"#ebebf0\"\nborder_style = \"shadow\"\n"
               "border_inset = 3\nborder_colour = \"#5a5a64\"\nmargin_left = 6\n"
               "margin_top = 6\nmargin_right = 6\nmargin_bottom = 6\n"},
    {"label", "width = 100\nheight = 21\nlabel = \"Label\"\nfill = \"#d7dbe6\"\n"
              "margin_left = 4\nmargin_top = 2\n"},
    {"text", "width = 160\nheight = 60\nfill = \"#ffffff\"\neditable = true\n"},
    {"entry", "width = 140\nheight = 21\nfill = \"#ffffff\"\neditable = true\nmax_chars = 64\n"
              "margin_left = 3\nmargin_top = 2\nborder_style = \"frame\"\n"},
    {"number", "width = 80\nheight = 21\nfill = \"#ffffff\"\neditable = true\nmax_chars = 9\n"
               "margin_left = 3\nmargin_top = 2\nborder_style = \"frame\"\n"},
    {"picture", "width = 64\nheight = 64\nborder_style = \"frame\"\n"},
    {"menu", "width = 120\nheight = 72\nfill = \"#f7f7f2\"\nborder_style = \"shadow\"\n"
             "border_colour = \"#5a5a64\"\n"},
    {"chain", "width = 160\nheight = 100\nfill = \"#ffffff\"\n"},
};

bool is_digits(std::string_view text)
{
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// The value as TOML: numbers and flags bare, everything else a string, so
// that the reader judges what was typed and names what would be valid.
std::string toml_value(const FieldSpec &field, std::string_view value)
{
    switch (field.kind) {
    case FieldKind::Number: return is_digits(value) ? std::string(value) : toml_string(value);
    case FieldKind::Flag:
        return is_digits(value) || value == "true" || value == "false" ? std::string(value)
                                                                       : toml_string(value);
    case FieldKind::Choice: return is_digits(value) ? std::string(value) : toml_string(value);
    default: return toml_string(value);
    }
}

// Reads a one-object form; its object is object 8 behind the frame buttons.
std::optional<vel_object_file_rec> read_probe(const std::string &body, std::string &error)
{
    Diagnostics d;
    const std::optional<Form> probe =
        read_toml_form("[[object]]\nname = \"value\"\n" + body, "value", std::string(), d);
    for (const Diagnostic &diagnostic : d.all())
        if (diagnostic.severity == Severity::Error) {
            error = diagnostic.message;
            return std::nullopt;
        }
    if (!probe) return std::nullopt;
    return probe->object(kFirstFormObject);
}

const FieldSpec *field_named(std::string_view key)
{
    const auto found = std::find_if(kFields.begin(), kFields.end(),
                                    [key](const FieldSpec &f) { return f.key == key; });
    return found == kFields.end() ? nullptr : &*found;
}

std::string unique_name(const Form &form, std::string_view word)
{
    for (uint32_t k = form.object_count() + 1;; ++k) {
        std::string name = std::string(word) + "_" + std::to_string(k);
        if (std::find(form.names.begin(), form.names.end(), name) == form.names.end()) return name;
    }
}

void drop_dependent(vel_object_file_rec &master, uint32_t number)
{
    uint32_t *end = std::remove(std::begin(master.dep_objs), std::end(master.dep_objs), number);
    std::fill(end, std::end(master.dep_objs), 0u);
}

bool append_dependent(vel_object_file_rec &master, uint32_t number)
{
    uint32_t *free = std::find(std::begin(master.dep_objs), std::end(master.dep_objs), 0u);
    if (free == std::end(master.dep_objs)) return false;
    *free = number;
    return true;
}

std::string too_many(const Form &form, uint32_t master)
{
    return "'" + form.names[master - 1] + "' has " + std::to_string(kMaxDependents) +
           " dependents already, the most an object can list";
}

// The change when the checks accept it, else `form` as it was.
std::string keep_if_valid(Form &form, Form changed, const fs::path &file)
{
    const std::string error = first_error(changed, file);
    if (error.empty()) form = std::move(changed);
    return error;
}

} // namespace

std::string first_error(const Form &form, const fs::path &file)
{
    std::ostringstream toml;
    write_toml_form(form, "", toml);
    Diagnostics d;
    read_toml_form(toml.str(), file, std::string(), d);
    for (const Diagnostic &diagnostic : d.all())
        if (diagnostic.severity == Severity::Error) return diagnostic.message;
    return {};
}

Form with_resolved_paths(const Form &form, const fs::path &file)
{
    std::ostringstream toml;
    write_toml_form(form, "", toml);
    Diagnostics d;
    std::optional<Form> resolved = read_toml_form(toml.str(), file, std::nullopt, d);
    return resolved ? *resolved : form;
}

std::vector<uint32_t> subtree(const Form &form, uint32_t number)
{
    std::vector<uint32_t> found{number};
    for (std::size_t k = 0; k < found.size() && found.size() <= form.object_count(); ++k)
        for (uint32_t d : listed_dependents(form.object(found[k])))
            if (d >= 1 && d <= form.object_count() &&
                std::find(found.begin(), found.end(), d) == found.end())
                found.push_back(d);
    return found;
}

std::string add_object(Form &form, std::string_view word, uint32_t master, uint32_t x, uint32_t y,
                       uint32_t &added, const std::filesystem::path &file)
{
    const auto kind = std::find_if(std::begin(kTemplates), std::end(kTemplates),
                                   [word](const Template &t) { return t.word == word; });
    if (kind == std::end(kTemplates)) return "the palette has no '" + std::string(word) + "'";
    std::string error;
    const std::optional<vel_object_file_rec> made =
        read_probe("type = \"" + std::string(word) + "\"\nx = " + std::to_string(x) +
                       "\ny = " + std::to_string(y) + "\n" + std::string(kind->keys),
                   error);
    if (!made) return error;
    Form changed = form;
    changed.objects.push_back(*made);
    changed.names.push_back(unique_name(form, word));
    const uint32_t number = changed.object_count();
    if (master != 0) {
        if (!append_dependent(changed.object(master), number)) return too_many(form, master);
        changed.object(number).master = master;
    }
    error = keep_if_valid(form, std::move(changed), file);
    if (error.empty()) added = number;
    return error;
}

std::string remove_object(Form &form, uint32_t number, const std::filesystem::path &file)
{
    if (number < kFirstFormObject || number > form.object_count())
        return "choose an object of the form first";
    std::vector<uint32_t> gone = subtree(form, number);
    std::sort(gone.begin(), gone.end());
    std::vector<uint32_t> renumbered(form.object_count() + 1, 0);
    Form changed;
    changed.texts = form.texts;
    changed.text_names = form.text_names;
    for (uint32_t n = 1; n <= form.object_count(); ++n) {
        if (std::binary_search(gone.begin(), gone.end(), n)) continue;
        changed.objects.push_back(form.object(n));
        changed.names.push_back(form.names[n - 1]);
        renumbered[n] = changed.object_count();
    }
    for (vel_object_file_rec &o : changed.objects) {
        drop_dependent(o, number);
        o.master = o.master <= form.object_count() ? renumbered[o.master] : 0;
        for (uint32_t &d : o.dep_objs)
            d = d <= form.object_count() ? renumbered[d] : 0;
    }
    return keep_if_valid(form, std::move(changed), file);
}

void move_object(Form &form, uint32_t number, int dx, int dy)
{
    const std::vector<uint32_t> moving = subtree(form, number);
    for (uint32_t n : moving) {
        dx = std::max(dx, -static_cast<int>(std::min<uint32_t>(form.object(n).x, 1u << 30)));
        dy = std::max(dy, -static_cast<int>(std::min<uint32_t>(form.object(n).y, 1u << 30)));
    }
    for (uint32_t n : moving) {
        form.object(n).x += static_cast<uint32_t>(dx);
        form.object(n).y += static_cast<uint32_t>(dy);
    }
}

std::string reparent(Form &form, uint32_t number, uint32_t master,
                     const std::filesystem::path &file)
{
    const std::vector<uint32_t> below = subtree(form, number);
    if (std::find(below.begin(), below.end(), master) != below.end())
        return "'" + form.names[number - 1] + "' cannot go inside itself or its own dependents";
    Form changed = form;
    vel_object_file_rec &o = changed.object(number);
    if (o.master != 0) drop_dependent(changed.object(o.master), number);
    o.master = master;
    if (master != 0 && !append_dependent(changed.object(master), number))
        return too_many(form, master);
    return keep_if_valid(form, std::move(changed), file);
}

std::string set_property(Form &form, uint32_t number, std::string_view key, std::string_view value,
                         const std::filesystem::path &file)
{
    Form changed = form;
    if (key == "name") {
        changed.names[number - 1] = value;
        return keep_if_valid(form, std::move(changed), file);
    }
    vel_object_file_rec &o = changed.object(number);
    if (key == "text") {
        if (o.text_index == 0) {
            changed.texts.push_back({});
            changed.text_names.push_back(changed.names[number - 1] + "_text");
            o.text_index = changed.text_count();
        }
        if (value.size() > kMaxTextLength)
            return "text: " + std::to_string(value.size()) + " characters; at most " +
                   std::to_string(kMaxTextLength) + " fit";
        set_field_text(changed.texts[o.text_index - 1].text, value);
        return keep_if_valid(form, std::move(changed), file);
    }
    const FieldSpec *field = field_named(key);
    if (!field) return "no property '" + std::string(key) + "'";
    std::string error;
    const std::string typed = std::string(key) + " = " + toml_value(*field, value) + "\n";
    const std::optional<vel_object_file_rec> probe =
        read_probe(key == "type" ? typed : "type = \"label\"\n" + typed, error);
    if (!probe) return error;
    if (field->string) std::copy_n((*probe).*field->string, kStringBytes, o.*field->string);
    for (NumberField part : {field->number, field->green, field->blue})
        if (part) o.*part = (*probe).*part;
    return keep_if_valid(form, std::move(changed), file);
}

std::string property(const Form &form, uint32_t number, std::string_view key)
{
    const vel_object_file_rec &o = form.object(number);
    if (key == "name") return form.names[number - 1];
    if (key == "text")
        return o.text_index == 0 || o.text_index > form.text_count()
                   ? std::string()
                   : std::string(field_text(form.texts[o.text_index - 1].text));
    const FieldSpec *field = field_named(key);
    if (!field) return {};
    switch (field->kind) {
    case FieldKind::String: return std::string(field_text(o.*field->string));
    case FieldKind::Colour:
        return hex_colour(o.*field->number & 0xFF, o.*field->green & 0xFF, o.*field->blue & 0xFF);
    case FieldKind::Flag:
        return o.*field->number == 1   ? "true"
               : o.*field->number == 0 ? "false"
                                       : std::to_string(o.*field->number);
    case FieldKind::Choice:
        return o.*field->number < field->words.size() ? std::string(field->words[o.*field->number])
                                                      : std::to_string(o.*field->number);
    default: return std::to_string(o.*field->number);
    }
}

} // namespace velform::designer
