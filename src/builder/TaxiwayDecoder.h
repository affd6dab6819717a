#pragma once

#include "builder/BglScan.h"
#include "core/Geodesy.h"
#include "core/Records.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {
/// The text of a parking spot's name index, such as "GATE A"; empty for an index that has none (1 .. 37 have one).
std::string ParkingNameText(std::int32_t nameIndex);

/// What a parking spot's name word says: x, its low 20 bits, is 128 x spot number + name index, the number rounded to
/// the nearest, so that an index from 64 on reads as a negative one of the next spot.
struct ParkingWord {
    std::int32_t Number = 0;
    std::int32_t NameIndex = 0;
};
ParkingWord SplitParkingWord(std::int32_t word) noexcept;

/// Decodes an airport's taxi points, parking spots, taxi paths and their names.
class TaxiwayDecoder {
public:
    TaxiwayDecoder(BglScan& scan, AirportRecord& airport) noexcept : m_scan(scan), m_airport(airport) {}

    /// Decodes the record at r around the airport's Lat and Lon, with its Runways for the names of runway paths. False
    /// on an error, with what was decoded before it in place: lists whose count does not fit 16 bits are not begun,
    /// others have as many elements as they claim. Elements past the file's end are read as zeros; one that the end
    /// cuts is an error, and those behind it stay blank.
    bool Decode(std::int64_t r);

private:
    struct ListHead {
        std::int32_t Count = 0;
        std::int32_t ElementSize = 0;
    };

    template <class Element, class DecodeElement>
    bool DecodeList(std::vector<Element>& list, const ListHead& head, std::int64_t at,
                    const DecodeElement& decodeElement);
    bool DecodeTaxiPoint(TaxiPoint& point, std::int64_t e);
    bool DecodeParking(ParkingRecord& parking, std::int64_t e);
    bool DecodeTaxiPath(TaxiPath& path, std::int64_t e);
    bool NamePaths(const ListHead& head, std::int64_t at);
    bool NameRunwayPaths();

    bool KeepLon(double& field, std::int64_t at);
    bool KeepLat(double& field, std::int64_t at);

    BglScan& m_scan;
    AirportRecord& m_airport;
    MetricOffsets m_offsets{LatLon{}};
    std::string m_parkingText; ///< of the last spot that had one
};
} // namespace corvane
