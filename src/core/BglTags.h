#pragma once

#include <cstdint>

/// The tags of the records in a scenery file's chains, for those who read such files and those who write them. What
/// each record holds: docs/formats.md.
namespace corvane::BglTag {
inline constexpr std::int32_t Wrapper = 1; ///< a chain of others; the first word says what they are
inline constexpr std::int32_t Reference = 0x10001;
inline constexpr std::int32_t Runway = 0x10002;
inline constexpr std::int32_t Ils = 0x10004;  ///< means something behind a runway only
inline constexpr std::int32_t Name = 0x10006; ///< of a boundary; the ICAO code of an airport
inline constexpr std::int32_t BoundingBox = 0x1000B;
inline constexpr std::int32_t GroundLayout = 0x11001;
inline constexpr std::int32_t ArcCenter = 0x12001;
inline constexpr std::int32_t Start = 0x12002;
inline constexpr std::int32_t Line = 0x12005;
inline constexpr std::int32_t ClockwiseArc = 0x12006;
inline constexpr std::int32_t CounterClockwiseArc = 0x12007;
inline constexpr std::int32_t Circle = 0x12008;
inline constexpr std::int32_t Com = 0x20001;
inline constexpr std::int32_t Directory = 0x30001;
inline constexpr std::int32_t DirectoryEntry = 0x30002;

/// What a directory entry leads to.
inline constexpr std::int32_t AirportEntry = 0x50001;
/// What a wrapper's chain holds.
inline constexpr std::int32_t BoundaryList = 4;
inline constexpr std::int32_t Boundary = 5;
} // namespace corvane::BglTag
