// The TOML reader: form keys, texts, frame buttons and objects, names
// resolved into object and text numbers, masters derived from children,
// picture and font paths rewritten for where the form runs.
#include "toml_reader.hpp"

#include "checker.hpp"
#include "fields.hpp"
#include "latin1.hpp"

#include <toml++/toml.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <sstream>
#include <tuple>
#include <variant>

namespace velform {

namespace {

namespace fs = std::filesystem;
using Position = toml::source_position;

bool before(const Position &a, const Position &b)
{
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

std::string describe(const toml::node &node)
{
    switch (node.type()) {
    case toml::node_type::string: return "a string";
    case toml::node_type::integer: return "a whole number";
    case toml::node_type::floating_point: return "a decimal number";
    case toml::node_type::boolean: return "true or false";
    case toml::node_type::array: return "an array";
    case toml::node_type::table: return "a table";
    default: return "a date or time";
    }
}

std::vector<std::string_view> object_keys()
{
    std::vector<std::string_view> keys(kReferenceKeys.begin(), kReferenceKeys.end());
    for (const FieldSpec &field : kFields)
        keys.push_back(field.key);
    return keys;
}

const FieldSpec *field_named(std::string_view key)
{
    const auto found = std::find_if(kFields.begin(), kFields.end(),
                                    [&](const FieldSpec &f) { return f.key == key; });
    return found == kFields.end() ? nullptr : &*found;
}

std::string upper(std::string_view name)
{
    std::string out(name);
    for (char &c : out)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

class TomlLocator : public Locator {
public:
    explicit TomlLocator(std::string file) : file_(std::move(file)) {}

    std::string at(const Position &p) const
    {
        return file_ + ":" + std::to_string(p.line) + ":" + std::to_string(p.column);
    }
    std::string object(uint32_t number, std::string_view field) const override
    {
        const auto key = keys.find({number, std::string(field)});
        return at(key != keys.end() ? key->second : objects.at(number - 1));
    }
    std::string text(uint32_t number) const override { return at(texts.at(number - 1)); }
    fs::path asset(uint32_t number, std::string_view field) const override
    {
        return assets.at({number, std::string(field)});
    }

    std::map<std::pair<uint32_t, std::string>, Position> keys;
    std::map<std::pair<uint32_t, std::string>, fs::path> assets;
    std::vector<Position> objects;
    std::vector<Position> texts;

private:
    std::string file_;
};

// A reference to an object or a text: a name, or a number as it stands.
struct Reference {
    Position where;
    std::variant<std::string, uint32_t> target;
};

struct References {
    std::vector<Reference> children;
    std::optional<Reference> master;
    bool text_length_given = false;
};

class TomlReader {
public:
    TomlReader(const fs::path &file, const std::optional<std::string> &asset_dir, Diagnostics &d)
        : file_(file), asset_option_(asset_dir), where_(file.string()), d_(d)
    {
    }

    std::optional<Form> read(std::string_view source)
    {
        toml::table root;
        try {
            root = toml::parse(source, file_.string());
        } catch (const toml::parse_error &error) {
            d_.error(where_.at(error.source().begin), std::string(error.description()));
            return std::nullopt;
        }
        read_form_keys(root);
        read_texts(root.get("texts"));
        read_objects(root.get("frame_button"), root.get("object"));
        resolve_names();
        resolve_children_and_masters();
        derive_text_lengths();
        rewrite_paths();
        check_form(form_, where_, Severity::Warning, d_);
        if (d_.has_errors()) return std::nullopt;
        return std::move(form_);
    }

private:
    void error(const Position &p, std::string message)
    {
        d_.error(where_.at(p), std::move(message));
    }

    void read_form_keys(const toml::table &root)
    {
        for (auto &&[key, node] : root)
            if (std::find(kFormKeys.begin(), kFormKeys.end(), key.str()) == kFormKeys.end())
                error(key.source().begin, "unknown key '" + std::string(key.str()) + "'" +
                                              did_you_mean(key.str(), kFormKeys) +
                                              "; valid: " + one_of(kFormKeys));
        asset_dir_ = fs::absolute(file_).parent_path().lexically_normal().string();
        if (const toml::node *node = root.get("asset_dir")) {
            if (const auto *dir = node->as_string())
                asset_dir_ = dir->get();
            else
                error(node->source().begin,
                      "asset_dir: expected a string (a directory), found " + describe(*node));
        }
        if (asset_option_) asset_dir_ = *asset_option_;
    }

    std::optional<uint32_t> number(const toml::node &node, std::string_view key)
    {
        if (const auto *value = node.as_integer()) {
            const int64_t v = value->get();
            if (v >= 0 && v <= int64_t{UINT32_MAX}) return static_cast<uint32_t>(v);
        }
        error(node.source().begin, std::string(key) +
                                       ": expected a whole number from 0 to 4294967295, found " +
                                       (node.is_integer() ? "one out of range" : describe(node)));
        return std::nullopt;
    }

    std::optional<std::string> latin1(const toml::node &node, std::string_view key,
                                      std::size_t limit, std::string_view unit)
    {
        const auto *value = node.as_string();
        if (!value) {
            error(node.source().begin,
                  std::string(key) + ": expected a string, found " + describe(node));
            return std::nullopt;
        }
        std::string text;
        Unencodable bad{};
        if (!utf8_to_latin1(value->get(), text, bad)) {
            error(node.source().begin,
                  std::string(key) + ": character " + code_point_name(bad.character) + " at " +
                      std::to_string(bad.index + 1) +
                      " is not in Latin-1, the library's encoding (U+0000..U+00FF)");
            return std::nullopt;
        }
        if (const std::size_t nul = text.find('\0'); nul != std::string::npos) {
            error(node.source().begin,
                  std::string(key) + ": character U+0000 at " + std::to_string(nul + 1) +
                      " would end the string there; the library's strings end at their first "
                      "NUL, so a string may not hold one");
            return std::nullopt;
        }
        if (text.size() > limit) {
            error(node.source().begin, std::string(key) + ": " + std::to_string(text.size()) +
                                           " bytes, over the limit of " + std::to_string(limit) +
                                           " " + std::string(unit));
            return std::nullopt;
        }
        return text;
    }

    template <typename Entries> static void sort_by_position(Entries &entries)
    {
        std::sort(entries.begin(), entries.end(), [](const auto &a, const auto &b) {
            return before(a.first->source().begin, b.first->source().begin);
        });
    }

    void read_texts(const toml::node *texts)
    {
        if (!texts) return;
        const toml::table *table = texts->as_table();
        if (!table) {
            error(texts->source().begin,
                  "texts: expected a table of named texts, found " + describe(*texts));
            return;
        }
        std::vector<std::pair<const toml::key *, const toml::node *>> entries;
        for (auto &&[key, node] : *table)
            entries.emplace_back(&key, &node);
        sort_by_position(entries);
        for (const auto &[key, node] : entries)
            read_text(*key, *node);
    }

    void read_text(const toml::key &key, const toml::node &node)
    {
        vel_text_rec record{};
        const toml::node *text = &node;
        if (const toml::table *table = node.as_table()) {
            for (auto &&[inner, value] : *table)
                if (std::find(kTextKeys.begin(), kTextKeys.end(), inner.str()) == kTextKeys.end())
                    error(inner.source().begin, "unknown key '" + std::string(inner.str()) +
                                                    "' in a text" +
                                                    did_you_mean(inner.str(), kTextKeys) +
                                                    "; valid: " + one_of(kTextKeys));
            text = table->get("text");
            if (const toml::node *cursor = table->get("cursor_index"))
                record.cursor_index = number(*cursor, "cursor_index").value_or(0);
            if (!text) error(node.source().begin, "the text table has no 'text' key");
        }
        if (!is_identifier(key.str()))
            error(key.source().begin, "text name '" + std::string(key.str()) +
                                          "' is not an identifier (letters, digits and _, not "
                                          "starting with a digit)");
        if (text)
            if (auto latin = latin1(*text, key.str(), kMaxTextLength, "bytes of a text"))
                set_field_text(record.text, *latin);
        form_.texts.push_back(record);
        form_.text_names.emplace_back(key.str());
        where_.texts.push_back(key.source().begin);
    }

    const toml::array *tables(const toml::node *node, std::string_view key)
    {
        if (!node) return nullptr;
        const toml::array *array = node->as_array();
        if (!array || !array->is_array_of_tables()) {
            error(node->source().begin, std::string(key) + ": expected [[" + std::string(key) +
                                            "]] tables, found " + describe(*node));
            return nullptr;
        }
        return array;
    }

    void read_objects(const toml::node *frame_node, const toml::node *object_node)
    {
        const toml::array *frame = tables(frame_node, "frame_button");
        const toml::array *objects = tables(object_node, "object");
        const std::size_t frame_count = frame ? frame->size() : 0;
        if (frame_count > kFrameButtons)
            error(frame_node->source().begin, "frame_button: " + std::to_string(frame_count) +
                                                  " frame buttons; a form has seven");
        else if (frame_count > 0 && frame_count < kFrameButtons && objects && !objects->empty())
            error(frame_node->source().begin,
                  "frame_button: " + std::to_string(frame_count) +
                      " frame buttons; a form with objects needs all seven, or none for the "
                      "standard seven");
        if (frame_count == 0) {
            for (std::size_t k = 0; k < kFrameButtons; ++k)
                add_object(standard_frame_button(k), std::string(kFrameButtonNames[k]), {1, 1});
        } else {
            for (std::size_t k = 0; k < frame->size(); ++k)
                read_object(*(*frame)[k].as_table(),
                            k < kFrameButtons ? kFrameButtonNames[k] : std::string_view());
        }
        if (objects)
            for (const toml::node &object : *objects)
                read_object(*object.as_table(), {});
    }

    uint32_t add_object(const vel_object_file_rec &record, std::string name, Position where)
    {
        form_.objects.push_back(record);
        form_.names.push_back(std::move(name));
        where_.objects.push_back(where);
        references_.emplace_back();
        return form_.object_count();
    }

    Reference reference(const toml::node &node, std::string_view key)
    {
        if (const auto *name = node.as_string()) return {node.source().begin, name->get()};
        if (node.is_integer()) return {node.source().begin, number(node, key).value_or(0)};
        error(node.source().begin,
              std::string(key) + ": expected a name or a number, found " + describe(node));
        return {node.source().begin, uint32_t{0}};
    }

    void read_object(const toml::table &table, std::string_view default_name)
    {
        const uint32_t n = add_object({}, std::string(default_name), table.source().begin);
        if (!table.contains("name") && default_name.empty()) {
            error(table.source().begin, "the object has no name; every object needs a unique name");
            form_.names[n - 1] = "object_" + std::to_string(n);
        }
        if (!table.contains("type"))
            error(table.source().begin,
                  "the object has no type; valid: " + list_of(kTypeWords) + ", or a number");
        const std::vector<std::string_view> keys = object_keys();
        for (auto &&[key, node] : table) {
            where_.keys[{n, std::string(key.str())}] = key.source().begin;
            read_key(n, key, node, keys);
        }
    }

    void read_key(uint32_t n, const toml::key &key, const toml::node &node,
                  const std::vector<std::string_view> &keys)
    {
        const std::string_view k = key.str();
        References &refs = references_[n - 1];
        if (k == "name") {
            if (const auto *name = node.as_string(); name && is_identifier(name->get()))
                form_.names[n - 1] = name->get();
            else
                error(node.source().begin, "name: expected an identifier (letters, digits and _, "
                                           "not starting with a digit), found " +
                                               describe(node));
        } else if (k == "text") {
            read_text_reference(n, node);
        } else if (k == "children") {
            if (const toml::array *children = node.as_array())
                for (const toml::node &child : *children)
                    refs.children.push_back(reference(child, "children"));
            else
                error(node.source().begin,
                      "children: expected an array of names, found " + describe(node));
        } else if (k == "master") {
            refs.master = reference(node, "master");
        } else if (const FieldSpec *field = field_named(k)) {
            refs.text_length_given |= k == "text_length";
            read_field(form_.object(n), *field, node);
        } else {
            error(key.source().begin, "unknown key '" + std::string(k) + "'" +
                                          did_you_mean(k, keys) +
                                          "; valid keys are the fields of an object record, "
                                          "name, text, children and master");
        }
    }

    void read_text_reference(uint32_t n, const toml::node &node)
    {
        const Reference ref = reference(node, "text");
        if (const auto *number = std::get_if<uint32_t>(&ref.target)) {
            form_.object(n).text_index = *number;
            return;
        }
        const std::string &name = std::get<std::string>(ref.target);
        const auto found = std::find(form_.text_names.begin(), form_.text_names.end(), name);
        if (found != form_.text_names.end()) {
            form_.object(n).text_index =
                static_cast<uint32_t>(found - form_.text_names.begin() + 1);
            return;
        }
        const std::vector<std::string_view> names(form_.text_names.begin(), form_.text_names.end());
        error(ref.where,
              "text: no text is named '" + name + "'" + did_you_mean(name, names) +
                  (names.empty() ? "; the form has no [texts]" : "; texts: " + one_of(names)));
    }

    void read_field(vel_object_file_rec &o, const FieldSpec &field, const toml::node &node)
    {
        switch (field.kind) {
        case FieldKind::Number:
            if (auto v = number(node, field.key)) o.*field.number = *v;
            break;
        case FieldKind::Flag:
            if (const auto *flag = node.as_boolean())
                o.*field.number = flag->get() ? 1 : 0;
            else if (node.is_integer())
                o.*field.number = number(node, field.key).value_or(0);
            else
                error(node.source().begin, std::string(field.key) +
                                               ": expected true, false or a number, found " +
                                               describe(node));
            break;
        case FieldKind::Choice: read_choice(o, field, node); break;
        case FieldKind::Colour: read_colour(o, field, node); break;
        case FieldKind::String:
            if (auto text = latin1(node, field.key, kMaxStringLength, "bytes of a string"))
                set_field_text(o.*field.string, *text);
            break;
        }
    }

    void read_choice(vel_object_file_rec &o, const FieldSpec &field, const toml::node &node)
    {
        if (node.is_integer()) {
            o.*field.number = number(node, field.key).value_or(0);
            return;
        }
        const auto *word = node.as_string();
        const auto found = word ? std::find(field.words.begin(), field.words.end(), word->get())
                                : field.words.end();
        if (found != field.words.end()) {
            o.*field.number = static_cast<uint32_t>(found - field.words.begin());
            return;
        }
        error(node.source().begin,
              std::string(field.key) + ": " +
                  (word ? "'" + word->get() + "' is not a " + std::string(field.what) +
                              did_you_mean(word->get(), field.words)
                        : "found " + describe(node)) +
                  "; valid: " + list_of(field.words) + ", or a number");
    }

    void read_colour(vel_object_file_rec &o, const FieldSpec &field, const toml::node &node)
    {
        const NumberField parts[3] = {field.number, field.green, field.blue};
        if (const auto *text = node.as_string()) {
            const std::string &s = text->get();
            if (s.size() == 7 && s[0] == '#' && std::all_of(s.begin() + 1, s.end(), [](char c) {
                    return std::isxdigit(static_cast<unsigned char>(c));
                })) {
                for (int i = 0; i < 3; ++i)
                    o.*parts[i] =
                        static_cast<uint32_t>(std::stoul(s.substr(1 + 2 * i, 2), nullptr, 16));
                return;
            }
        } else if (const auto *array = node.as_array(); array && array->size() == 3) {
            for (std::size_t i = 0; i < 3; ++i)
                o.*parts[i] = number((*array)[i], field.key).value_or(0);
            return;
        }
        error(node.source().begin,
              std::string(field.key) +
                  ": expected a colour \"#rrggbb\" or [red, green, blue], "
                  "found " +
                  (node.is_string() ? "\"" + *node.value<std::string>() + "\"" : describe(node)));
    }

    // Names must be unique, also as the header's upper-case macros.
    void resolve_names()
    {
        std::map<std::string, Position> macros{{"OBJECT_COUNT", {}}, {"TEXT_COUNT", {}}};
        const auto claim = [&](const std::string &macro, const std::string &name,
                               const Position &p) {
            const auto [it, fresh] = macros.emplace(macro, p);
            if (!fresh)
                error(p,
                      "name '" + name + "' is taken" +
                          (it->second.line == 0 ? " by the header's count macro"
                                                : " already (at " + where_.at(it->second) +
                                                      "; names must differ also in upper case)"));
        };
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            claim(upper(form_.names[n - 1]), form_.names[n - 1], name_position(n));
        for (uint32_t t = 1; t <= form_.text_count(); ++t)
            claim("TEXT_" + upper(form_.text_names[t - 1]), form_.text_names[t - 1],
                  where_.texts[t - 1]);
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            numbers_.emplace(form_.names[n - 1], n);
    }

    Position name_position(uint32_t n) const
    {
        const auto key = where_.keys.find({n, "name"});
        return key != where_.keys.end() ? key->second : where_.objects[n - 1];
    }

    uint32_t resolve(const Reference &ref, std::string_view key)
    {
        if (const auto *number = std::get_if<uint32_t>(&ref.target)) return *number;
        const std::string &name = std::get<std::string>(ref.target);
        if (const auto found = numbers_.find(name); found != numbers_.end()) return found->second;
        const std::vector<std::string_view> names(form_.names.begin(), form_.names.end());
        error(ref.where,
              std::string(key) + ": no object is named '" + name + "'" + did_you_mean(name, names));
        return 0;
    }

    void resolve_children_and_masters()
    {
        std::vector<uint32_t> parent(form_.objects.size() + 1, 0);
        for (uint32_t n = 1; n <= form_.object_count(); ++n) {
            const std::vector<Reference> &children = references_[n - 1].children;
            if (children.size() > kMaxDependents)
                error(where_.keys.at({n, "children"}),
                      "children: " + std::to_string(children.size()) +
                          " dependents; an object holds at most " + std::to_string(kMaxDependents));
            for (std::size_t i = 0; i < std::min(children.size(), kMaxDependents); ++i) {
                const uint32_t child = resolve(children[i], "children");
                form_.object(n).dep_objs[i] = child;
                if (child == 0 || std::holds_alternative<uint32_t>(children[i].target)) continue;
                if (parent[child] != 0 && !references_[child - 1].master)
                    error(children[i].where,
                          "children: '" + form_.names[child - 1] + "' is already a child of '" +
                              form_.names[parent[child] - 1] +
                              "'; an object has one master (list it once, or give it an "
                              "explicit master)");
                else if (parent[child] == 0)
                    parent[child] = n;
            }
        }
        for (uint32_t n = 1; n <= form_.object_count(); ++n) {
            const auto &master = references_[n - 1].master;
            form_.object(n).master = master ? resolve(*master, "master") : parent[n];
        }
    }

    void derive_text_lengths()
    {
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            if (!references_[n - 1].text_length_given)
                form_.object(n).text_length = derived_text_length(form_, form_.object(n));
    }

    void rewrite_paths()
    {
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            for (const FieldSpec &field : kFields)
                if (field.kind == FieldKind::String && field.key != "label") rewrite_path(n, field);
    }

    // A relative path is looked for beside the form (with an empty asset_dir,
    // in the working directory) and written below the asset directory.
    void rewrite_path(uint32_t n, const FieldSpec &field)
    {
        auto &stored = form_.object(n).*field.string;
        const std::string path(field_text(stored));
        if (path.empty()) return;
        const bool relative = path.front() != '/';
        const std::string key(field.key);
        where_.assets[{n, key}] =
            relative && !asset_dir_.empty() ? file_.parent_path() / path : fs::path(path);
        if (!relative || asset_dir_.empty()) return;
        const std::string written = asset_dir_ + (asset_dir_.back() == '/' ? "" : "/") + path;
        if (written.size() > kMaxStringLength) {
            error(where_.keys.at({n, key}),
                  key + ": '" + path + "' is written as '" + written + "' (" +
                      std::to_string(written.size()) + " bytes), over the limit of " +
                      std::to_string(kMaxStringLength) +
                      "; give a shorter directory with --asset-dir or the form's asset_dir");
            return;
        }
        set_field_text(stored, written);
    }

    const fs::path &file_;
    const std::optional<std::string> &asset_option_;
    std::string asset_dir_;
    TomlLocator where_;
    Diagnostics &d_;
    Form form_;
    std::vector<References> references_;
    std::map<std::string, uint32_t> numbers_;
};

} // namespace

std::optional<Form> read_toml_form(std::string_view source, const fs::path &file,
                                   const std::optional<std::string> &asset_dir, Diagnostics &d)
{
    return TomlReader(file, asset_dir, d).read(source);
}

std::optional<Form> read_toml_form(const fs::path &file,
                                   const std::optional<std::string> &asset_dir, Diagnostics &d)
{
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        d.error(file.string(), "the form file does not exist or cannot be read");
        return std::nullopt;
    }
    std::ostringstream source;
    source << in.rdbuf();
    return read_toml_form(source.str(), file, asset_dir, d);
}

} // namespace velform
