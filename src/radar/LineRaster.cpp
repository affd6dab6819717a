#include "radar/LineRaster.h"

#include "radar/PixelPen.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace corvane {
namespace {
/// A line seen along its longer axis: one pixel a step.
struct SteppedLine {
    std::int64_t Major = 0; ///< where it starts
    std::int64_t Minor = 0;
    std::int64_t Steps = 0;
    std::int64_t Direction = 1; ///< of the major axis
    double Slope = 0;           ///< minor pixels a step
};

struct StepRange {
    std::int64_t First = 0;
    std::int64_t Last = -1;
};
} // namespace

static SteppedLine SteppedAlong(std::int64_t major1, std::int64_t minor1, std::int64_t major2,
                                std::int64_t minor2) noexcept
{
    SteppedLine line{major1, minor1, std::abs(major2 - major1), major2 < major1 ? -1 : 1, 0};
    if (line.Steps != 0)
        line.Slope = static_cast<double>(minor2 - minor1) / static_cast<double>(line.Steps);
    return line;
}

/// Narrows a range to the steps at which start + step * slope lies in low .. high, a step wider to be safe.
static void Narrow(StepRange& range, double start, double slope, double low, double high) noexcept
{
    if (slope == 0) {
        if (start < low || start > high)
            range = {};
        return;
    }
    const auto [enter, leave] = std::minmax({(low - start) / slope, (high - start) / slope});
    // held to the range first: a nearly level line meets the border too far out for a whole number
    const auto first = static_cast<double>(range.First);
    const auto last = static_cast<double>(range.Last);
    if (enter > last || leave < first) {
        range = {};
        return;
    }
    range.First = std::max(range.First, static_cast<std::int64_t>(std::max(enter, first)) - 1);
    range.Last = std::min(range.Last, static_cast<std::int64_t>(std::min(leave, last)) + 1);
}

/// The steps of a line that can touch an image, whose sides along the line's axes are given.
static StepRange VisibleSteps(const SteppedLine& line, std::int32_t majorSide, std::int32_t minorSide,
                              std::int32_t reach) noexcept
{
    StepRange range{0, line.Steps};
    Narrow(range, static_cast<double>(line.Major), static_cast<double>(line.Direction), -reach, majorSide + reach);
    if (range.First <= range.Last)
        Narrow(range, static_cast<double>(line.Minor), line.Slope, -reach, minorSide + reach);
    return range;
}

template <bool Steep> static void DrawSteps(PixelPen& pen, const SteppedLine& line, StepRange range) noexcept
{
    if (range.First > range.Last)
        return;
    // 32 fractional bits: the visible part is short, so the error stays far below a pixel
    constexpr double One = 4294967296.0;
    const double offset = static_cast<double>(range.First) * line.Slope + 0.5;
    const double whole = std::floor(offset);
    std::int64_t minor = (line.Minor + static_cast<std::int64_t>(whole)) * (std::int64_t{1} << 32) +
                         static_cast<std::int64_t>((offset - whole) * One);
    const auto slope = static_cast<std::int64_t>(line.Slope * One);
    for (std::int64_t step = range.First; step <= range.Last; ++step) {
        const std::int64_t major = line.Major + line.Direction * step;
        if constexpr (Steep)
            pen.Put(minor >> 32, major, step);
        else
            pen.Put(major, minor >> 32, step);
        minor += slope;
    }
}

void RasterLine(PixelImage& image, const DrawState& state, ScopePoint from, ScopePoint to, double scale) noexcept
{
    PixelPen pen(image, state, scale);
    const std::int64_t dx = std::int64_t{to.X} - from.X;
    const std::int64_t dy = std::int64_t{to.Y} - from.Y;
    if (std::abs(dx) >= std::abs(dy)) {
        const SteppedLine line = SteppedAlong(from.X, from.Y, to.X, to.Y);
        DrawSteps<false>(pen, line, VisibleSteps(line, image.Width(), image.Height(), pen.Reach()));
    } else {
        const SteppedLine line = SteppedAlong(from.Y, from.X, to.Y, to.X);
        DrawSteps<true>(pen, line, VisibleSteps(line, image.Height(), image.Width(), pen.Reach()));
    }
}
} // namespace corvane
