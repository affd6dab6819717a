#include "fuzz/FuzzWorld.h"

/// An OpenAir file into its airspaces: boxes and points lie on earth, and outlines are lines of three points and more.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    constexpr std::size_t MostPointsAByte = 40; // a circle of 181 points takes five bytes, "DC 1" and its end
    FuzzedWorldFile file(data, size);
    AirspacesLeftOut leftOut;
    OpenAirRemarks remarks;
    std::size_t points = 0;
    const auto check = [&](const AirspaceRecord& airspace) {
        FuzzedWorldFile::RequireOnEarth(airspace.North, airspace.West);
        FuzzedWorldFile::RequireOnEarth(airspace.South, airspace.East);
        if (airspace.Points.size() < 4 || airspace.Name.empty() || airspace.North < airspace.South)
            std::abort();
        for (const BoundaryPoint& point : airspace.Points)
            FuzzedWorldFile::RequireOnEarth(point.Lat, point.Lon);
        points += airspace.Points.size();
    };
    const Result<void> read = ReadOpenAirFile(file.Lines, file.Log, leftOut, remarks, check, {});
    if ((!read && read.error().Why.empty()) || (size > 0 && data[0] != 0x1F && points > MostPointsAByte * size))
        std::abort();
    return 0;
}
