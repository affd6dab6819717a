#pragma once

#include "core/Geodesy.h"
#include "core/Records.h"
#include "practice/TaxiNetwork.h"
#include "practice/Wind.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// A runway as it is flown in one direction.
struct PracticeRunway {
    std::string Name; ///< 16R, 9: as the database designates it
    LatLon Threshold;
    LatLon FarEnd;
    double Course = 0; ///< true, along the runway
    double LengthFt = 0;
    double ElevationFt = 0;
    bool HasIls = false;

    /// Leading zeros aside: 09L is 9L.
    [[nodiscard]] bool IsNamed(std::string_view name) const noexcept;
};

struct PracticeAirport {
    std::string Icao;
    LatLon Position;
    double ElevationFt = 0;
    std::vector<PracticeRunway> Runways; ///< both directions of each
    std::vector<LatLon> Stands;          ///< parking spots; empty where the database has none
    TaxiNetwork Taxiways = {};
    PracticeWind Wind = {};
    std::vector<std::string> Landing = {}; ///< names of the runways given for it; empty: as the wind has it
    std::vector<std::string> TakeOff = {};

    /// The runway in use for landings of an aircraft that needs a length: one that was given, or of those into the
    /// wind one with ILS before one without, then the longest. Null when none is long enough.
    [[nodiscard]] const PracticeRunway* RunwayInUse(double lengthFt) const noexcept;
    /// The same for take-offs: in a wind a parallel, where there is one, so that they keep clear of the landings.
    [[nodiscard]] const PracticeRunway* TakeOffRunway(double lengthFt) const noexcept;
    /// The runway of a name, leading zeros aside (09L is 9L); null when there is none.
    [[nodiscard]] const PracticeRunway* FindRunway(std::string_view name) const noexcept;
    /// Where an aircraft stands: a parking spot by number, or one made beside the runways where there is none.
    [[nodiscard]] LatLon Stand(std::size_t number) const noexcept;
    /// How many of them there are; numbers from there on begin anew.
    [[nodiscard]] std::size_t StandCount() const noexcept { return Stands.empty() ? MadeStands : Stands.size(); }
    static constexpr std::size_t MadeStands = 12;
};

struct PracticeFix {
    std::string Ident;
    LatLon Position;
};

/// The world that the practice pilots fly in: the airports and navaids of an area, cleaned of records that cannot be
/// flown (no position, runways without length).
class PracticeScene {
public:
    /// The weather over all of it.
    void SetWind(const PracticeWind& wind) noexcept;
    [[nodiscard]] const PracticeWind& Wind() const noexcept { return m_wind; }
    /// The runways of the airport in the middle that are used, by name; unknown ones are passed over.
    void UseRunways(std::vector<std::string> landing, std::vector<std::string> takeOff);

    PracticeScene(std::span<const AirportRecord> airports, std::span<const NavaidRecord> vors,
                  std::span<const NavaidRecord> ndbs, LatLon center);

    [[nodiscard]] LatLon Center() const noexcept { return m_center; }
    [[nodiscard]] const std::vector<PracticeAirport>& Airports() const noexcept { return m_airports; }
    /// The airport in the middle, of those with a runway of a length; null when none is near.
    [[nodiscard]] const PracticeAirport* MainAirport(double lengthFt) const noexcept;
    /// By ICAO code in capitals; null when there is none.
    [[nodiscard]] const PracticeAirport* FindAirport(std::string_view icao) const noexcept;
    [[nodiscard]] const std::vector<PracticeFix>& Fixes() const noexcept { return m_fixes; }
    /// The airport, VOR or NDB of a name in capitals that is nearest to a position; null when there is none.
    [[nodiscard]] const LatLon* FindPlace(std::string_view ident, const LatLon& nearTo) const noexcept;

private:
    LatLon m_center;
    PracticeWind m_wind;
    std::vector<PracticeAirport> m_airports;
    std::vector<PracticeFix> m_fixes;
};
} // namespace corvane
