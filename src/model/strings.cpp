// String and number helpers: lengths, partial copies, digit and number
// conversion, written without the C library so that their edge cases are ours.
#include "model/strings.hpp"

#include "velumo.h"

#include <array>

namespace {

// Digit-count thresholds, in single precision on purpose: the count of a
// value is decided by its float image, not by the exact integer.
constexpr std::array<float, 10> digit_thresholds = {1.0f, 1e1f, 1e2f, 1e3f, 1e4f,
                                                    1e5f, 1e6f, 1e7f, 1e8f, 1e9f};

constexpr int32_t too_many_digits = -1;

int32_t digit_count_of(float tenth)
{
    if (tenth < 1.0f) return 1;
    for (int32_t d = 2; d <= 10; ++d)
        if (digit_thresholds[d - 2] <= tenth && tenth < digit_thresholds[d - 1]) return d;
    return too_many_digits;
}

} // namespace

namespace velumo::detail {

uint32_t string_length(const char *s)
{
    uint32_t n = 0;
    while (s[n] != '\0')
        ++n;
    return n;
}

uint32_t copy_string(const char *src, char *dst)
{
    dst[0] = src[0];
    if (src[0] == '\0') return 1;
    uint32_t i = 1;
    while (src[i] != '\0') {
        dst[i] = src[i];
        ++i;
    }
    dst[i] = '\0';
    return i;
}

} // namespace velumo::detail

extern "C" {

uint32_t vel_strcmp(const char *a, const char *b, uint32_t n)
{
    uint32_t verdict = 0;
    uint32_t i = 0;
    // Every position overwrites the verdict: only the last one compared counts.
    while (a[i] != '\0' && b[i] != '\0' && i <= n) {
        verdict = a[i] == b[i] ? 1 : 2;
        ++i;
    }
    if (i >= n) return verdict;
    if (a[i] != '\0') return 2;
    return b[i] == '\0' ? 1 : 2;
}

uint32_t vel_count_string_size_without_zero(const char *s)
{
    return velumo::detail::string_length(s);
}

uint32_t vel_get_lastposition(const char *s)
{
    return vel_count_string_size_without_zero(s);
}

uint32_t vel_get_lastposition_before_zero(const char *s)
{
    return vel_count_string_size_without_zero(s) - 1u;
}

void vel_copy_st_first_part(uint32_t n, const char *src, char *dst)
{
    uint32_t copied = 0;
    while (copied < n + 1u && src[copied] != '\0') {
        dst[copied] = src[copied];
        ++copied;
    }
    dst[copied] = '\0';
}

uint32_t vel_copy_st_last_part(const char *src, char *dst)
{
    return velumo::detail::copy_string(src, dst);
}

int32_t vel_transform_int_to_asccii(int32_t digit, char *dst)
{
    if (digit >= 0 && digit <= 9) {
        dst[0] = static_cast<char>('0' + digit);
        return 1;
    }
    dst[0] = '0';
    return -1;
}

int32_t vel_transform_ascii_to_int(uint32_t *dst, const char *c)
{
    if (*c >= '0' && *c <= '9') {
        *dst = static_cast<uint32_t>(*c - '0');
        return 1;
    }
    *dst = 0;
    return -1;
}

void vel_transform_str_to_num(const char *s, uint32_t *out)
{
    uint32_t digits = 9;
    for (uint32_t i = 0; i < 10; ++i) {
        if (s[i] == '\0') {
            digits = i;
            break;
        }
    }
    *out = 0;
    if (digits == 0) return;

    uint32_t value = 0;
    vel_transform_ascii_to_int(&value, &s[digits - 1]);
    *out = value;
    for (uint32_t k = 2; k <= digits; ++k) {
        vel_transform_ascii_to_int(&value, &s[digits - k]);
        *out += value * vel_zehnerpotenz(k - 1);
    }
}

uint32_t vel_zehnerpotenz(uint32_t e)
{
    uint32_t power = 10;
    for (uint32_t i = 1; i < e; ++i)
        power *= 10u;
    return power;
}

int32_t vel_transform_num_to_str(const uint32_t *value, char *dst)
{
    float tenth = static_cast<float>(*value) / 10.0f;
    const int32_t digits = digit_count_of(tenth);
    if (digits == too_many_digits) return -1;
    if (digits == 1) {
        vel_transform_int_to_asccii(static_cast<int32_t>(*value), dst);
        dst[1] = '\0';
        return 1;
    }

    dst[digits] = '\0';
    // Values from 2^31 up are negative here and write no digit at all.
    int32_t rest = static_cast<int32_t>(*value);
    int32_t units = rest % 10;
    int32_t position = digits - 1;
    while (position >= 0 && rest > 0) {
        vel_transform_int_to_asccii(units, &dst[position]);
        if (tenth >= 10.0f) rest = (rest - units) / 10;
        if (tenth < 10.0f) {
            // The leading digit comes from the float; an over-counted value
            // keeps writing it until the buffer's start is reached.
            if (position >= 1)
                vel_transform_int_to_asccii(static_cast<int32_t>(tenth), &dst[position - 1]);
            --position;
        }
        --position;
        tenth = static_cast<float>(rest) / 10.0f;
        units = rest % 10;
    }
    return digits;
}

} // extern "C"
