#include "world/NavFile.h"

#include "core/Frequency.h"
#include "core/GreatCircle.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "world/AptRows.h"

#include <algorithm>
#include <limits>

namespace corvane {
/// From this edition on, rows name the terminal area and the region before the name.
static constexpr int RegionsEdition = 1100;

void LocalizerTable::Add(Localizer localizer)
{
    m_byAirport[localizer.Airport].push_back(m_localizers.size());
    m_localizers.push_back(std::move(localizer));
    ++m_left;
}

static LatLon PlaceOf(const Localizer& localizer, const AirportRecord& airport)
{
    for (const RunwayRecord& runway : airport.Runways) {
        if (localizer.Runway.empty())
            break;
        if (runway.Designation == localizer.Runway)
            return {runway.End1Lat, runway.End1Lon};
        if (runway.ReciprocalDesignation == localizer.Runway)
            return {runway.End2Lat, runway.End2Lon};
    }
    return localizer.Antenna;
}

std::vector<IlsRecord> LocalizerTable::Take(const AirportRecord& airport, const std::string& otherCode,
                                            const MagVarGrid& grid)
{
    std::vector<std::size_t> taken;
    for (const std::string& code : {airport.Icao, otherCode}) {
        const auto found = m_byAirport.find(code);
        if (found == m_byAirport.end())
            continue;
        taken.insert(taken.end(), found->second.begin(), found->second.end());
        m_byAirport.erase(found);
    }
    std::sort(taken.begin(), taken.end());
    m_left -= static_cast<std::int64_t>(taken.size());
    std::vector<IlsRecord> ils;
    for (const std::size_t index : taken) {
        Localizer& localizer = m_localizers[index];
        const LatLon place = PlaceOf(localizer, airport);
        ils.push_back({std::move(localizer.Ident), place.Lat, place.Lon,
                       MagneticFromTrue(grid, localizer.Course, place), std::move(localizer.Frequency)});
    }
    return ils;
}

/// A frequency in hundredths of a megahertz as the database's text.
static std::string MegahertzText(RowReader& row)
{
    constexpr double Highest = 99999900;
    const double written = row.NumberWithin(0, Highest, "a frequency");
    return TenThousandthsText(RoundTo<std::int32_t>(written * 100));
}

static NavaidRecord ReadNavaidRow(RowReader& row, bool isVor, int edition)
{
    constexpr double Highest = 1e6;
    NavaidRecord navaid;
    const LatLon position = row.Position();
    navaid.Lat = position.Lat;
    navaid.Lon = position.Lon;
    row.Skip(1); // elevation
    navaid.Frequency = isVor ? MegahertzText(row) : NumberText(row.NumberWithin(0, Highest, "a frequency"));
    constexpr std::int32_t Farthest = std::numeric_limits<std::uint8_t>::max();
    navaid.RangeNm = static_cast<std::uint8_t>(std::clamp(RoundTo<std::int32_t>(row.Number()), 0, Farthest));
    row.Skip(1); // slaved variation
    navaid.Ident = row.Text();
    if (edition >= RegionsEdition)
        row.Skip(2); // terminal area, region
    navaid.Name = row.Rest();
    return navaid;
}

static Localizer ReadLocalizerRow(RowReader& row, int edition)
{
    Localizer localizer;
    localizer.Antenna = row.Position();
    row.Skip(1); // elevation
    localizer.Frequency = MegahertzText(row);
    row.Skip(1);                                 // range
    localizer.Course = WrapCourse(row.Number()); // later editions add turns that tell the magnetic course
    localizer.Ident = row.Text();
    localizer.Airport = ToUpper(row.Text());
    if (edition >= RegionsEdition && row.HasMore())
        row.Skip(1); // region
    if (row.HasMore())
        localizer.Runway = RunwayNumber(row.Text());
    return localizer;
}

Result<void> ReadNavFile(RowFile& rows, const NavSink& sink, LocalizerTable& localizers)
{
    enum RowCode { Ndb = 2, Vor = 3, IlsLocalizer = 4, OtherLocalizer = 5 };
    if (const Result<void> head = rows.ReadHead(); !head)
        return head;
    std::int64_t read = 0;
    while (rows.Next()) {
        if (rows.Code() < Ndb || rows.Code() > OtherLocalizer)
            continue;
        RowReader row = rows.Fields();
        if (rows.Code() == Ndb || rows.Code() == Vor) {
            const bool isVor = rows.Code() == Vor;
            const NavaidRecord navaid = ReadNavaidRow(row, isVor, rows.Edition());
            if (rows.PassedOver(row))
                continue;
            isVor ? sink.AddVor(navaid) : sink.AddNdb(navaid);
        } else {
            Localizer localizer = ReadLocalizerRow(row, rows.Edition());
            if (localizers.Count() >= LocalizerTable::MostLocalizers)
                row.Refuse("the file has more than a million localizers");
            if (rows.PassedOver(row))
                continue;
            localizers.Add(std::move(localizer));
        }
        ++read;
    }
    const Result<void> finished = rows.Finish();
    if (finished && read == 0)
        return Fail(rows.Name(), "holds no VOR, NDB or localizer: it is another kind of file");
    return finished;
}
} // namespace corvane
