#include "core/Frequency.h"

#include "core/NumberText.h"

namespace corvane {
std::string TenThousandthsText(std::int64_t value)
{
    constexpr std::int64_t Scale = 10000;
    std::string text = NumberText(value / Scale);
    const std::int64_t fraction = value % Scale;
    if (fraction == 0)
        return text;
    std::string digits = NumberText(Scale + fraction).substr(1); // four digits, zeros in front kept
    digits.erase(digits.find_last_not_of('0') + 1);
    return text + "." + digits;
}

std::optional<std::string> BcdFrequency(std::int32_t word)
{
    const auto bits = static_cast<std::uint32_t>(word);
    std::int64_t value = 0;
    for (int shift = 28; shift >= 0; shift -= 4) {
        const std::uint32_t digit = bits >> static_cast<unsigned>(shift) & 0xFU;
        if (digit > 9)
            return std::nullopt;
        value = value * 10 + digit;
    }
    return TenThousandthsText(value);
}
} // namespace corvane
