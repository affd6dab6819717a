#pragma once

#include "demo/PlannedRunway.h"

#include <vector>

namespace corvane {
/// A runway's own axes: along it from the first end to the other, and across to the right; metres.
struct RunwayFrame {
    GroundVector Center;
    GroundVector Along;
    GroundVector Right;
    double Half = 0;

    [[nodiscard]] GroundVector At(double along, double right) const { return Center + Along * along + Right * right; }
    [[nodiscard]] GroundSegment CenterLine() const { return {At(-Half, 0), At(Half, 0)}; }
};

/// The frame ends a little inside the pavement, where runway paths end.
RunwayFrame FrameOf(const PlannedRunway& runway);
std::vector<GroundSegment> CenterLines(const std::vector<RunwayFrame>& frames);
/// The runway that is long and near the reference point: the buildings stand there.
std::size_t MainRunway(const std::vector<RunwayFrame>& frames);
/// Where connectors leave the runway, along it: at both ends and about every 700 m between.
std::vector<double> Stations(const RunwayFrame& frame);
} // namespace corvane
