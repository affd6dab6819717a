#include "area/WorldOutlines.h"

#include "core/Geodesy.h"

namespace corvane {
bool OutlineWindow::Contains(double lat, double lon) const noexcept
{
    if (!(South <= lat && lat <= North))
        return false;
    if (West < East)
        return West <= lon && lon <= East;
    return West > East && ((West <= lon && lon <= 180) || (-180 <= lon && lon <= East));
}

OutlineWindow OutlineWindowAround(double north, double south, double west, double east) noexcept
{
    return {north + 22, south - 22, NormalizeLongitude(west - 45), NormalizeLongitude(east + 45)};
}

Result<void> CutOutlines(ByteSource& worldMap, const OutlineWindow& window, std::vector<OutlinePoint>& points)
{
    constexpr std::size_t EntrySize = 8;
    constexpr double TwoToThe31 = 2147483648.0;
    bool inside = false;
    for (std::uint64_t at = 0;;) {
        const Result<ByteSpan> bytes = worldMap.View(at, EntrySize);
        if (!bytes)
            return bytes.error();
        const std::size_t count = bytes->size() / EntrySize;
        if (count == 0)
            return {};
        ByteReader entries(*bytes);
        for (std::size_t i = 0; i < count; ++i) {
            const std::int32_t storedLat = entries.ReadI32();
            const std::int32_t storedLon = entries.ReadI32();
            const double lat = storedLat * 90.0 / TwoToThe31;
            const double lon = storedLon * 180.0 / TwoToThe31;
            const bool wasInside = inside;
            inside = window.Contains(lat, lon);
            if (inside) {
                if (!wasInside)
                    points.emplace_back();
                points.push_back({lat, lon});
            }
            if (storedLat == 0 && storedLon == 0)
                inside = false;
        }
        at += count * EntrySize;
    }
}
} // namespace corvane
