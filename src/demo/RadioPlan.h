#pragma once

#include "demo/WorldData.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace corvane {
/// The frequencies of one airport in kHz; 0 where it has no such service.
struct AirportRadio {
    std::int32_t Clearance = 0;
    std::int32_t Ground = 0;
    std::int32_t Tower = 0;
    std::int32_t Approach = 0;
    std::int32_t Departure = 0;
    /// Of the runways in their order: the localizers of the first and of the far end.
    std::vector<std::int32_t> FirstEndIls;
    std::vector<std::int32_t> FarEndIls;
};

/// Which ends of a runway have an ILS: at large airports both ends from 7,000 ft and the first end from 5,000 ft; at
/// others with scheduled service the first end of the longest runway from 6,500 ft.
struct IlsEnds {
    bool First = false;
    bool Far = false;
};
IlsEnds IlsEndsOf(const AirportSource& airport, std::size_t runway);

/// Gives every airport its frequencies: those that are known, for the rest demonstration values by rule. Large airports
/// have all five services, others tower and ground. Each service has a band of its own, counted through from a hash of
/// the airport's identifier; the first channel that no airport within about 60 nautical miles uses already is taken, or
/// the first of all where every one is taken. Localizers use the odd tenths from 108.10 to 111.95 MHz in the same way.
std::vector<AirportRadio> PlanRadio(std::span<const AirportSource> airports);

/// h = 31 h + code over the characters, modulo 1000003.
std::int32_t TextHash(std::string_view text) noexcept;
} // namespace corvane
