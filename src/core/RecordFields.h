#pragma once

#include "core/Records.h"
#include "core/Settings.h"

#include <concepts>
#include <type_traits>

namespace corvane {
/// How a list is stored: exactly its elements, or with one blank element behind them.
enum class Spare { None, Blank };

template <class Given, class Record>
concept IsRecord = std::same_as<std::remove_const_t<Given>, Record>;

/// The fields of each stored record in the order of its file, once for all who read and write it.
///
/// visit  called with fields one after another; visit.NextPos(field) gets the position of the record that follows,
///        visit.List(list, spare, name) a list with its count
template <IsRecord<NavaidRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Name, record.Ident, record.Lat, record.Lon, record.Frequency, record.RangeNm);
}

template <IsRecord<RunwayRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Designation, record.ReciprocalDesignation);
    visit(record.CenterLat, record.CenterLon, record.End1Lat, record.End1Lon, record.End2Lat, record.End2Lon);
    visit(record.ElevationFt, record.MagHeading, record.ReciprocalMagHeading, record.LengthFt, record.WidthFt);
}

template <IsRecord<IlsRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Ident, record.Lat, record.Lon, record.MagHeading, record.Frequency);
}

template <IsRecord<TaxiPoint> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Kind, record.Lat, record.Lon);
}

template <IsRecord<ParkingRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Name, record.Lat, record.Lon, record.RadiusFt);
}

template <IsRecord<TaxiPath> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Kind, record.StartPoint, record.EndPoint, record.Name);
}

template <IsRecord<AirportRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Name, record.Icao);
    visit.NextPos(record.NextPos);
    visit(record.Lat, record.Lon, record.ElevationFt);
    visit(record.ClearanceFreq, record.ClearanceName, record.GroundFreq, record.GroundName, record.TowerFreq,
          record.TowerName, record.DepartureFreq, record.DepartureName, record.ApproachFreq, record.ApproachName);
    visit.List(record.Runways, Spare::Blank, "Runways");
    visit.List(record.Ils, Spare::Blank, "Ils");
    visit.List(record.TaxiPoints, Spare::None, "TaxiPoints");
    visit.List(record.Parkings, Spare::None, "Parkings");
    visit.List(record.TaxiPaths, Spare::None, "TaxiPaths");
}

template <IsRecord<BoundaryPoint> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.Kind, record.Lat, record.Lon, record.Radius);
}

template <IsRecord<AirspaceRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.ComName, record.Kind);
    visit.NextPos(record.NextPos);
    visit(record.Name, record.Frequency);
    visit(record.CenterLat, record.CenterLon, record.North, record.South, record.West, record.East);
    visit.List(record.Points, Spare::Blank, "Points");
    visit(record.Floor, record.Ceiling);
}

template <IsRecord<SettingsRecord> Record, class Visitor> void VisitFields(Record& record, Visitor& visit)
{
    visit(record.VersionText, record.RecordMark, record.FsVersion, record.FsPath);
    visit(record.AirportCount, record.AirspaceCount, record.VorCount, record.NdbCount);
}
} // namespace corvane
