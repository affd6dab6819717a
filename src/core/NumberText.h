#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <string>

namespace corvane {
/// Appends a whole number in plain decimal.
template <std::integral T> void AppendNumber(std::string& text, T value)
{
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), value);
    text.append(std::begin(digits), end.ptr);
}

/// Appends the shortest plain decimal text (no exponent) that reads back as the same double: 118.1, 270, 0.
void AppendNumber(std::string& text, double value);

std::string NumberText(std::int64_t value);
std::string NumberText(std::int32_t value);
std::string NumberText(double value);
} // namespace corvane
