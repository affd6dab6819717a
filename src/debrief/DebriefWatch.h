#pragma once

#include "area/AreaModel.h"
#include "debrief/FinalWatch.h"
#include "debrief/FlightLog.h"
#include "debrief/RadioWatch.h"
#include "radar/MinimumAltitude.h"
#include "tracks/TrafficMonitor.h"

#include <functional>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
/// What only the program that makes the practice session knows of it.
struct PracticeKnowledge {
    PracticeWind Wind = {}; ///< in which the pilots fly: delays are measured against flights in it
    /// The ICAO code of the airport that a pilot flies to; empty where it goes to none or is not there. Low altitudes
    /// are those of instrument flights to a destination: other flights have them once somebody enters their plans.
    std::function<std::string(std::string_view callsign)> DestinationOf = {};
};

/// Watches a session from anybody's place in it, and judges it at its end. It knows what members say and where they
/// are, and what SetPractice adds. Separation is lost where the conflict alert, as the modern display sets it, says so;
/// what was lost before an aircraft was the controller's is not charged, nor is a low altitude that the controller did
/// not give: approaches lead below the minimum. The area and the grid must outlive it.
class DebriefWatch {
public:
    DebriefWatch(const AreaModel& area, const MagVarGrid& grid);
    DebriefWatch(const DebriefWatch&) = delete; // its parts refer to one another
    DebriefWatch& operator=(const DebriefWatch&) = delete;
    DebriefWatch(DebriefWatch&&) = delete;
    DebriefWatch& operator=(DebriefWatch&&) = delete;
    ~DebriefWatch() = default;

    /// Names whose words count for nothing, such as that of a host who gives hints.
    void Ignore(std::string name) { m_radio.Ignore(std::move(name)); }
    void SetPractice(const PracticeKnowledge& knowledge);

    /// A pilot is there, whose words may come before the next refresh.
    void Meet(const PlayerRecord& player);
    /// A chat line; times are seconds since the session began and never go back.
    void Hear(std::string_view from, std::string_view text, double nowS);
    /// Once a second: who is there.
    void Refresh(std::span<const PlayerRecord> players, double nowS);
    /// What it came to so far.
    [[nodiscard]] Debrief Judge(std::string session) const;

private:
    /// A pair that stands too close, or has.
    struct Loss {
        double SinceS = 0;
        double LastS = 0;
        double ClosestNm = 0;
        std::int32_t ApartFt = 0; ///< then
        bool Charged = false;
        std::string Why;
    };

    void FilePlan(PlayerRecord& pilot) const;
    void TakePilots(std::span<const PlayerRecord> players, double nowS);
    void TakeAlerts(double nowS);
    void TakeLoss(const PlayerRecord& one, const PlayerRecord& other, double nowS);
    void TakeLow(const Alert& alert, const PlayerRecord& pilot, double nowS);
    [[nodiscard]] const PlayerRecord* Find(std::int32_t id) const;
    void AddSeparation(Debrief& debrief) const;

    const AreaModel* m_area;
    const MagVarGrid* m_grid;
    PracticeScene m_scene;
    TrafficMonitor m_monitor;
    MinimumAltitudes m_altitudes;
    std::function<std::string(std::string_view)> m_destinationOf;
    RadioWatch m_radio;
    FlightLog m_flights;
    FinalWatch m_finals;
    std::vector<PlayerRecord> m_pilots;                            ///< of the last refresh
    std::vector<std::string> m_names;                              ///< theirs
    std::map<std::string, std::pair<double, double>> m_lastPlaces; ///< by callsign: latitude, longitude
    std::map<std::pair<std::string, std::string>, std::vector<Loss>> m_losses;
    std::set<std::string> m_lowNow; ///< callsigns of those that are charged with it at present
    std::vector<DebriefItem> m_items;
    std::vector<int> m_handled;
    double m_nowS = 0;
};
} // namespace corvane
