#pragma once

#include "builder/BglScan.h"
#include "core/Records.h"

#include <cstdint>
#include <string>

namespace corvane {
/// Decodes the runways of one airport and the ILS that follow each of them.
class RunwayDecoder {
public:
    RunwayDecoder(BglScan& scan, AirportRecord& airport) noexcept : m_scan(scan), m_airport(airport) {}

    /// Appends the runway of the record at r; false, with nothing appended, on an error.
    bool DecodeRunway(std::int64_t r);
    /// Appends the ILS of the record at q, which follows that runway; records of other kinds are passed over. False,
    /// with nothing appended, on an error.
    bool DecodeIls(std::int64_t q, std::int64_t size);

private:
    void Designate(RunwayRecord& runway, std::int64_t number, std::int32_t side);

    BglScan& m_scan;
    AirportRecord& m_airport;
    std::string m_designation; ///< kept for a runway without a number of its own
    std::string m_reciprocalDesignation;
    double m_heading = 0; ///< true, degrees, whole; of the last runway
    double m_reciprocalHeading = 0;
};
} // namespace corvane
