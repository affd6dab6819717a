#include "builder/AirportDecoder.h"

#include "builder/RunwayDecoder.h"
#include "builder/TaxiwayDecoder.h"
#include "core/BglTags.h"
#include "core/Frequency.h"
#include "core/Geodesy.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <utility>

namespace corvane {
namespace {
/// Carried by airports and left unread.
constexpr std::int32_t FirstSkippedRecord = 0x10003;
constexpr std::int32_t SecondSkippedRecord = 0x10005;

class AirportDecoder {
public:
    AirportDecoder(BglScan& scan, AirportRecord& airport) noexcept
        : m_scan(scan), m_airport(airport), m_runways(scan, airport), m_layout(scan, airport)
    {
    }

    void WalkRecords(std::int64_t r);

private:
    bool DecodeRecord(std::int64_t r, const BglRecordHead& head);
    bool DecodeReference(std::int64_t r);
    bool DecodeIcao(std::int64_t r, std::int64_t size);
    bool DecodeCom(std::int64_t r, std::int64_t size);
    [[nodiscard]] std::pair<std::string*, std::string*> ComFields(std::int32_t kind) const noexcept;

    BglScan& m_scan;
    AirportRecord& m_airport;
    RunwayDecoder m_runways;
    TaxiwayDecoder m_layout;
    bool m_behindRunway = false;
    std::string m_comName; ///< of the last COM record that had one
};
} // namespace

void AirportDecoder::WalkRecords(std::int64_t r)
{
    while (true) {
        const BglRecordHead head = ReadRecordHead(m_scan, r);
        if (m_scan.Stopped() || !DecodeRecord(r, head))
            return;
        const std::optional<std::int64_t> next = head.Next(r);
        if (!next)
            return;
        r = *next;
    }
}

/// False where the airport ends: on an unknown tag or an error.
bool AirportDecoder::DecodeRecord(std::int64_t r, const BglRecordHead& head)
{
    const bool behindRunway = std::exchange(m_behindRunway, false);
    switch (head.Tag) {
    case BglTag::Reference: return DecodeReference(r);
    case BglTag::Runway: m_behindRunway = true; return m_runways.DecodeRunway(r);
    case BglTag::Ils: m_behindRunway = behindRunway; return !behindRunway || m_runways.DecodeIls(r, head.ContentSize);
    case FirstSkippedRecord:
    case SecondSkippedRecord: return true;
    case BglTag::Name: return DecodeIcao(r, head.ContentSize);
    case BglTag::GroundLayout: return m_layout.Decode(r);
    case BglTag::Com: return DecodeCom(r, head.ContentSize);
    default: return false;
    }
}

bool AirportDecoder::DecodeReference(std::int64_t r)
{
    constexpr double LongitudeUnits = 4294967297.0; // one more than elsewhere: the database has always had it so
    BglReader& reader = m_scan.Reader;
    if (!m_scan.Keep(m_airport.Lat, ChainLatitude(reader.ReadI32(r + 12))))
        return false;
    if (!m_scan.Keep(m_airport.Lon, reader.ReadI32(r + 20) * 360.0 / LongitudeUnits))
        return false;
    const auto elevation = RoundChecked<std::int32_t>(reader.ReadI32(r + 28) / MetresPerFoot);
    return elevation && m_scan.Keep(m_airport.ElevationFt, *elevation);
}

bool AirportDecoder::DecodeIcao(std::int64_t r, std::int64_t size)
{
    return m_scan.Keep(m_airport.Icao, ToUpper(m_scan.ReadText(r + 8, size)));
}

std::pair<std::string*, std::string*> AirportDecoder::ComFields(std::int32_t kind) const noexcept
{
    switch (kind) {
    case 5: return {&m_airport.GroundFreq, &m_airport.GroundName};
    case 6: return {&m_airport.TowerFreq, &m_airport.TowerName};
    case 7: return {&m_airport.ClearanceFreq, &m_airport.ClearanceName};
    case 8: return {&m_airport.ApproachFreq, &m_airport.ApproachName};
    case 9: return {&m_airport.DepartureFreq, &m_airport.DepartureName};
    default: return {nullptr, nullptr};
    }
}

bool AirportDecoder::DecodeCom(std::int64_t r, std::int64_t size)
{
    constexpr std::int64_t SizeWithoutName = 8;
    std::optional<std::string> frequency = BcdFrequency(m_scan.Reader.ReadI32(r + 8));
    const std::int32_t kind = m_scan.Reader.ReadI32(r + 12);
    if (!frequency)
        return false;
    if (size > SizeWithoutName && !m_scan.Keep(m_comName, m_scan.ReadText(r + 16, size - SizeWithoutName)))
        return false;
    if (m_scan.Stopped())
        return false;
    const auto [freqField, nameField] = ComFields(kind);
    if (freqField != nullptr && freqField->empty()) { // the first of each kind counts
        *freqField = *std::move(frequency);
        *nameField = m_comName;
    }
    return true;
}

void DecodeAirport(BglScan& scan, std::int64_t dataOffset, const std::string& name)
{
    constexpr std::int64_t DataHead = 16;
    AirportRecord airport;
    airport.Name = name;
    AirportDecoder(scan, airport).WalkRecords(dataOffset + DataHead);
    scan.Absorb("the airport", dataOffset);
    scan.Sink.AddAirport(airport);
}
} // namespace corvane
