#include "radar/RadioText.h"

#include "core/NumberText.h"

namespace corvane {
std::string SquawkText(const MemberRadio& radio)
{
    constexpr std::size_t Digits = 4;
    return radio.Squawk ? PaddedNumber(*radio.Squawk, Digits) : std::string();
}

std::string FrequencyText(const MemberRadio& radio)
{
    constexpr std::int32_t KhzPerMhz = 1000;
    constexpr std::size_t KhzDigits = 3;
    if (!radio.FrequencyKhz)
        return {};
    return NumberText(*radio.FrequencyKhz / KhzPerMhz) + '.' + PaddedNumber(*radio.FrequencyKhz % KhzPerMhz, KhzDigits);
}
} // namespace corvane
