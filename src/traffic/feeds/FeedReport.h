#pragma once

#include "core/Geodesy.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// The 24-bit address of an aircraft's transponder, with NotIcaoAddress set for one that the receiver made up.
using FeedAddress = std::uint32_t;
inline constexpr FeedAddress NotIcaoAddress = 0x1000000;

/// Six hexadecimal digits of either case, with "~" before those of a made-up address; nothing for any other text, and
/// for 000000.
std::optional<FeedAddress> ParseFeedAddress(std::string_view text) noexcept;
/// "4CEB3F", or "~4CEB3F".
std::string FeedAddressText(FeedAddress address);

/// What one line or one entry of a feed tells of one aircraft. What it does not tell is empty, and is not changed by
/// it; a value that no aircraft can have counts as not told.
struct FeedReport {
    FeedAddress Address = 0;
    bool Ended = false;                          ///< the receiver has given the aircraft up
    std::string Callsign = {};                   ///< printable ASCII without blanks around it, 1 to 8 characters
    std::optional<LatLon> Position = {};         ///< degrees
    std::optional<std::int32_t> AltitudeFt = {}; ///< pressure altitude, -2,000 .. 130,000
    std::optional<double> GroundSpeedKt = {};    ///< 0 .. 4,000
    std::optional<double> TrackDeg = {};         ///< true, over the ground, 0 .. 360
    std::optional<std::uint16_t> Squawk = {};    ///< four octal digits as a decimal number: 0021 is 21
    std::optional<bool> Emergency = {};
    std::optional<bool> OnGround = {};
    std::string Category = {}; ///< of the emitter: "A1" light to "A5" heavy, "A7" helicopter
    std::string TypeName = {}; ///< the aircraft type's designator, such as "B738"
    bool operator==(const FeedReport&) const = default;
};

/// The rules for single values, which lines of text and JSON share; nothing where a value breaks them.
std::optional<double> FeedNumber(std::string_view text) noexcept;
std::optional<LatLon> FeedPosition(std::optional<double> lat, std::optional<double> lon) noexcept;
std::optional<std::int32_t> FeedAltitude(std::optional<double> feet) noexcept;
std::optional<double> FeedSpeed(std::optional<double> knots) noexcept;
std::optional<double> FeedTrack(std::optional<double> degrees) noexcept;
std::optional<std::uint16_t> FeedSquawk(std::string_view text) noexcept;
/// The text without blanks around it where it is printable ASCII of at most longest characters; else empty.
std::string_view FeedText(std::string_view text, std::size_t longest) noexcept;
inline constexpr std::size_t LongestFeedCallsign = 8;

/// 7500, 7600 or 7700.
bool IsEmergencySquawk(std::uint16_t squawk) noexcept;
} // namespace corvane
