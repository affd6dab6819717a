#include "demo/RunwayFrame.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
RunwayFrame FrameOf(const PlannedRunway& runway)
{
    constexpr double EndInsetM = 30;
    constexpr double ShortestHalfM = 30;
    const double heading = runway.TrueHeading * RadiansPerDegree;
    const GroundVector along{std::sin(heading), std::cos(heading)};
    return {runway.Center, along, {along.North, -along.East}, std::max(runway.LengthM / 2 - EndInsetM, ShortestHalfM)};
}

std::vector<GroundSegment> CenterLines(const std::vector<RunwayFrame>& frames)
{
    std::vector<GroundSegment> lines;
    lines.reserve(frames.size());
    for (const RunwayFrame& frame : frames)
        lines.push_back(frame.CenterLine());
    return lines;
}

std::size_t MainRunway(const std::vector<RunwayFrame>& frames)
{
    const auto worth = [](const RunwayFrame& frame) { return 2 * frame.Half - Length(frame.Center); };
    const auto best = std::max_element(frames.begin(), frames.end(),
                                       [&](const RunwayFrame& a, const RunwayFrame& b) { return worth(a) < worth(b); });
    return static_cast<std::size_t>(best - frames.begin());
}

std::vector<double> Stations(const RunwayFrame& frame)
{
    constexpr double ConnectorEveryM = 700;
    const int parts = std::clamp(RoundTo<std::int32_t>(2 * frame.Half / ConnectorEveryM), 1, 6);
    std::vector<double> stations;
    for (int i = 0; i <= parts; ++i)
        stations.push_back(-frame.Half + 2 * frame.Half * i / parts);
    return stations;
}
} // namespace corvane
