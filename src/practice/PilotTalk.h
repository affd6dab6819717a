#pragma once

#include "core/MagVarGrid.h"
#include "practice/PracticeScene.h"

#include <string>

namespace corvane {
/// What the receiver of a position report is to show.
struct ReportedPosition {
    LatLon Position;
    double AltitudeFt = 0;
    int TrueHeading = 0; ///< 0 .. 360
    double SpeedKt = 0;  ///< over the ground
};

/// A heading as it is said: 090.
std::string HeadingText(int degrees);
/// Feet, or from the transition altitude on a flight level: FL180.
std::string AltitudeText(int feet);
/// The same, of an altitude as it is flown, to the nearest hundred.
std::string PresentAltitudeText(double feet);
/// "12 miles from KBIG"
std::string PositionText(const ReportedPosition& report, const PracticeScene& scene);
} // namespace corvane
