#pragma once

#include "core/Bytes.h"
#include "demo/SceneryObjects.h"

#include <vector>

namespace corvane {
/// Channel 0 is 108.00 MHz, 199 is 117.95 MHz.
inline constexpr int HighestVorChannel = 199;

/// The sections of the older layout: block lists that lead to runs of fixed-size records, offsets counted from the
/// section's first byte. Stations of a VOR channel, and NDBs, keep the order in which they are given; stations whose
/// frequency is no VOR channel are left out.
void AppendVorSection(Bytes& out, const std::vector<SceneryStation>& stations);
void AppendNdbSection(Bytes& out, const std::vector<SceneryStation>& stations);
} // namespace corvane
