#include "builder/NavaidDecoder.h"

#include "core/Frequency.h"
#include "core/Rounding.h"

#include <algorithm>
#include <limits>

namespace corvane {
static constexpr std::uint8_t BlockTag = 0x15;
static constexpr std::int64_t BlockSize = 9;
static constexpr std::uint8_t StationType = 4;
static constexpr std::int64_t IdentLength = 4; // one byte less than the field: the terminator
static constexpr std::int64_t NameLength = 23;

static double NavLatitude(std::int32_t value) noexcept
{
    return value * 90.0 / 5000875.0;
}

static double NavLongitude(std::int32_t value) noexcept
{
    return value / 16777216.0 * 360.0;
}

/// The byte counts units of 2048 metres; ranges beyond what the record holds are clamped.
static std::uint8_t NavRangeNm(std::uint8_t value) noexcept
{
    constexpr std::int32_t Most = std::numeric_limits<std::uint8_t>::max();
    return static_cast<std::uint8_t>(std::min(RoundTo<std::int32_t>(value * 2048.0 / 1852.0), Most));
}

namespace {
/// Where a station's fields stand, from its start.
struct StationLayout {
    std::int64_t Lat, Lon, Range, Ident, Name;
};
constexpr StationLayout VorLayout{5, 8, 1, 15, 20};
constexpr StationLayout NdbLayout{4, 7, 12, 13, 18};
} // namespace

/// False where the file ends inside the station; the fields before that are set.
static bool DecodeStation(BglReader& reader, std::int64_t r, const StationLayout& layout, std::string frequency,
                          NavaidRecord& station)
{
    const auto keep = [&reader](auto& field, auto&& value) {
        if (!reader.Failed())
            field = std::forward<decltype(value)>(value);
    };
    keep(station.Name, reader.ReadNavText(r + layout.Name, NameLength));
    keep(station.Ident, reader.ReadNavText(r + layout.Ident, IdentLength));
    keep(station.Lat, NavLatitude(reader.ReadI24(r + layout.Lat)));
    keep(station.Lon, NavLongitude(reader.ReadI24(r + layout.Lon)));
    keep(station.Frequency, std::move(frequency));
    keep(station.RangeNm, NavRangeNm(reader.ReadU8(r + layout.Range)));
    return !reader.Failed();
}

/// Calls walkRun for the place of every record run that a block list names.
template <class WalkRun>
static void WalkBlockList(BglScan& scan, std::int64_t base, std::int64_t list, const WalkRun& walkRun)
{
    if (list < 0)
        return;
    for (std::int64_t block = list; scan.Reader.ReadU8(block) == BlockTag; block += BlockSize) {
        scan.EnterPlace("the navaid block", block);
        const std::int64_t run = base + scan.Reader.ReadI32(block + 5);
        if (!scan.Budget.Spend(BlockSize) || scan.Stopped())
            return;
        if (run >= 0)
            walkRun(run);
    }
}

/// Bytes of a record of the VOR section, 0 for a type that ends the run.
static std::int64_t VorRecordSize(std::uint8_t type) noexcept
{
    switch (type) {
    case StationType: return 44;
    case 5: // an ILS: the record chains give those of the airports
        return 54;
    case 6: return 56;
    case 0x20: return 17;
    default: return 0;
    }
}

static void WalkVorRun(BglScan& scan, std::int64_t r, int channel, NavaidRecord& station)
{
    constexpr std::int64_t FirstChannel = 108'0000; // ten-thousandths of a megahertz
    constexpr std::int64_t ChannelStep = 500;
    while (!scan.Stopped()) {
        const std::uint8_t type = scan.Reader.ReadU8(r);
        const std::int64_t size = VorRecordSize(type);
        if (size == 0 || !scan.Budget.Spend(size))
            return;
        if (type == StationType) {
            if (!DecodeStation(scan.Reader, r, VorLayout, TenThousandthsText(FirstChannel + ChannelStep * channel),
                               station))
                scan.Absorb("the VOR", r);
            scan.Sink.AddVor(station);
        }
        r += size;
    }
}

void ScanVorSection(BglScan& scan, std::int64_t base)
{
    constexpr std::int64_t EntrySize = 5;
    const int lowest = std::max<int>(scan.Reader.ReadI16(0x16), 0);
    const int highest = std::max<int>(scan.Reader.ReadI16(0x18), 0);
    NavaidRecord station;
    std::int64_t entry = base;
    for (int channel = lowest; channel <= highest && entry < scan.Reader.Size(); ++channel, entry += EntrySize) {
        scan.EnterPlace("the VOR channel", entry);
        const std::uint8_t flag = scan.Reader.ReadU8(entry);
        const std::int32_t list = scan.Reader.ReadI32(entry + 1);
        if (!scan.Budget.Spend(EntrySize) || scan.Stopped())
            return;
        if (flag == 1 && list > 0)
            WalkBlockList(scan, base, base + list, [&](std::int64_t run) { WalkVorRun(scan, run, channel, station); });
        if (scan.Stopped())
            return;
    }
}

/// Kilohertz: two decimal digits in the first byte, hundreds in the second, tenths in the third.
static std::string NdbFrequency(BglReader& reader, std::int64_t r)
{
    const std::int64_t digits = reader.ReadU8(r + 1);
    const std::int64_t hundreds = reader.ReadU8(r + 2);
    const std::int64_t tenths = reader.ReadU8(r + 3);
    return TenThousandthsText((100 * hundreds + 10 * (digits / 16) + digits % 16) * 10000 + tenths * 1000);
}

static void WalkNdbRun(BglScan& scan, std::int64_t r, NavaidRecord& station)
{
    constexpr std::int64_t NdbSize = 42;
    while (scan.Reader.ReadU8(r) == StationType && scan.Budget.Spend(NdbSize)) {
        if (!DecodeStation(scan.Reader, r, NdbLayout, NdbFrequency(scan.Reader, r), station))
            scan.Absorb("the NDB", r);
        scan.Sink.AddNdb(station);
        r += NdbSize;
    }
}

void ScanNdbSection(BglScan& scan, std::int64_t base)
{
    NavaidRecord station;
    WalkBlockList(scan, base, base, [&](std::int64_t run) { WalkNdbRun(scan, run, station); });
}
} // namespace corvane
