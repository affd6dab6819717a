#pragma once

#include <cstdint>
#include <string_view>

namespace corvane {
/// The units of position messages, and their way to and from the units of the player table. What comes from the wire is
/// held to the range of the result; every ...ToWire is the inverse of its ...FromWire: it gives the wire value that
/// reads back nearest to its argument, so that decoding, encoding and decoding again changes nothing.

/// Degrees from metres north of the equator; 40007000 metres are 360 degrees.
double LatitudeFromWire(std::int32_t metres) noexcept;
std::int32_t LatitudeToWire(double degrees) noexcept;

/// Degrees from a fraction of a full turn; 2^32 units are 360 degrees. -180 .. 180.
double LongitudeFromWire(std::int32_t turn) noexcept;
/// Longitudes beyond 180 degrees wrap around; 180 itself becomes -180.
std::int32_t LongitudeToWire(double degrees) noexcept;

/// Whole feet from metres.
std::int32_t AltitudeFromWire(std::int32_t metres) noexcept;
std::int32_t AltitudeToWire(std::int32_t feet) noexcept;

/// The whole degrees, 0 .. 360, of the heading in bits 2 to 11 of a packed attitude word.
std::int16_t HeadingFromPbh(std::int32_t attitude) noexcept;
/// An attitude word with that heading (0 .. 360 after whole turns are taken off), wings level.
std::int32_t PbhFromHeading(std::int32_t heading) noexcept;

/// Whole knots from metres per second in 16.16 fixed point, of which only the whole metres count.
std::int16_t SpeedFromWire(std::int32_t fixedPoint) noexcept;
std::int32_t SpeedToWire(std::int32_t knots) noexcept;

/// value divided by 2^n, truncated toward zero; n is 0 .. 30.
std::int32_t DivPow2(std::int32_t value, int n) noexcept;

/// The text of an engine type code: empty for a code without one.
std::string_view EngineTypeText(std::int16_t code) noexcept;
/// The code of an engine type text; a text without one gives the first unused code.
std::int16_t EngineTypeCode(std::string_view text) noexcept;
} // namespace corvane
