#pragma once

#include "core/GreatCircle.h"
#include "practice/PracticeScene.h"

#include <string>
#include <utility>
#include <vector>

namespace corvane::test {
/// A runway of a length around a middle, flown along a true course from its first end.
inline RunwayRecord MakeRunway(std::string name, std::string reciprocal, LatLon middle, double course, int lengthFt,
                               int elevationFt)
{
    const LatLon end1 = Along(middle, course, -lengthFt / FeetPerNm / 2);
    const LatLon end2 = Along(middle, course, lengthFt / FeetPerNm / 2);
    return {.Designation = std::move(name),
            .ReciprocalDesignation = std::move(reciprocal),
            .CenterLat = middle.Lat,
            .CenterLon = middle.Lon,
            .End1Lat = end1.Lat,
            .End1Lon = end1.Lon,
            .End2Lat = end2.Lat,
            .End2Lon = end2.Lon,
            .ElevationFt = elevationFt,
            .MagHeading = static_cast<std::int16_t>(course),
            .ReciprocalMagHeading = static_cast<std::int16_t>(course < 180 ? course + 180 : course - 180),
            .LengthFt = lengthFt,
            .WidthFt = 150};
}

inline AirportRecord MakeAirport(std::string name, std::string icao, LatLon position, int elevationFt)
{
    AirportRecord airport;
    airport.Name = std::move(name);
    airport.Icao = std::move(icao);
    airport.Lat = position.Lat;
    airport.Lon = position.Lon;
    airport.ElevationFt = elevationFt;
    return airport;
}

/// KBIG with 16R/34L (ILS on 16R) and 16L/34R without, KMID 35 miles east, the grass strip KTNY 20 miles north; all
/// runways' magnetic headings stand as if there were no variation.
inline std::vector<AirportRecord> PracticeAirports()
{
    const LatLon big{47.45, -122.31};
    AirportRecord kbig = MakeAirport("Big", "KBIG", big, 430);
    kbig.Runways.push_back(MakeRunway("16R", "34L", Along(big, 270, 0.4), 163, 11900, 429));
    kbig.Runways.push_back(MakeRunway("16L", "34R", Along(big, 90, 0.4), 163, 9000, 432));
    const RunwayRecord& ils = kbig.Runways.front();
    kbig.Ils.push_back(
        {.Ident = "IBIG", .Lat = ils.End1Lat, .Lon = ils.End1Lon, .MagHeading = 163, .Frequency = "110.3"});
    const LatLon mid = Along(big, 90, 35);
    AirportRecord kmid = MakeAirport("Mid", "KMID", mid, 1200);
    kmid.Runways.push_back(MakeRunway("9", "27", mid, 95, 7000, 1200));
    const LatLon tiny = Along(big, 0, 20);
    AirportRecord ktny = MakeAirport("Tiny", "KTNY", tiny, 80);
    ktny.Runways.push_back(MakeRunway("7", "25", tiny, 70, 1800, 80));
    return {kbig, kmid, ktny};
}

inline std::vector<NavaidRecord> PracticeVors()
{
    return {{.Name = "Big", .Ident = "BIG", .Lat = 47.44, .Lon = -122.3, .Frequency = "116.8", .RangeNm = 130}};
}
inline std::vector<NavaidRecord> PracticeNdbs()
{
    return {{.Name = "Nolla", .Ident = "NO", .Lat = 47.6, .Lon = -122.4, .Frequency = "362", .RangeNm = 50}};
}

inline PracticeScene MakeScene()
{
    const auto airports = PracticeAirports();
    const auto vors = PracticeVors();
    const auto ndbs = PracticeNdbs();
    return {airports, vors, ndbs, LatLon{47.45, -122.31}};
}
} // namespace corvane::test
