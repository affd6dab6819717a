#include "demo/NavaidSections.h"

#include "demo/SceneryRecords.h"
#include "demo/SceneryUnits.h"

#include <algorithm>
#include <span>

namespace corvane {
static constexpr std::uint8_t BlockTag = 0x15;
static constexpr std::uint8_t StationType = 4;
static constexpr std::uint8_t DmeType = 0x20;
static constexpr std::size_t BlockEntrySize = 9;
static constexpr std::size_t ChannelEntrySize = 5;
static constexpr std::size_t StationsPerRun = 8;

using StationSpan = std::span<const SceneryStation>;
using AppendStation = void (*)(Bytes&, const SceneryStation&);

static void AppendI24(ByteWriter& writer, std::int32_t value)
{
    writer.WriteU16(static_cast<std::uint16_t>(value));
    writer.WriteU8(static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> 16U));
}

static void AppendIdentAndName(Bytes& out, const SceneryStation& station)
{
    AppendFixedText(out, station.Ident.substr(0, 4), 5);
    AppendFixedText(out, station.Name.substr(0, 23), 24);
}

static void AppendVor(Bytes& out, const SceneryStation& station)
{
    ByteWriter writer(out);
    writer.WriteU8(StationType);
    writer.WriteU8(NavaidRange(station.RangeNm));
    writer.WriteZeros(3);
    AppendI24(writer, NavaidLatitude(station.Lat));
    AppendI24(writer, NavaidLongitude(station.Lon));
    writer.WriteI16(static_cast<std::int16_t>(MetresFromFeet(station.ElevationFt)));
    writer.WriteZeros(2);
    AppendIdentAndName(out, station);
    if (station.WithDme) {
        constexpr std::size_t DmeSize = 17;
        writer.WriteU8(DmeType);
        writer.WriteZeros(DmeSize - 1);
    }
}

static void AppendNdb(Bytes& out, const SceneryStation& station)
{
    const std::int32_t kilohertz = station.FrequencyTenthsKhz / 10;
    ByteWriter writer(out);
    writer.WriteU8(StationType);
    writer.WriteU8(static_cast<std::uint8_t>(kilohertz / 10 % 10 * 16 + kilohertz % 10));
    writer.WriteU8(static_cast<std::uint8_t>(kilohertz / 100));
    writer.WriteU8(static_cast<std::uint8_t>(station.FrequencyTenthsKhz % 10));
    AppendI24(writer, NavaidLatitude(station.Lat));
    AppendI24(writer, NavaidLongitude(station.Lon));
    writer.WriteI16(static_cast<std::int16_t>(MetresFromFeet(station.ElevationFt)));
    writer.WriteU8(NavaidRange(station.RangeNm));
    AppendIdentAndName(out, station);
}

/// A block list and the runs that its entries lead to, each of a few stations.
static void AppendBlocks(Bytes& out, std::size_t base, StationSpan stations, AppendStation append)
{
    const std::size_t runs = (stations.size() + StationsPerRun - 1) / StationsPerRun;
    const std::size_t listAt = out.size();
    ByteWriter writer(out);
    writer.WriteZeros(runs * BlockEntrySize + 1); // the last byte, not a block tag, ends the list
    for (std::size_t run = 0; run < runs; ++run) {
        const std::size_t entryAt = listAt + run * BlockEntrySize;
        out[entryAt] = BlockTag;
        writer.PatchI32(entryAt + 5, static_cast<std::int32_t>(out.size() - base));
        const std::size_t first = run * StationsPerRun;
        for (const SceneryStation& station : stations.subspan(first, std::min(StationsPerRun, stations.size() - first)))
            append(out, station);
        writer.WriteU8(0); // ends the run
    }
}

/// -1 where the frequency is none of a VOR channel.
static int VorChannel(const SceneryStation& station)
{
    constexpr int LowestTenthsKhz = 1080000;
    constexpr int ChannelTenthsKhz = 500;
    const int above = station.FrequencyTenthsKhz - LowestTenthsKhz;
    const bool onChannel = above >= 0 && above % ChannelTenthsKhz == 0 && above / ChannelTenthsKhz <= HighestVorChannel;
    return onChannel ? above / ChannelTenthsKhz : -1;
}

void AppendVorSection(Bytes& out, const std::vector<SceneryStation>& stations)
{
    const std::size_t base = out.size();
    ByteWriter writer(out);
    writer.WriteZeros((HighestVorChannel + 1) * ChannelEntrySize);
    for (int channel = 0; channel <= HighestVorChannel; ++channel) {
        std::vector<SceneryStation> onChannel;
        std::copy_if(stations.begin(), stations.end(), std::back_inserter(onChannel),
                     [channel](const SceneryStation& station) { return VorChannel(station) == channel; });
        if (onChannel.empty())
            continue;
        const std::size_t entryAt = base + static_cast<std::size_t>(channel) * ChannelEntrySize;
        out[entryAt] = 1;
        writer.PatchI32(entryAt + 1, static_cast<std::int32_t>(out.size() - base));
        AppendBlocks(out, base, onChannel, AppendVor);
    }
}

void AppendNdbSection(Bytes& out, const std::vector<SceneryStation>& stations)
{
    AppendBlocks(out, out.size(), stations, AppendNdb);
}
} // namespace corvane
