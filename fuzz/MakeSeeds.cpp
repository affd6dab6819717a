#include "builder/BglScanner.h"
#include "builder/EncodedRecords.h"
#include "core/AtomicFile.h"
#include "core/Settings.h"
#include "tests/builder/SampleBgl.h"
#include "tests/recording/SampleRecording.h"

#include <cstdio>
#include <filesystem>

using namespace corvane;

static bool WriteSeed(const std::filesystem::path& path, const Bytes& content)
{
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    const Result<void> written = WriteFileAtomically(path, content);
    if (!written)
        std::fprintf(stderr, "%s\n", written.error().Text().c_str());
    return written.has_value();
}

static Bytes MagdecSeed()
{
    Bytes magdec(128);
    PutI32(magdec, 110, 120);
    return magdec + WordBytes({1820, -1820, 0x7FFFFFFF});
}

static Bytes DatabaseSeed(std::uint8_t file, const Bytes& records)
{
    return Bytes{file} + records;
}

/// Records as FuzzRecording builds them: a member that joins, says a line and leaves.
static Bytes RecordingSeed()
{
    const Bytes line = EncodeMessage(ChatTextMessage{"hello"});
    return Bytes{0, 1, 7, 2, 'N', '1', 9, 4, 7, static_cast<std::uint8_t>(line.size())} + line + Bytes{9, 3, 7, 0};
}

/// Two that lose their separation, one of them below its minimum altitude.
static Bytes HistorySeed()
{
    std::string text;
    for (const char* time : {"0", "1", "2.5"})
        text += std::string(R"({"Time":)") + time +
                R"(,"Players":[{"Name":"A","PlayerId":2,"Role":"player","AltitudeFt":5000,"MagHeading":90,)"
                R"("GroundSpeedKt":300,"FlightRules":1,"MinimumAltitudeFt":6000},)"
                R"({"Name":"B","PlayerId":3,"Role":"player","Longitude":0.1,"AltitudeFt":5000,"MagHeading":270,)"
                R"("GroundSpeedKt":300}]})"
                "\n";
    return BytesOf(text);
}

/// Writes the seeds of the scenery and database targets below the folder given: fuzz/corpus in the source tree.
int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const std::filesystem::path corpus = argv[1];
    EncodedRecords records;
    const Bytes bgl = FileWithAllKinds();
    if (!ScanBgl(bgl, MagVarGrid(), records))
        return 1;
    const bool written =
        WriteSeed(corpus / "FuzzBgl/all-kinds", bgl) &&
        WriteSeed(corpus / "FuzzBgl/airport", AirportFile("SMALL", IcaoRecord("ABCD") + RunwayOf({}))) &&
        WriteSeed(corpus / "FuzzBgl/boundary", BoundaryFile(Boundary(StartRecord(0, 0, 0, 9000)))) &&
        WriteSeed(corpus / "FuzzSceneryCfg/two-areas",
                  BytesOf("[General]\r\nTitle=x\r\n[Area.001]\r\nTitle=World\r\nLocal=Scenery\\World\r\n"
                          "[AREA.002]\nlocal=D:/Mine/scenery\n")) &&
        WriteSeed(corpus / "FuzzSceneryCfg/repeated", BytesOf("[Area.1]\r\nTitle=A\r\n[Area.1]\r\nTitle=B\r\n")) &&
        WriteSeed(corpus / "FuzzFolders/areas",
                  BytesOf("[Area.1]\nLocal=a\\scenery\\..\\A/b\\\n[Area.2]\nLocal=c\\C\\c\\b/x\n")) &&
        WriteSeed(corpus / "FuzzFolders/paths", BytesOf("C\\c\\a\\..\\c\\C\\scenery\nB/A/B\n/..\\.\\b\n")) &&
        WriteSeed(corpus / "FuzzDatabase/airports", DatabaseSeed(0, records.Airports)) &&
        WriteSeed(corpus / "FuzzDatabase/navaids", DatabaseSeed(1, records.Vors + records.Ndbs)) &&
        WriteSeed(corpus / "FuzzDatabase/airspaces", DatabaseSeed(2, records.Airspaces)) &&
        WriteSeed(corpus / "FuzzSettings/settings", EncodeSettings({.FsPath = "C:\\fs2002", .AirportCount = 5})) &&
        WriteSeed(corpus / "FuzzMagdec/short", MagdecSeed()) &&
        WriteSeed(corpus / "FuzzHistory/meeting", HistorySeed()) &&
        WriteSeed(corpus / "FuzzRecording/whole", test::FileOf(test::SampleRecords())) &&
        WriteSeed(corpus / "FuzzRecording/records", RecordingSeed());
    return written ? 0 : 1;
}
