#include "demo/BglFileWriter.h"

#include "core/BglTags.h"
#include "demo/NavaidSections.h"
#include "demo/SceneryRecords.h"

#include <algorithm>

namespace corvane {
/// Offsets of the header words.
static constexpr std::size_t HeaderSize = 0xB0;
static constexpr std::size_t VorSectionAt = 0x12;
static constexpr std::size_t HighestChannelAt = 0x18; // the lowest, at 0x16, is always 0
static constexpr std::size_t NdbSectionAt = 0x4E;
static constexpr std::size_t NewLayoutMarkAt = 0x76;
static constexpr std::size_t NewLayoutFlagAt = 0x90;
static constexpr std::size_t AirportChainAt = 0x9C;
static constexpr std::size_t BoundaryChainAt = 0xA4;

static constexpr std::size_t AirportsPerDirectory = 16;

void BglFileWriter::AddAirport(const SceneryAirport& airport)
{
    m_airports.push_back({airport.Name, AirportData(airport)});
}

void BglFileWriter::AddBoundary(const SceneryBoundary& boundary)
{
    if (m_boundaryLists.empty())
        StartBoundaryList();
    AppendBoundary(m_boundaryLists.back(), boundary);
}

void BglFileWriter::AddUnreadBytes(std::size_t count, std::uint32_t seed)
{
    std::uint32_t value = seed;
    m_unread.reserve(m_unread.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        value = value * 1664525U + 1013904223U; // Numerical Recipes' generator: any noise that does not compress
        m_unread.push_back(static_cast<std::uint8_t>(value >> 24U));
    }
}

static std::int32_t Offset(const Bytes& out)
{
    return static_cast<std::int32_t>(out.size());
}

/// One directory; returns where the offsets of its entries stand, to be filled in when the airports are placed.
template <class Airports> static std::vector<std::size_t> AppendDirectory(Bytes& out, const Airports& airports)
{
    std::vector<std::size_t> offsetsAt;
    const ChainRecord directory(out, BglTag::Directory);
    ByteWriter writer(out);
    writer.WriteZeros(12);
    writer.WriteI32(static_cast<std::int32_t>(airports.size()));
    for (const auto& airport : airports) {
        const ChainRecord entry(out, BglTag::DirectoryEntry);
        writer.WriteI32(BglTag::AirportEntry);
        offsetsAt.push_back(out.size());
        writer.WriteI32(0);
        AppendPaddedText(out, airport.Name);
    }
    return offsetsAt;
}

/// All directories, the end of their chain, and after it the data of the airports.
template <class Airports> static void AppendAirportChain(Bytes& out, const Airports& airports)
{
    std::vector<std::size_t> offsetsAt;
    for (std::size_t first = 0; first < airports.size(); first += AirportsPerDirectory) {
        const std::size_t count = std::min(AirportsPerDirectory, airports.size() - first);
        const auto places = AppendDirectory(out, std::span(airports).subspan(first, count));
        offsetsAt.insert(offsetsAt.end(), places.begin(), places.end());
    }
    AppendChainEnd(out);
    ByteWriter writer(out);
    for (std::size_t i = 0; i < airports.size(); ++i) {
        writer.PatchI32(offsetsAt[i], Offset(out));
        writer.WriteBytes(airports[i].Data);
    }
}

static void AppendBoundaryChain(Bytes& out, const std::vector<Bytes>& lists)
{
    ByteWriter writer(out);
    for (const Bytes& list : lists) {
        const ChainRecord record(out, BglTag::Wrapper);
        writer.WriteI32(BglTag::BoundaryList);
        writer.WriteI32(0);
        writer.WriteBytes(list);
        AppendChainEnd(out);
    }
    AppendChainEnd(out);
}

Bytes BglFileWriter::Finish() const
{
    Bytes out(HeaderSize);
    ByteWriter writer(out);
    if (!m_vors.empty()) {
        writer.PatchI32(VorSectionAt, Offset(out));
        out[HighestChannelAt] = static_cast<std::uint8_t>(HighestVorChannel);
        AppendVorSection(out, m_vors);
    }
    if (!m_ndbs.empty()) {
        writer.PatchI32(NdbSectionAt, Offset(out));
        AppendNdbSection(out, m_ndbs);
    }
    if (!m_airports.empty() || !m_boundaryLists.empty()) {
        writer.PatchI32(NewLayoutMarkAt, static_cast<std::int32_t>(0x87654321));
        writer.PatchI32(NewLayoutFlagAt, 1);
    }
    if (!m_airports.empty()) {
        writer.PatchI32(AirportChainAt, Offset(out));
        AppendAirportChain(out, m_airports);
    }
    if (!m_boundaryLists.empty()) {
        writer.PatchI32(BoundaryChainAt, Offset(out));
        AppendBoundaryChain(out, m_boundaryLists);
    }
    writer.WriteBytes(m_unread);
    return out;
}
} // namespace corvane
