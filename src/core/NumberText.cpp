#include "core/NumberText.h"

#include <array>

namespace corvane {
void AppendNumber(std::string& text, double value)
{
    constexpr std::size_t LongestDouble = 350; // the smallest denormals need 343 characters without an exponent
    std::array<char, LongestDouble> digits{};
    const double positiveZero = value == 0.0 ? 0.0 : value; // a negative zero would print a sign
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), positiveZero, std::chars_format::fixed);
    text.append(digits.data(), end.ptr);
}

std::string NumberText(std::int64_t value)
{
    std::string text;
    AppendNumber(text, value);
    return text;
}

std::string NumberText(std::int32_t value)
{
    return NumberText(std::int64_t{value});
}

std::string NumberText(double value)
{
    std::string text;
    AppendNumber(text, value);
    return text;
}
} // namespace corvane
