#include "practice/PilotTalk.h"

#include "core/GreatCircle.h"
#include "core/NumberText.h"
#include "core/Rounding.h"

namespace corvane {
std::string HeadingText(int degrees)
{
    std::string text = NumberText(std::int32_t{degrees});
    return text.size() < 3 ? text.insert(0, 3 - text.size(), '0') : text;
}

std::string AltitudeText(int feet)
{
    constexpr int TransitionFt = 18000;
    constexpr int FeetPerLevel = 100;
    return feet >= TransitionFt ? "FL" + NumberText(std::int32_t{feet / FeetPerLevel}) : NumberText(std::int32_t{feet});
}

std::string PresentAltitudeText(double feet)
{
    constexpr double WholeHundreds = 100;
    return AltitudeText(RoundTo<std::int32_t>(feet / WholeHundreds) * 100);
}

std::string PositionText(const ReportedPosition& report, const PracticeScene& scene)
{
    const PracticeAirport* nearest = nullptr;
    for (const PracticeAirport& airport : scene.Airports())
        if (nearest == nullptr ||
            RangeNm(report.Position, airport.Position) < RangeNm(report.Position, nearest->Position))
            nearest = &airport;
    if (nearest == nullptr)
        return "no airport around";
    return NumberText(RoundTo<std::int32_t>(RangeNm(report.Position, nearest->Position))) + " miles from " +
           nearest->Icao;
}
} // namespace corvane
