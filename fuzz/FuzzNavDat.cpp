#include "fuzz/FuzzWorld.h"

/// A nav.dat into its navaids and localizers, which an airport then takes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    FuzzedWorldFile file(data, size);
    const auto check = [](const NavaidRecord& navaid) {
        FuzzedWorldFile::RequireOnEarth(navaid.Lat, navaid.Lon);
        if (navaid.Frequency.empty())
            std::abort();
    };
    const Result<void> read = ReadNavFile(file.Rows, {check, check}, file.Localizers);
    if (!read && read.error().Why.empty())
        std::abort();
    const auto grid = std::make_unique<MagVarGrid>();
    AirportRecord airport;
    airport.Icao = "ZZAA";
    for (const IlsRecord& ils : file.Localizers.Take(airport, "ZZAB", *grid)) {
        FuzzedWorldFile::RequireOnEarth(ils.Lat, ils.Lon);
        if (ils.MagHeading < 0 || ils.MagHeading > 360)
            std::abort();
    }
    return 0;
}
