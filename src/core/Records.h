#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// The records of the scenery database. Latitudes and longitudes are degrees, north and east positive; elevations,
/// lengths and radii feet; headings whole degrees magnetic; texts 8-bit Windows-1252. The lists hold the elements in
/// use: a record's "...Count" is its list's size. Encoding: core/RecordCodec.h and docs/formats.md.

/// A VOR or an NDB; only the file it stands in tells them apart.
struct NavaidRecord {
    std::string Name;
    std::string Ident;
    double Lat = 0;
    double Lon = 0;
    std::string Frequency; ///< decimal text, MHz for a VOR, kHz for an NDB
    std::uint8_t RangeNm = 0;
    bool operator==(const NavaidRecord&) const = default;
};

struct RunwayRecord {
    std::string Designation; ///< number without leading zero and side letter of the first end: 9L
    std::string ReciprocalDesignation;
    double CenterLat = 0;
    double CenterLon = 0;
    double End1Lat = 0; ///< the end from which the runway heading is flown
    double End1Lon = 0;
    double End2Lat = 0;
    double End2Lon = 0;
    std::int32_t ElevationFt = 0;
    std::int16_t MagHeading = 0;
    std::int16_t ReciprocalMagHeading = 0;
    std::int32_t LengthFt = 0;
    std::int32_t WidthFt = 0;
    bool operator==(const RunwayRecord&) const = default;
};

struct IlsRecord {
    std::string Ident;
    double Lat = 0;
    double Lon = 0;
    std::int16_t MagHeading = 0;
    std::string Frequency;
    bool operator==(const IlsRecord&) const = default;
};

struct TaxiPoint {
    std::int32_t Kind = 0;
    double Lat = 0;
    double Lon = 0;
    bool operator==(const TaxiPoint&) const = default;
};

struct ParkingRecord {
    std::string Name;
    double Lat = 0;
    double Lon = 0;
    std::int32_t RadiusFt = 0;
    bool operator==(const ParkingRecord&) const = default;
};

/// A taxiway segment. Kinds 0 and 1 (on a runway) join two taxi points, kind 2 a taxi point and a parking spot.
struct TaxiPath {
    std::int32_t Kind = 0;
    std::int32_t StartPoint = 0; ///< index into the airport's TaxiPoints; as stored, so it may name none
    std::int32_t EndPoint = 0;   ///< index into TaxiPoints, or into Parkings when Kind is 2
    std::string Name;
    bool operator==(const TaxiPath&) const = default;
};

struct AirportRecord {
    std::string Name;
    std::string Icao;
    std::int32_t NextPos = 0; ///< 1-based position in the file of the byte after this record
    double Lat = 0;
    double Lon = 0;
    std::int32_t ElevationFt = 0;
    std::string ClearanceFreq; ///< MHz as decimal text, empty if none; so for the four that follow
    std::string ClearanceName;
    std::string GroundFreq;
    std::string GroundName;
    std::string TowerFreq;
    std::string TowerName;
    std::string DepartureFreq;
    std::string DepartureName;
    std::string ApproachFreq;
    std::string ApproachName;
    std::vector<RunwayRecord> Runways;
    std::vector<IlsRecord> Ils;
    std::vector<TaxiPoint> TaxiPoints;
    std::vector<ParkingRecord> Parkings;
    std::vector<TaxiPath> TaxiPaths;
    bool operator==(const AirportRecord&) const = default;
};

/// What a boundary point means to the outline of an airspace; other codes are carried and draw nothing.
enum class BoundaryKind : std::uint8_t {
    Start = 0,               ///< the outline goes on from here
    ArcCenter = 1,           ///< the centre of the circles and arcs that follow
    Circle = 2,              ///< a full circle of Radius around the arc centre; carries no position
    ClockwiseArc = 3,        ///< an arc around the arc centre to here
    CounterClockwiseArc = 4, ///< the same the other way round
    Line = 5,                ///< a straight line to here
};

struct BoundaryPoint {
    BoundaryKind Kind = BoundaryKind::Start;
    double Lat = 0;
    double Lon = 0;
    std::int32_t Radius = 0; ///< nautical miles, for circles
    bool operator==(const BoundaryPoint&) const = default;
};

/// The values of AirspaceRecord::Kind that the program tells apart.
inline constexpr const char* HighSectorKind = "ARTCC/FIR (HIGH)";
inline constexpr const char* LowSectorKind = "ARTCC/FIR (LOW)";
inline constexpr const char* TraconKind = "TRACON (Departure/Approach)";
inline constexpr const char* ClassBKind = "Airspace Class B";
inline constexpr const char* ClassCKind = "Airspace Class C";
inline constexpr const char* ClassDKind = "Airspace Class D";

struct AirspaceRecord {
    std::string ComName; ///< the facility that serves the airspace; a sector's name
    std::string Kind;
    std::int32_t NextPos = 0;
    std::string Name;
    std::string Frequency; ///< ends in " Mhz" where there is one
    double CenterLat = 0;
    double CenterLon = 0;
    double North = 0; ///< bounding box; West above East where it crosses the 180 degree meridian
    double South = 0;
    double West = 0;
    double East = 0;
    std::vector<BoundaryPoint> Points;
    std::int32_t Floor = 0; ///< as the scenery gives them
    std::int32_t Ceiling = 0;
    bool operator==(const AirspaceRecord&) const = default;
};
} // namespace corvane
