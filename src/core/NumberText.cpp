#include "core/NumberText.h"

#include "core/Rounding.h"

#include <array>
#include <cstdlib>

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

std::string TenthsText(double value)
{
    const auto tenths = RoundTo<std::int32_t>(value * 10);
    std::string text = tenths < 0 ? "-" : "";
    AppendNumber(text, std::abs(std::int64_t{tenths} / 10));
    text += '.';
    AppendNumber(text, std::abs(tenths % 10));
    return text;
}

std::string PaddedNumber(std::int32_t value, std::size_t digits)
{
    std::string text = NumberText(std::abs(std::int64_t{value}));
    const std::size_t wanted = value < 0 ? digits - 1 : digits;
    if (text.size() < wanted)
        text.insert(0, wanted - text.size(), '0');
    return value < 0 ? "-" + text : text;
}
} // namespace corvane
