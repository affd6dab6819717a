#pragma once

#include "core/Records.h"

#include <optional>

namespace corvane {
inline constexpr std::int32_t TraconRadiusNm = 20;
inline constexpr std::int32_t TraconHeightFt = 10000;

/// The TRACON around an airport, which the scenery does not hold: a circle from the airport's elevation to
/// TraconHeightFt above it, served by approach, or by departure where approach has neither name nor frequency. Nothing
/// for an airport without an approach or departure frequency. Bounding box, Name and NextPos stay blank.
std::optional<AirspaceRecord> MakeTracon(const AirportRecord& airport);
} // namespace corvane
