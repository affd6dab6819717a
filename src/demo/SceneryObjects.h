#pragma once

#include "core/Records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// What can be put into a scenery file. Positions are degrees, headings degrees true, frequencies kHz.

struct SceneryIls {
    std::string Ident; ///< up to 8 characters
    double Lat = 0;
    double Lon = 0;
    int ElevationFt = 0;
    bool FarEnd = false; ///< serves the end opposite to the runway's first: its course is the runway's reciprocal
    std::int32_t FrequencyKhz = 0;
    int CourseOffset = 0; ///< whole degrees clockwise from that course
};

struct SceneryRunway {
    double Lat = 0; ///< centre
    double Lon = 0;
    int ElevationFt = 0;
    double TrueHeading = 0; ///< of the first end
    int LengthFt = 0;
    int WidthFt = 0;
    int Number = 1; ///< of the first end, 1 .. 36
    char Side = 0;  ///< 'L', 'R', 'C' or 0
    std::vector<SceneryIls> Ils;
};

/// The codes of the services that the scan takes; other codes are stored and passed over.
enum class ComKind : std::int32_t { Ground = 5, Tower = 6, Clearance = 7, Approach = 8, Departure = 9 };

struct SceneryCom {
    ComKind Kind = ComKind::Tower;
    std::int32_t FrequencyKhz = 0;
    std::string Name;
};

enum class GroundPointKind : std::int32_t { Normal = 1, HoldShort = 2 };
enum class GroundPathKind : std::int32_t { Taxiway = 0, Runway = 1, Parking = 2 };

/// Metres east and north of the airport's reference point.
struct GroundPoint {
    GroundPointKind Kind = GroundPointKind::Normal;
    double East = 0;
    double North = 0;
};

/// Where the word of a parking spot's name stands in the simulator's table.
enum class SpotWord : std::int32_t {
    Parking = 1,
    NParking = 2, ///< the eight compass directions follow clockwise up to 9, NW PARKING
    Gate = 10,
    Dock = 11,
    GateA = 12, ///< GATE B and so on up to 37, GATE Z
};

struct GroundParking {
    double East = 0;
    double North = 0;
    double RadiusM = 0;
    SpotWord Word = SpotWord::Parking;
    int Number = 1; ///< 1 .. 8191
};

struct GroundPath {
    GroundPathKind Kind = GroundPathKind::Taxiway;
    std::int32_t Start = 0; ///< index into Points
    std::int32_t End = 0;   ///< index into Points, or into Parkings for a parking path
    std::int32_t Name = 0;  ///< index into Names; for a runway path the runway's place in the airport's list
};

struct GroundLayout {
    std::vector<GroundPoint> Points;
    std::vector<GroundParking> Parkings;
    std::vector<GroundPath> Paths;
    std::vector<std::string> Names; ///< up to 8 characters each
};

struct SceneryAirport {
    std::string Name;
    std::string Icao;
    double Lat = 0;
    double Lon = 0;
    int ElevationFt = 0;
    std::vector<SceneryCom> Coms;
    std::vector<SceneryRunway> Runways;
    GroundLayout Ground; ///< without points it is left out
};

/// A boundary; with a facility it is a sector, without one its limits decide its class.
struct SceneryBoundary {
    std::string Name;
    std::string Facility;
    std::int32_t FrequencyKhz = 0; ///< stored only with a facility
    double South = 0;
    double West = 0;
    double North = 0;
    double East = 0;
    std::int32_t Floor = 0;
    std::int32_t Ceiling = 0;
    std::vector<BoundaryPoint> Points;
};

/// A VOR or an NDB of a navaid section.
struct SceneryStation {
    std::string Ident; ///< up to 4 characters
    std::string Name;  ///< up to 23 characters
    double Lat = 0;
    double Lon = 0;
    int ElevationFt = 0;
    int RangeNm = 0;
    std::int32_t FrequencyTenthsKhz = 0; ///< VOR: 1080000 .. 1179500 in steps of 500; NDB: 0 .. 25599999
    bool WithDme = false;                ///< VOR only: a distance record follows, which the scan passes over
};
} // namespace corvane
