#pragma once

#include "core/Bytes.h"
#include "demo/SceneryObjects.h"

#include <string>

namespace corvane {
/// Appends one record of a scenery chain: its tag, a size that is filled in when the record goes out of scope (the
/// bytes after these eight), then whatever is written meanwhile.
class ChainRecord {
public:
    ChainRecord(Bytes& out, std::int32_t tag);
    ~ChainRecord();
    ChainRecord(const ChainRecord&) = delete;
    ChainRecord& operator=(const ChainRecord&) = delete;
    ChainRecord(ChainRecord&&) = delete;
    ChainRecord& operator=(ChainRecord&&) = delete;

private:
    Bytes& m_out;
    std::size_t m_start;
};

/// A record of tag 0, which ends every chain.
void AppendChainEnd(Bytes& out);
/// The text, filled up with zero bytes to a multiple of four.
void AppendPaddedText(Bytes& out, const std::string& text);
/// The text cut or filled up with zero bytes to length.
void AppendFixedText(Bytes& out, const std::string& text, std::size_t length);

/// The whole data of an airport, from its head on; directories refer to its first byte.
Bytes AirportData(const SceneryAirport& airport);
/// The ground layout record; Names come last, as readers expect.
void AppendGroundLayout(Bytes& out, const GroundLayout& ground);
/// One boundary, as it stands in a boundary list.
void AppendBoundary(Bytes& out, const SceneryBoundary& boundary);
} // namespace corvane
