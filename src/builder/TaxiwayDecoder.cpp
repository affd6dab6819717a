#include "builder/TaxiwayDecoder.h"

#include "builder/PathNames.h"
#include "core/NumberText.h"
#include "core/Rounding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace corvane {
static constexpr std::int32_t TaxiPointSize = 12;
static constexpr std::int32_t ParkingSize = 20;
static constexpr std::int32_t TaxiPathSize = 32;
static constexpr std::int32_t NameSize = 8;

std::string ParkingNameText(std::int32_t nameIndex)
{
    constexpr std::array<std::string_view, 12> Names = {"",          "PARKING",    "N PARKING", "NE PARKING",
                                                        "E PARKING", "SE PARKING", "S PARKING", "SW PARKING",
                                                        "W PARKING", "NW PARKING", "GATE",      "DOCK"};
    constexpr std::int32_t GateA = 12;
    constexpr std::int32_t GateZ = 37;
    if (nameIndex >= GateA && nameIndex <= GateZ)
        return std::string("GATE ") + static_cast<char>('A' + (nameIndex - GateA));
    if (nameIndex < 1 || nameIndex > GateZ)
        return {};
    return std::string(Names[static_cast<std::size_t>(nameIndex)]);
}

ParkingWord SplitParkingWord(std::int32_t word) noexcept
{
    constexpr std::int32_t UsedBits = 0xFFFFF;
    constexpr std::int32_t NamesPerNumber = 128;
    const std::int32_t x = word & UsedBits;
    const auto number = RoundTo<std::int32_t>(static_cast<double>(x) / NamesPerNumber);
    return {number, x - NamesPerNumber * number};
}

bool TaxiwayDecoder::KeepLon(double& field, std::int64_t at)
{
    const double eastM = m_scan.Reader.ReadF32(at);
    return std::isfinite(eastM) && m_scan.Keep(field, m_offsets.OffsetToLon(eastM));
}

bool TaxiwayDecoder::KeepLat(double& field, std::int64_t at)
{
    const double northM = m_scan.Reader.ReadF32(at);
    return std::isfinite(northM) && m_scan.Keep(field, m_offsets.OffsetToLat(northM));
}

bool TaxiwayDecoder::DecodeTaxiPoint(TaxiPoint& point, std::int64_t e)
{
    return m_scan.Keep(point.Kind, m_scan.Reader.ReadI32(e)) && KeepLon(point.Lon, e + 4) && KeepLat(point.Lat, e + 8);
}

bool TaxiwayDecoder::DecodeParking(ParkingRecord& parking, std::int64_t e)
{
    if (!KeepLon(parking.Lon, e) || !KeepLat(parking.Lat, e + 4))
        return false;
    const double radiusM = m_scan.Reader.ReadF32(e + 8);
    const auto radiusFt = RoundChecked<std::int32_t>(radiusM / MetresPerFoot);
    if (!radiusFt || !m_scan.Keep(parking.RadiusFt, *radiusFt))
        return false;
    const ParkingWord word = SplitParkingWord(m_scan.Reader.ReadI32(e + 16));
    if (std::string text = ParkingNameText(word.NameIndex); !text.empty())
        m_parkingText = std::move(text);
    return m_scan.Keep(parking.Name, m_parkingText + " " + NumberText(word.Number));
}

bool TaxiwayDecoder::DecodeTaxiPath(TaxiPath& path, std::int64_t e)
{
    BglReader& reader = m_scan.Reader;
    return m_scan.Keep(path.Kind, reader.ReadI32(e)) && m_scan.Keep(path.StartPoint, reader.ReadI32(e + 12)) &&
           m_scan.Keep(path.EndPoint, reader.ReadI32(e + 16)) &&
           m_scan.Keep(path.Name, NumberText(reader.ReadI32(e + 28)));
}

/// How many whole elements of a list can be read, at most what it claims.
static std::int64_t ElementsLeft(const BglReader& reader, std::int64_t at, std::int32_t count, std::int64_t size)
{
    return std::clamp<std::int64_t>((reader.End() - at) / size, 0, std::max(count, 0));
}

template <class Element, class DecodeElement>
bool TaxiwayDecoder::DecodeList(std::vector<Element>& list, const ListHead& head, std::int64_t at,
                                const DecodeElement& decodeElement)
{
    if (head.Count > std::numeric_limits<std::int16_t>::max())
        return false;
    const std::int64_t left = ElementsLeft(m_scan.Reader, at, head.Count, head.ElementSize);
    if (!m_scan.Budget.Spend(left * head.ElementSize) || !m_scan.SpendBlanks(head.Count - left))
        return false;
    list.assign(static_cast<std::size_t>(head.Count), Element{});
    for (Element& element : list) {
        if (!decodeElement(element, at))
            return false;
        at += head.ElementSize;
    }
    return true;
}

bool TaxiwayDecoder::NamePaths(const ListHead& head, std::int64_t at)
{
    const std::int64_t left = ElementsLeft(m_scan.Reader, at, head.Count, NameSize);
    const auto paths = static_cast<std::int64_t>(m_airport.TaxiPaths.size());
    if (!m_scan.Budget.Spend(left * NameSize + paths)) // further records of the airport walk the same paths again
        return false;
    PathNames names(m_airport.TaxiPaths, left);
    for (std::int64_t i = 0; i < left; ++i, at += NameSize)
        names.NameNext(m_scan.Reader.ReadText(at, NameSize));
    names.Finish();
    return left >= head.Count && NameRunwayPaths();
}

bool TaxiwayDecoder::NameRunwayPaths()
{
    constexpr std::int32_t RunwayKind = 1;
    for (TaxiPath& path : m_airport.TaxiPaths) {
        if (path.Kind != RunwayKind)
            continue;
        std::size_t runway = 0;
        const char* const end = path.Name.data() + path.Name.size();
        const auto read = std::from_chars(path.Name.data(), end, runway);
        if (read.ec != std::errc() || read.ptr != end || runway >= m_airport.Runways.size())
            return false;
        path.Name = "Runway " + m_airport.Runways[runway].Designation;
    }
    return true;
}

bool TaxiwayDecoder::Decode(std::int64_t r)
{
    constexpr std::int64_t ListHeadSize = 8;
    m_offsets = MetricOffsets({m_airport.Lat, m_airport.Lon});
    std::int64_t at = r + BglRecordHead::Size;
    while (m_scan.Budget.Spend(ListHeadSize)) {
        const ListHead head{m_scan.Reader.ReadI32(at), m_scan.Reader.ReadI32(at + 4)};
        at += ListHeadSize;
        if (m_scan.Stopped())
            return false;
        if (head.ElementSize == NameSize)
            return NamePaths(head, at);
        if (head.ElementSize != TaxiPointSize && head.ElementSize != ParkingSize && head.ElementSize != TaxiPathSize)
            return true;
        if (head.Count < 1)
            continue;
        bool decoded = false;
        if (head.ElementSize == TaxiPointSize)
            decoded = DecodeList(m_airport.TaxiPoints, head, at,
                                 [this](TaxiPoint& point, std::int64_t e) { return DecodeTaxiPoint(point, e); });
        else if (head.ElementSize == ParkingSize)
            decoded = DecodeList(m_airport.Parkings, head, at,
                                 [this](ParkingRecord& spot, std::int64_t e) { return DecodeParking(spot, e); });
        else
            decoded = DecodeList(m_airport.TaxiPaths, head, at,
                                 [this](TaxiPath& path, std::int64_t e) { return DecodeTaxiPath(path, e); });
        if (!decoded)
            return false;
        at += std::int64_t{head.Count} * head.ElementSize;
    }
    return false;
}
} // namespace corvane
