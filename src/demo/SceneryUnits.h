#pragma once

#include <cstdint>

namespace corvane {
/// Numbers as scenery files store them: the inverse of what the scan reads.

/// Latitude in degrees as a signed word of 90 / 10001750 degree.
std::int32_t LatitudeWord(double lat) noexcept;
/// Longitude in degrees as a signed word of 360 / 2^32 degree; the 180 degree meridian becomes -180.
std::int32_t LongitudeWord(double lon) noexcept;
/// A true heading in degrees, 0 .. 360, as a word of 360 / 2^32 degree; from 180 degrees on the word is negative.
std::int32_t HeadingWord(double trueHeading) noexcept;
/// The opposite direction of a heading word.
std::int32_t OppositeHeadingWord(std::int32_t word) noexcept;
/// A heading word turned by whole degrees, clockwise where positive.
std::int32_t TurnedHeadingWord(std::int32_t word, int degrees) noexcept;
/// A frequency in kHz, 0 .. 9999999, as binary-coded decimal ten-thousandths of a megahertz: 118100 is 0x01181000.
std::int32_t FrequencyWord(std::int32_t kilohertz) noexcept;
/// Feet as whole metres.
std::int32_t MetresFromFeet(double feet) noexcept;

/// Latitude as a 24-bit number of 90 / 5000875 degree, for navaid sections.
std::int32_t NavaidLatitude(double lat) noexcept;
/// Longitude as a signed 24-bit number of 360 / 2^24 degree, for navaid sections.
std::int32_t NavaidLongitude(double lon) noexcept;
/// A range in nautical miles as a byte of 2048 metres; ranges above 282 nautical miles become 255.
std::uint8_t NavaidRange(double rangeNm) noexcept;
} // namespace corvane
