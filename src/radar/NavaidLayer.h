#pragma once

#include "core/Records.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"

#include <span>

namespace corvane {
/// Stations on the scope: two circles of 5 and 10 pixels above level 24, single pixels up to it. VORs are blue, NDBs
/// green. The circles leave pen colour, width 1, solid and a transparent fill behind.
void DrawVors(Surface& surface, const ScopeView& view, std::span<const NavaidRecord> vors);
void DrawNdbs(Surface& surface, const ScopeView& view, std::span<const NavaidRecord> ndbs);
} // namespace corvane
