#include "area/WorldOutlines.h"

#include "core/Geodesy.h"

#include <limits>
#include <optional>

namespace corvane {
static constexpr double TwoToThe31 = 2147483648.0;

// Both conversions are exact: the product needs fewer than 53 bits and the divisor is a power of two.
static double StoredLat(std::int64_t stored) noexcept
{
    return static_cast<double>(stored) * 90.0 / TwoToThe31;
}
static double StoredLon(std::int64_t stored) noexcept
{
    return static_cast<double>(stored) * 180.0 / TwoToThe31;
}

/// The first stored value for which a condition holds that holds for all greater ones; 2^31 where it holds for none.
template <class Condition> static std::int64_t FirstStored(const Condition& holds) noexcept
{
    std::int64_t first = std::numeric_limits<std::int32_t>::min();
    std::int64_t end = std::int64_t{std::numeric_limits<std::int32_t>::max()} + 1;
    while (first < end) {
        const std::int64_t middle = first + (end - first) / 2;
        if (holds(middle))
            end = middle;
        else
            first = middle + 1;
    }
    return first;
}

namespace {
/// A window in the file's own numbers, which are compared without converting two million of them.
///
/// A stored number wraps where a longitude does, so a value lies in a range, across the 180 degree meridian or not,
/// when its distance from the range's first value, counted in 32 bits, is at most the range's length.
struct StoredWindow {
    std::uint32_t South;
    std::uint32_t LatLength;
    std::uint32_t West;
    std::uint32_t LonLength;

    [[nodiscard]] bool Contains(std::uint32_t lat, std::uint32_t lon) const noexcept
    {
        return lat - South <= LatLength && lon - West <= LonLength;
    }
};
} // namespace

/// Nothing where no stored position lies in the window.
static std::optional<StoredWindow> ToStored(const OutlineWindow& window) noexcept
{
    constexpr std::int64_t Turn = std::int64_t{1} << 32;
    if (!(window.South <= window.North) || !(window.West < window.East || window.West > window.East))
        return std::nullopt;
    const std::int64_t south = FirstStored([&](std::int64_t stored) { return StoredLat(stored) >= window.South; });
    const std::int64_t north = FirstStored([&](std::int64_t stored) { return StoredLat(stored) > window.North; }) - 1;
    const std::int64_t west = FirstStored([&](std::int64_t stored) { return StoredLon(stored) >= window.West; });
    const std::int64_t east = FirstStored([&](std::int64_t stored) { return StoredLon(stored) > window.East; }) - 1;
    const std::int64_t lonLength = east - west + (window.West > window.East ? Turn : 0);
    if (north < south || lonLength < 0)
        return std::nullopt;
    return StoredWindow{static_cast<std::uint32_t>(south), static_cast<std::uint32_t>(north - south),
                        static_cast<std::uint32_t>(west), static_cast<std::uint32_t>(lonLength)};
}

OutlineWindow OutlineWindowAround(double north, double south, double west, double east) noexcept
{
    return {north + 22, south - 22, NormalizeLongitude(west - 45), NormalizeLongitude(east + 45)};
}

/// Cuts whole entries; inside tells from one block to the next whether the last entry lies in the window.
static void CutEntries(ByteSpan entries, const StoredWindow& window, bool& inside, std::vector<OutlinePoint>& points)
{
    for (const std::uint8_t* entry = entries.data(); entry != entries.data() + entries.size();
         entry += OutlineEntrySize) {
        const auto lat = static_cast<std::uint32_t>(LittleEndian<4>(entry));
        const auto lon = static_cast<std::uint32_t>(LittleEndian<4>(entry + 4));
        if (!window.Contains(lat, lon)) {
            inside = false;
            continue;
        }
        if (!inside)
            points.emplace_back();
        points.push_back({StoredLat(static_cast<std::int32_t>(lat)), StoredLon(static_cast<std::int32_t>(lon))});
        inside = lat != 0 || lon != 0;
    }
}

Result<void> CutOutlines(ByteSource& worldMap, const OutlineWindow& window, std::vector<OutlinePoint>& points)
{
    const std::optional<StoredWindow> stored = ToStored(window);
    if (!stored)
        return {};
    bool inside = false;
    for (std::uint64_t at = 0;;) {
        const Result<ByteSpan> bytes = worldMap.View(at, OutlineEntrySize);
        if (!bytes)
            return bytes.error();
        const std::size_t whole = bytes->size() - bytes->size() % OutlineEntrySize;
        if (whole == 0)
            return {};
        CutEntries(bytes->first(whole), *stored, inside, points);
        at += whole;
    }
}
} // namespace corvane
