#include "traffic/feeds/FeedReport.h"

#include "core/Rounding.h"
#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane {
static constexpr std::size_t AddressDigits = 6;
static constexpr int HexBase = 16;

std::optional<FeedAddress> ParseFeedAddress(std::string_view text) noexcept
{
    const bool madeUp = text.starts_with('~');
    text.remove_prefix(madeUp ? 1 : 0);
    FeedAddress address = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), address, HexBase);
    if (text.size() != AddressDigits || read.ptr != text.data() + AddressDigits || address == 0)
        return std::nullopt;
    return madeUp ? address | NotIcaoAddress : address;
}

std::string FeedAddressText(FeedAddress address)
{
    constexpr std::string_view Digits = "0123456789ABCDEF";
    std::string text = (address & NotIcaoAddress) != 0 ? "~" : "";
    for (int shift = 20; shift >= 0; shift -= 4)
        text += Digits[(address >> shift) % HexBase];
    return text;
}

std::optional<double> FeedNumber(std::string_view text) noexcept
{
    text = TrimSpaces(text);
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
    if (text.empty() || read.ec != std::errc() || read.ptr != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

/// A value that lies within limits, which one that is not a number does not.
static std::optional<double> Within(std::optional<double> value, double lowest, double highest) noexcept
{
    return value && *value >= lowest && *value <= highest ? value : std::nullopt;
}

std::optional<LatLon> FeedPosition(std::optional<double> lat, std::optional<double> lon) noexcept
{
    constexpr double Pole = 90;
    constexpr double HalfTurn = 180;
    const auto north = Within(lat, -Pole, Pole);
    const auto east = Within(lon, -HalfTurn, HalfTurn);
    return north && east ? std::optional(LatLon{*north, *east}) : std::nullopt;
}

std::optional<std::int32_t> FeedAltitude(std::optional<double> feet) noexcept
{
    const auto altitude = Within(feet, -2000, 130000);
    return altitude ? std::optional(RoundTo<std::int32_t>(*altitude)) : std::nullopt;
}

std::optional<double> FeedSpeed(std::optional<double> knots) noexcept
{
    return Within(knots, 0, 4000);
}

std::optional<double> FeedTrack(std::optional<double> degrees) noexcept
{
    return Within(degrees, 0, 360);
}

std::optional<std::uint16_t> FeedSquawk(std::string_view text) noexcept
{
    constexpr std::size_t SquawkDigits = 4;
    text = TrimSpaces(text);
    if (text.size() != SquawkDigits || !std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '7'; }))
        return std::nullopt;
    int squawk = 0;
    for (const char digit : text)
        squawk = squawk * 10 + (digit - '0');
    return static_cast<std::uint16_t>(squawk);
}

std::string_view FeedText(std::string_view text, std::size_t longest) noexcept
{
    const auto printable = [](char c) { return c >= ' ' && c <= '~'; };
    text = TrimSpaces(text);
    return text.size() <= longest && std::ranges::all_of(text, printable) ? text : std::string_view();
}

bool IsEmergencySquawk(std::uint16_t squawk) noexcept
{
    return squawk == 7500 || squawk == 7600 || squawk == 7700;
}
} // namespace corvane
