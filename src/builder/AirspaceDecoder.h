#pragma once

#include "builder/BglScan.h"

#include <cstdint>

namespace corvane {
/// Walks the boundary list at p and hands the ARTCC/FIR sectors and Class B airspaces in it to the sink; boundaries of
/// other kinds are dropped. An error inside a boundary abandons that boundary alone.
void WalkBoundaryList(BglScan& scan, std::int64_t p);

/// The kind of a boundary. Limits are as the scenery gives them; without a facility's frequency and name they tell the
/// classes apart, with them they tell high sectors (both negative) from low ones.
const char* AirspaceKind(const AirspaceRecord& airspace) noexcept;

/// Sets an airspace's centre: halfway along its box's diagonal from the north-west to the south-east corner.
void SetCenterOfBox(AirspaceRecord& airspace) noexcept;
} // namespace corvane
