#pragma once

#include "demo/SceneryObjects.h"
#include "demo/WorldData.h"

#include <vector>

namespace corvane {
/// A piece of a control sector, closed at its first vertex. The high one has the limits -1 and -1, which mean all
/// heights above the low one.
SceneryBoundary MakeHighSector(const SectorSource& sector);
/// The same outline from the ground to 24,500 ft.
SceneryBoundary MakeLowSector(const SectorSource& sector);

/// Whether a real Class B area surrounds the airport: those of the United States of America.
bool HasClassB(const AirportSource& airport);
/// The three shelves of a Class B area: a circle of 7 nm from the ground, one of 15 nm from 2,000 ft, and from 4,000 ft
/// the part between 15 and 25 nm on three quarters of the circle, of arcs and lines; all up to 10,000 ft.
std::vector<SceneryBoundary> MakeClassB(const AirportSource& airport);
/// A circle of 5 nm to 4,000 ft.
SceneryBoundary MakeClassC(const AirportSource& airport);
/// A circle of 4 nm to 2,500 ft, with a gap towards the south cut off by a line.
SceneryBoundary MakeClassD(const AirportSource& airport);
} // namespace corvane
