// Collecting and printing diagnostics, and the "did you mean" suggestions
// for misspelt keys, words and names.
#include "diagnostics.hpp"

#include <algorithm>
#include <numeric>

namespace velform {

void Diagnostics::error(std::string where, std::string message)
{
    add(Severity::Error, std::move(where), std::move(message));
}

void Diagnostics::warning(std::string where, std::string message)
{
    add(Severity::Warning, std::move(where), std::move(message));
}

void Diagnostics::add(Severity severity, std::string where, std::string message)
{
    list_.push_back({severity, std::move(where), std::move(message)});
}

bool Diagnostics::has_errors() const
{
    return std::any_of(list_.begin(), list_.end(),
                       [](const Diagnostic &d) { return d.severity == Severity::Error; });
}

void Diagnostics::print(std::ostream &out) const
{
    for (const Diagnostic &d : list_)
        out << d.where << (d.severity == Severity::Error ? ": error: " : ": warning: ") << d.message
            << '\n';
}

int Diagnostics::report(std::ostream &out) const
{
    print(out);
    return has_errors() ? 1 : 0;
}

namespace {

std::size_t edit_distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] != b[j - 1])});
            diagonal = above;
        }
    }
    return row[b.size()];
}

} // namespace

std::string_view nearest(std::string_view word, std::span<const std::string_view> candidates)
{
    // A near miss is one letter off in a short word, two in a longer one.
    const std::size_t limit = word.size() <= 3 ? 1 : 2;
    std::string_view best;
    std::size_t best_distance = limit + 1;
    for (std::string_view candidate : candidates) {
        const std::size_t distance = edit_distance(word, candidate);
        if (distance < best_distance) {
            best = candidate;
            best_distance = distance;
        }
    }
    return best;
}

std::string did_you_mean(std::string_view word, std::span<const std::string_view> candidates)
{
    const std::string_view best = nearest(word, candidates);
    return best.empty() ? std::string() : " (did you mean '" + std::string(best) + "'?)";
}

std::string one_of(std::span<const std::string_view> words)
{
    std::string out;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0) out += i + 1 == words.size() ? " or " : ", ";
        out += words[i];
    }
    return out;
}

std::string list_of(std::span<const std::string_view> words)
{
    std::string out;
    for (std::string_view word : words)
        out += (out.empty() ? "" : ", ") + std::string(word);
    return out;
}

} // namespace velform
