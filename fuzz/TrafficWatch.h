#pragma once

#include "traffic/TrafficEvents.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <set>
#include <string_view>
#include <variant>

namespace corvane {
/// Watches that a source's events keep what TrafficEvent promises: their order, and values that can be shown.
class TrafficWatch {
public:
    void Take(const TrafficEvents& events)
    {
        for (const TrafficEvent& event : events)
            std::visit([this](const auto& told) { this->Check(told); }, event);
    }
    [[nodiscard]] std::size_t Count() const noexcept { return m_there.size(); }

private:
    static void Demand(bool holds)
    {
        if (!holds)
            std::abort();
    }
    static void CheckName(std::string_view name)
    {
        Demand(!name.empty() && name.size() <= TrafficNameLimit);
        for (const char c : name)
            Demand(static_cast<unsigned char>(c) >= ' ' && c != '\x7F');
    }
    static bool Within(double value, double lowest, double highest) { return value >= lowest && value <= highest; }

    void Check(const AircraftAppeared& told)
    {
        CheckName(told.Name);
        Demand(m_there.insert(told.Key).second && m_everThere.insert(told.Key).second);
    }
    void Check(const AircraftMoved& told)
    {
        Demand(m_there.contains(told.Key));
        const TrafficReport& report = told.Report;
        Demand(Within(report.Position.Lat, -90, 90) && Within(report.Position.Lon, -180, 180));
        Demand(Within(report.AltitudeFt, -2000, 200000) && Within(report.TrueHeading, 0, 360));
        Demand(Within(report.GroundSpeedKt, 0, 4000) && report.Squawk.value_or(0) <= 7777);
    }
    void Check(const AircraftRenamed& told)
    {
        CheckName(told.Name);
        Demand(m_there.contains(told.Key));
    }
    void Check(const AircraftSaid& told) { Demand(m_there.contains(told.Key) && told.Text.size() <= TrafficLineLimit); }
    static void Check(const OutsiderSaid& told)
    {
        CheckName(told.Name);
        Demand(told.Text.size() <= TrafficLineLimit);
    }
    void Check(const AircraftVanished& told) { Demand(m_there.erase(told.Key) == 1); }
    void Check(const SourceNotice& /*told*/) {}

    std::set<TrafficKey> m_there;
    std::set<TrafficKey> m_everThere;
};
} // namespace corvane
