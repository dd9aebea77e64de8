// The TOML writer: frame buttons when they differ from the standard seven,
// each object's keys in field order, references by name, texts last.
#include "toml_writer.hpp"

#include "fields.hpp"
#include "latin1.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace velform {

namespace {

bool same_record(const vel_object_file_rec &a, const vel_object_file_rec &b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

class TomlWriter {
public:
    TomlWriter(const Form &form, std::ostream &out) : form_(form), out_(out) { count_listings(); }

    void write(std::string_view origin)
    {
        out_ << "# Form written by velform" << (origin.empty() ? "" : " from ") << origin << "\n";
        if (has_relative_path())
            out_ << "# Paths are relative to the working directory of the application.\n"
                    "asset_dir = \"\"\n";
        const uint32_t buttons = std::min<uint32_t>(form_.object_count(), kFrameButtons);
        if (!standard_frame_buttons())
            for (uint32_t n = 1; n <= buttons; ++n)
                write_object("frame_button", n);
        for (uint32_t n = kFirstFormObject; n <= form_.object_count(); ++n)
            write_object("object", n);
        if (form_.texts.empty()) return;
        out_ << "\n[texts]\n";
        for (uint32_t t = 1; t <= form_.text_count(); ++t)
            write_text(t);
    }

private:
    bool has_relative_path() const
    {
        return std::any_of(form_.objects.begin(), form_.objects.end(), [](const auto &o) {
            return std::any_of(kFields.begin(), kFields.end(), [&](const FieldSpec &field) {
                if (field.kind != FieldKind::String || field.key == "label") return false;
                const std::string_view path = field_text(o.*field.string);
                return !path.empty() && path.front() != '/';
            });
        });
    }

    bool standard_frame_buttons() const
    {
        if (form_.object_count() < kFrameButtons) return false;
        for (uint32_t n = 1; n <= kFrameButtons; ++n)
            if (!same_record(form_.object(n), standard_frame_button(n - 1)) ||
                form_.names[n - 1] != kFrameButtonNames[n - 1] || listings_[n] != 0)
                return false;
        return true;
    }

    // How often each object is named in a dependents list: the reader makes
    // the one lister the master, and needs `master` spelt out otherwise.
    void count_listings()
    {
        listings_.assign(form_.objects.size() + 1, 0);
        lister_.assign(form_.objects.size() + 1, 0);
        for (uint32_t n = 1; n <= form_.object_count(); ++n)
            for (uint32_t d : form_.object(n).dep_objs)
                if (named(d)) {
                    ++listings_[d];
                    lister_[d] = n;
                }
    }

    bool named(uint32_t number) const { return number >= 1 && number <= form_.object_count(); }

    std::string reference(uint32_t number) const
    {
        return named(number) ? toml_string(form_.names[number - 1]) : std::to_string(number);
    }

    void write_object(std::string_view table, uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        out_ << "\n[[" << table << "]]\nname = " << toml_string(form_.names[n - 1]) << "\n";
        for (const FieldSpec &field : kFields) {
            write_field(o, field);
            if (field.key == "font_path" && o.text_index != 0)
                out_ << "text = "
                     << (o.text_index <= form_.text_count()
                             ? toml_string(form_.text_names[o.text_index - 1])
                             : std::to_string(o.text_index))
                     << "\n";
            if (field.key == "border_colour") write_relations(n);
        }
    }

    void write_relations(uint32_t n)
    {
        const vel_object_file_rec &o = form_.object(n);
        const bool derived = listings_[n] == 1 ? lister_[n] == o.master : o.master == 0;
        if (listings_[n] > 1 || !derived) out_ << "master = " << reference(o.master) << "\n";
        const auto last = std::find_if(std::rbegin(o.dep_objs), std::rend(o.dep_objs),
                                       [](uint32_t d) { return d != 0; });
        const auto count = static_cast<std::size_t>(std::rend(o.dep_objs) - last);
        if (count == 0) return;
        out_ << "children = [";
        for (std::size_t i = 0; i < count; ++i)
            out_ << (i == 0 ? "" : ", ") << reference(o.dep_objs[i]);
        out_ << "]\n";
    }

    void write_field(const vel_object_file_rec &o, const FieldSpec &field)
    {
        switch (field.kind) {
        case FieldKind::Number: {
            const uint32_t value = o.*field.number;
            const uint32_t fallback =
                field.key == "text_length" ? derived_text_length(form_, o) : 0;
            if (value != fallback) out_ << field.key << " = " << value << "\n";
            break;
        }
        case FieldKind::Flag:
            if (o.*field.number == 1)
                out_ << field.key << " = true\n";
            else if (o.*field.number != 0)
                out_ << field.key << " = " << o.*field.number << "\n";
            break;
        case FieldKind::Choice: {
            const uint32_t value = o.*field.number;
            if (value == 0 && field.key != "type") break;
            out_ << field.key << " = ";
            if (value < field.words.size())
                out_ << toml_string(field.words[value]) << "\n";
            else
                out_ << value << "\n";
            break;
        }
        case FieldKind::Colour: {
            const uint32_t r = o.*field.number, g = o.*field.green, b = o.*field.blue;
            if (r == 0 && g == 0 && b == 0) break;
            out_ << field.key << " = ";
            if (r <= 0xFF && g <= 0xFF && b <= 0xFF)
                out_ << toml_string(hex_colour(r, g, b)) << "\n";
            else
                out_ << "[" << r << ", " << g << ", " << b << "]\n";
            break;
        }
        case FieldKind::String: {
            const std::string_view text = field_text(o.*field.string);
            if (!text.empty()) out_ << field.key << " = " << toml_string(text) << "\n";
            break;
        }
        }
    }

    void write_text(uint32_t t)
    {
        const vel_text_rec &text = form_.texts[t - 1];
        const std::string_view body = field_text(text.text);
        out_ << form_.text_names[t - 1] << " = ";
        if (text.cursor_index != 0)
            out_ << "{ text = " << toml_string(body) << ", cursor_index = " << text.cursor_index
                 << " }\n";
        else
            out_ << toml_string(body, body.find('\n') != std::string_view::npos) << "\n";
    }

    const Form &form_;
    std::ostream &out_;
    std::vector<uint32_t> listings_;
    std::vector<uint32_t> lister_;
};

} // namespace

std::string hex_colour(uint32_t r, uint32_t g, uint32_t b)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", r, g, b);
    return text;
}

std::string toml_string(std::string_view latin1, bool multi_line)
{
    std::string out = multi_line ? "\"\"\"\n" : "\"";
    for (char byte : latin1) {
        const auto c = static_cast<unsigned char>(byte);
        if (byte == '"' || byte == '\\') {
            out += '\\';
            out += byte;
        } else if (byte == '\n') {
            out += multi_line ? "\n" : "\\n";
        } else if (byte == '\t') {
            out += "\\t";
        } else if (c < 0x20 || (c >= 0x7F && c <= 0x9F)) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04X", c);
            out += escape;
        } else {
            out += latin1_to_utf8(std::string_view(&byte, 1));
        }
    }
    return out + (multi_line ? "\"\"\"" : "\"");
}

void write_toml_form(const Form &form, std::string_view origin, std::ostream &out)
{
    TomlWriter(form, out).write(origin);
}

} // namespace velform
