#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>

namespace corvane {
/// Appends a whole number in plain decimal.
template <std::integral T> void AppendNumber(std::string& text, T value)
{
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    text.append(digits.data(), end.ptr);
}

/// Appends the shortest plain decimal text (no exponent) that reads back as the same double: 118.1, 270, 0.
void AppendNumber(std::string& text, double value);

std::string NumberText(std::int64_t value);
std::string NumberText(std::int32_t value);
std::string NumberText(double value);

/// With one decimal place, rounded as the program rounds: 2.1, 10.0, -0.3. Held to what 32 bits hold of tenths.
std::string TenthsText(double value);
/// With leading zeros: 72 of 3 digits is 072, -1 is -01.
std::string PaddedNumber(std::int32_t value, std::size_t digits);
} // namespace corvane
