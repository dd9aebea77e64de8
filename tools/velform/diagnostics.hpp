// Problems found in a form: errors and warnings with the place they refer
// to, collected so that a command reports all of them at once.
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velform {

enum class Severity { Warning, Error };

struct Diagnostic {
    Severity severity;
    std::string where; // "file:line:column" or "file: object N: field"
    std::string message;
};

class Diagnostics {
public:
    void error(std::string where, std::string message);
    void warning(std::string where, std::string message);
    void add(Severity severity, std::string where, std::string message);
    bool has_errors() const;
    const std::vector<Diagnostic> &all() const { return list_; }
    // One line each: "where: error: message".
    void print(std::ostream &out) const;
    // Prints them and gives the exit status: 1 when any is an error.
    int report(std::ostream &out) const;

private:
    std::vector<Diagnostic> list_;
};

// The candidate nearest to `word` when it is a likely misspelling, else "".
std::string_view nearest(std::string_view word, std::span<const std::string_view> candidates);

// " (did you mean 'x'?)" for a near miss, else "".
std::string did_you_mean(std::string_view word, std::span<const std::string_view> candidates);

// "a, b or c".
std::string one_of(std::span<const std::string_view> words);

// "a, b, c".
std::string list_of(std::span<const std::string_view> words);

} // namespace velform
