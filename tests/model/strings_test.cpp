// String and number helpers: comparison verdicts, lengths, partial copies,
// digit and number conversion with their single-precision digit count.
#include "velumo.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

TEST(Strcmp, StringsEndingBeforeTheCountCompareByLengthOnly)
{
    EXPECT_EQ(vel_strcmp("ab", "xb", 10), 1u);
    EXPECT_EQ(vel_strcmp("ab", "ax", 10), 1u);
    EXPECT_EQ(vel_strcmp("ab", "ab", 10), 1u);
}

TEST(Strcmp, OnlyTheLastComparedCharacterCounts)
{
    EXPECT_EQ(vel_strcmp("ab", "xb", 1), 1u);
    EXPECT_EQ(vel_strcmp("ab", "ax", 1), 2u);
    EXPECT_EQ(vel_strcmp("xbc", "abc", 2), 1u);
}

TEST(Strcmp, StringsOfDifferentLength)
{
    EXPECT_EQ(vel_strcmp("ab", "abc", 10), 2u);
    EXPECT_EQ(vel_strcmp("abc", "ab", 10), 2u);
    EXPECT_EQ(vel_strcmp("", "", 10), 1u);
}

TEST(Strcmp, CountLimitsTheComparison)
{
    EXPECT_EQ(vel_strcmp("", "x", 0), 0u);
    // n + 1 characters are compared; the verdict is the one at index n.
    EXPECT_EQ(vel_strcmp("abX", "abY", 1), 1u);
    EXPECT_EQ(vel_strcmp("abX", "abY", 2), 2u);
    // Once i reaches n the verdict stands, even if one string goes on.
    EXPECT_EQ(vel_strcmp("ab", "abcd", 2), 1u);
}

TEST(Lengths, CountAndLastPosition)
{
    EXPECT_EQ(vel_count_string_size_without_zero(""), 0u);
    EXPECT_EQ(vel_count_string_size_without_zero("hello"), 5u);
    EXPECT_EQ(vel_get_lastposition("hello"), 5u);
    EXPECT_EQ(vel_get_lastposition_before_zero("hello"), 4u);
    EXPECT_EQ(vel_get_lastposition_before_zero("x"), 0u);
    EXPECT_EQ(vel_get_lastposition_before_zero(""), 0xFFFFFFFFu);
}

TEST(Copies, FirstPartCopiesOneMoreThanItsCount)
{
    char dst[16];
    std::memset(dst, '#', sizeof dst);
    vel_copy_st_first_part(0, "abc", dst);
    EXPECT_STREQ(dst, "a");
    vel_copy_st_first_part(2, "abcdef", dst);
    EXPECT_STREQ(dst, "abc");
    vel_copy_st_first_part(10, "ab", dst);
    EXPECT_STREQ(dst, "ab");
}

TEST(Copies, LastPartReturnsBytesCopied)
{
    char dst[16];
    std::memset(dst, '#', sizeof dst);
    EXPECT_EQ(vel_copy_st_last_part("hello", dst), 5u);
    EXPECT_STREQ(dst, "hello");
    EXPECT_EQ(vel_copy_st_last_part("x", dst), 1u);
    EXPECT_STREQ(dst, "x");
    // The first byte is taken unconditionally; an empty source stops at its NUL.
    const char empty_then_garbage[] = {'\0', 'z', 'z', '\0'};
    EXPECT_EQ(vel_copy_st_last_part(empty_then_garbage, dst), 1u);
    EXPECT_STREQ(dst, "");
}

TEST(Digits, IntToCharacter)
{
    char c = '#';
    EXPECT_EQ(vel_transform_int_to_asccii(7, &c), 1);
    EXPECT_EQ(c, '7');
    EXPECT_EQ(vel_transform_int_to_asccii(12, &c), -1);
    EXPECT_EQ(c, '0');
    EXPECT_EQ(vel_transform_int_to_asccii(-1, &c), -1);
    EXPECT_EQ(c, '0');
}

TEST(Digits, CharacterToInt)
{
    uint32_t value = 99;
    EXPECT_EQ(vel_transform_ascii_to_int(&value, "9"), 1);
    EXPECT_EQ(value, 9u);
    EXPECT_EQ(vel_transform_ascii_to_int(&value, "a"), -1);
    EXPECT_EQ(value, 0u);
    EXPECT_EQ(vel_transform_ascii_to_int(&value, "/"), -1);
    EXPECT_EQ(vel_transform_ascii_to_int(&value, ":"), -1);
}

TEST(Numbers, StringToNumber)
{
    uint32_t value = 7;
    vel_transform_str_to_num("4711", &value);
    EXPECT_EQ(value, 4711u);
    vel_transform_str_to_num("12a4", &value);
    EXPECT_EQ(value, 1204u);
    vel_transform_str_to_num("-5", &value);
    EXPECT_EQ(value, 5u);
    vel_transform_str_to_num("123456789012", &value);
    EXPECT_EQ(value, 123456789u);
    vel_transform_str_to_num("1234567890", &value);
    EXPECT_EQ(value, 123456789u);
    vel_transform_str_to_num("123456789", &value);
    EXPECT_EQ(value, 123456789u);
    vel_transform_str_to_num("", &value);
    EXPECT_EQ(value, 0u);
}

TEST(Numbers, PowerOfTen)
{
    EXPECT_EQ(vel_zehnerpotenz(0), 10u);
    EXPECT_EQ(vel_zehnerpotenz(1), 10u);
    EXPECT_EQ(vel_zehnerpotenz(2), 100u);
    EXPECT_EQ(vel_zehnerpotenz(9), 1000000000u);
    EXPECT_EQ(vel_zehnerpotenz(10), 1410065408u); // 10^10 wrapped in 32 bits
}

std::string number_to_string(uint32_t value, int32_t *digits)
{
    char buffer[12];
    std::memset(buffer, '#', sizeof buffer);
    buffer[11] = '\0';
    *digits = vel_transform_num_to_str(&value, buffer);
    return std::string(buffer, 11);
}

TEST(Numbers, NumberToStringExact)
{
    int32_t digits = 0;
    EXPECT_EQ(number_to_string(0, &digits).c_str(), std::string("0"));
    EXPECT_EQ(digits, 1);
    EXPECT_EQ(number_to_string(9, &digits).c_str(), std::string("9"));
    EXPECT_EQ(number_to_string(10, &digits).c_str(), std::string("10"));
    EXPECT_EQ(digits, 2);
    EXPECT_EQ(number_to_string(100, &digits).c_str(), std::string("100"));
    EXPECT_EQ(digits, 3);
    EXPECT_EQ(number_to_string(65535, &digits).c_str(), std::string("65535"));
    EXPECT_EQ(digits, 5);
    EXPECT_EQ(number_to_string(1234567, &digits).c_str(), std::string("1234567"));
    EXPECT_EQ(number_to_string(2147483647, &digits).c_str(), std::string("2147483647"));
    EXPECT_EQ(digits, 10);
}

TEST(Numbers, NumberToStringSinglePrecisionCount)
{
    int32_t digits = 0;
    // The float image of 99999999 is 1e8: one digit too many, all nines.
    EXPECT_EQ(number_to_string(99999999, &digits).c_str(), std::string("999999999"));
    EXPECT_EQ(digits, 9);
    EXPECT_EQ(number_to_string(999999999, &digits).c_str(), std::string("9999999999"));
    EXPECT_EQ(digits, 10);
}

TEST(Numbers, NumberToStringAboveSignedRangeWritesOnlyTheTerminator)
{
    int32_t digits = 0;
    const std::string written = number_to_string(2147483648u, &digits);
    EXPECT_EQ(digits, 10);
    EXPECT_EQ(written.substr(0, 10), std::string(10, '#'));
    EXPECT_EQ(written[10], '\0');
}

} // namespace
