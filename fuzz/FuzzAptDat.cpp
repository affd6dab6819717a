#include "fuzz/FuzzWorld.h"

/// An apt.dat into its airports: every position lies on earth, every index names something, and a small file does not
/// become a large database.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    constexpr std::size_t MostPointsAByte = 20; // two curves of a hundred pieces take more than ten bytes
    FuzzedWorldFile file(data, size);
    const auto grid = std::make_unique<MagVarGrid>();
    AirportsLeftOut leftOut;
    std::size_t points = 0;
    const auto check = [&](const AirportRecord& airport) {
        FuzzedWorldFile::RequireOnEarth(airport.Lat, airport.Lon);
        if (airport.Icao.empty() || airport.Name.empty())
            std::abort();
        for (const RunwayRecord& runway : airport.Runways) {
            FuzzedWorldFile::RequireOnEarth(runway.End1Lat, runway.End1Lon);
            FuzzedWorldFile::RequireOnEarth(runway.CenterLat, runway.CenterLon);
        }
        for (const TaxiPoint& point : airport.TaxiPoints)
            FuzzedWorldFile::RequireOnEarth(point.Lat, point.Lon);
        const auto count = static_cast<std::int32_t>(airport.TaxiPoints.size());
        for (const TaxiPath& path : airport.TaxiPaths) {
            if (path.StartPoint < 0 || path.StartPoint >= count || path.EndPoint < 0 || path.EndPoint >= count)
                std::abort();
        }
        points += airport.TaxiPoints.size();
        return Result<void>();
    };
    const Result<void> read = ReadAptFile(file.Rows, {}, *grid, file.Localizers, file.Log, leftOut, check);
    const bool packed = size > 0 && data[0] == 0x1F;
    if ((!read && read.error().Why.empty()) || (!packed && points > MostPointsAByte * size))
        std::abort();
    return 0;
}
