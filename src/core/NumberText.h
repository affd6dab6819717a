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
} // namespace corvane
