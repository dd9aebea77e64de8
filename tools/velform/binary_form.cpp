// Reading form and text files into the model, with the checks that only a
// binary file needs (missing NULs, unread bytes), and writing them back.
#include "binary_form.hpp"

#include "checker.hpp"
#include "fields.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <fstream>
#include <iterator>

namespace velform {

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

// Places in a binary form are record numbers and field names; the library
// opens paths from the working directory, and so does the check.
class BinaryLocator : public Locator {
public:
    BinaryLocator(const Form &form, std::string form_name, std::string text_name)
        : form_(form), form_name_(std::move(form_name)), text_name_(std::move(text_name))
    {
    }
    std::string object(uint32_t number, std::string_view field) const override
    {
        return form_name_ + ": object " + std::to_string(number) + ": " + std::string(field);
    }
    std::string text(uint32_t number) const override
    {
        return text_name_ + ": text " + std::to_string(number);
    }
    fs::path asset(uint32_t number, std::string_view field) const override
    {
        const vel_object_file_rec &o = form_.object(number);
        return std::string(field_text(field == "font_path" ? o.font_path : o.image_path));
    }

private:
    const Form &form_;
    std::string form_name_;
    std::string text_name_;
};

struct ReservedWord {
    std::size_t offset;
    uint32_t vel_object_file_rec::*word;
};
constexpr ReservedWord kReservedWords[] = {
    {offsetof(vel_object_file_rec, reserved_number_of_lines),
     &vel_object_file_rec::reserved_number_of_lines},
    {offsetof(vel_object_file_rec, reserved_220), &vel_object_file_rec::reserved_220},
    {offsetof(vel_object_file_rec, reserved_cursor_x), &vel_object_file_rec::reserved_cursor_x},
    {offsetof(vel_object_file_rec, reserved_cursor_y), &vel_object_file_rec::reserved_cursor_y},
    {offsetof(vel_object_file_rec, reserved_cursor_line),
     &vel_object_file_rec::reserved_cursor_line},
    {offsetof(vel_object_file_rec, reserved_cursor_column),
     &vel_object_file_rec::reserved_cursor_column},
    {offsetof(vel_object_file_rec, reserved_scroll_x), &vel_object_file_rec::reserved_scroll_x},
    {offsetof(vel_object_file_rec, reserved_scroll_y), &vel_object_file_rec::reserved_scroll_y},
};

template <std::size_t N> bool has_nul(const char (&field)[N])
{
    return std::memchr(field, '\0', N) != nullptr;
}

template <std::size_t N> bool clean_after_nul(const char (&field)[N])
{
    const std::size_t length = field_text(field).size();
    return std::all_of(field + std::min(length + 1, N), field + N, [](char c) { return c == 0; });
}

void check_record_bytes(const Locator &where, uint32_t n, const vel_object_file_rec &o,
                        Diagnostics &d)
{
    for (const FieldSpec &field : kFields) {
        if (field.kind != FieldKind::String) continue;
        const auto &text = o.*field.string;
        if (!has_nul(text))
            d.error(where.object(n, field.key),
                    "no NUL within its " + std::to_string(kStringBytes) +
                        " bytes; the library cuts it at " + std::to_string(kMaxStringLength) +
                        " characters, the most a string may have");
        else if (!clean_after_nul(text))
            d.warning(where.object(n, field.key),
                      "bytes after the string's end are not 0; the library ignores them and "
                      "decompiling drops them");
    }
    for (const ReservedWord &reserved : kReservedWords)
        if (o.*reserved.word != 0)
            d.warning(where.object(n, "reserved word at offset " + std::to_string(reserved.offset)),
                      "is " + std::to_string(o.*reserved.word) +
                          ", not 0; the library ignores it and decompiling drops it");
}

void check_text_bytes(const Locator &where, uint32_t t, const vel_text_rec &text, Diagnostics &d)
{
    if (!has_nul(text.text))
        d.error(where.text(t), "no NUL within its " + std::to_string(kTextBytes) +
                                   " bytes; the library cuts it at " +
                                   std::to_string(kMaxTextLength) +
                                   " characters, the most a text may have");
    else if (!clean_after_nul(text.text) || text.reserved != 0)
        d.warning(where.text(t), "bytes the library does not read (the first word, or after the "
                                 "text's end) are not 0; decompiling drops them");
}

template <typename Record>
std::vector<Record> records_of(std::span<const uint8_t> bytes, const std::string &name,
                               Diagnostics &d)
{
    std::vector<Record> records(bytes.size() / sizeof(Record));
    if (!records.empty())
        std::memcpy(records.data(), bytes.data(), records.size() * sizeof(Record));
    if (const std::size_t rest = bytes.size() % sizeof(Record); rest != 0)
        d.warning(name, std::to_string(rest) + " bytes after the last whole record of " +
                            std::to_string(sizeof(Record)) + " bytes are ignored");
    return records;
}

std::optional<Bytes> read_bytes(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool write_bytes(const fs::path &path, const Bytes &bytes, std::string &error)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char *>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (out.flush()) return true;
    error = "cannot write '" + path.string() + "'";
    return false;
}

} // namespace

fs::path text_file_beside(const fs::path &form_file)
{
    return fs::path(form_file).replace_extension(".vtx");
}

std::string generated_object_name(uint32_t number, uint32_t type)
{
    if (number >= 1 && number <= kFrameButtons) return std::string(kFrameButtonNames[number - 1]);
    const std::string word = type < kTypeWords.size() ? std::string(kTypeWords[type]) : "object";
    return word + "_" + std::to_string(number);
}

std::optional<Form> read_binary_form(std::span<const uint8_t> form_bytes,
                                     const std::optional<std::span<const uint8_t>> &text_bytes,
                                     const std::string &form_name, const std::string &text_name,
                                     Diagnostics &d)
{
    Form form;
    form.objects = records_of<vel_object_file_rec>(form_bytes, form_name, d);
    for (uint32_t n = 1; n <= form.object_count(); ++n)
        form.names.push_back(generated_object_name(n, form.object(n).type));
    if (text_bytes) form.texts = records_of<vel_text_rec>(*text_bytes, text_name, d);
    for (uint32_t t = 1; t <= form.text_count(); ++t)
        form.text_names.push_back("text_" + std::to_string(t));

    const BinaryLocator where(form, form_name, text_name);
    const bool needs_texts = std::any_of(form.objects.begin(), form.objects.end(),
                                         [](const auto &o) { return o.text_index != 0; });
    if (!text_bytes && needs_texts)
        d.error(text_name, "the text file does not exist, and objects refer to texts");
    for (uint32_t n = 1; n <= form.object_count(); ++n)
        check_record_bytes(where, n, form.object(n), d);
    for (uint32_t t = 1; t <= form.text_count(); ++t)
        check_text_bytes(where, t, form.texts[t - 1], d);
    check_form(form, where, Severity::Error, d);
    if (d.has_errors()) return std::nullopt;
    return form;
}

std::optional<Form> read_binary_form(const fs::path &form_file,
                                     const std::optional<fs::path> &text_file, Diagnostics &d)
{
    const std::optional<Bytes> form_bytes = read_bytes(form_file);
    if (!form_bytes) {
        d.error(form_file.string(), "the form file does not exist or cannot be read");
        return std::nullopt;
    }
    const fs::path texts = text_file.value_or(text_file_beside(form_file));
    const std::optional<Bytes> text_bytes = read_bytes(texts);
    if (text_file && !text_bytes) {
        d.error(texts.string(), "the text file does not exist or cannot be read");
        return std::nullopt;
    }
    std::optional<std::span<const uint8_t>> text_span;
    if (text_bytes) text_span = std::span<const uint8_t>(*text_bytes);
    return read_binary_form(*form_bytes, text_span, form_file.string(), texts.string(), d);
}

bool write_binary_form(const Form &form, const fs::path &stem, std::string &error)
{
    fs::path form_path = stem;
    form_path += ".vfm";
    fs::path text_path = stem;
    text_path += ".vtx";
    return write_bytes(form_path, object_file_bytes(form), error) &&
           write_bytes(text_path, text_file_bytes(form), error);
}

} // namespace velform
