#include "area/EarlyEnds.h"
#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/MagVarGrid.h"
#include "core/RecordCodec.h"
#include "core/Text.h"

#include <ostream>

namespace corvane {
static Result<AirportRecord> DecodeAnAirport(ByteReader& reader, std::string_view fileName)
{
    return DecodeAirport(reader, fileName);
}

/// Prints every record of a database file that wanted selects, a line each. decode takes (ByteReader&, file name).
template <class Decode, class Wanted>
static Result<std::size_t> PrintRecords(const std::filesystem::path& path, const Console& console, Decode decode,
                                        Wanted wanted)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    const std::string name = FullName(path);
    ByteReader reader(file->Span());
    std::size_t printed = 0;
    while (reader.Left() > 0 && !reader.Failed()) {
        const auto record = decode(reader, name);
        if (!record)
            return record.error();
        if (wanted(*record)) {
            console.Out << ToLine(ToJson(*record)) << '\n';
            ++printed;
        }
    }
    if (reader.Failed()) {
        EarlyEnds cutOff;
        cutOff.Note(name);
        PrintNotice(console, cutOff.Warning());
    }
    return printed;
}

template <class Decode>
static Result<void> PrintAllRecords(const std::filesystem::path& path, const Console& console, Decode decode)
{
    const Result<std::size_t> printed = PrintRecords(path, console, decode, [](const auto&) { return true; });
    if (!printed)
        return printed.error();
    return {};
}

static Result<void> PrintAirports(const std::filesystem::path& path, const Console& console, const std::string& icao)
{
    if (icao.empty())
        return PrintAllRecords(path, console, DecodeAnAirport);
    const std::string wantedIcao = ToUpper(Utf8ToWindows1252(icao));
    const Result<std::size_t> printed = PrintRecords(path, console, DecodeAnAirport, [&](const AirportRecord& airport) {
        return ToUpper(airport.Icao) == wantedIcao;
    });
    if (!printed)
        return printed.error();
    if (*printed == 0)
        return Fail(FullName(path), "holds no airport " + icao);
    return {};
}

static Result<void> PrintSettings(const std::filesystem::path& path, const Console& console)
{
    const Result<SettingsRecord> settings = ReadSettings(path);
    if (!settings)
        return settings.error();
    console.Out << ToLine(ToJson(*settings)) << '\n';
    return {};
}

static Result<void> PrintMagVar(const FolderOptions& folders, const Console& console)
{
    const Result<std::filesystem::path> fsFolder = FindSimulator(folders);
    if (!fsFolder)
        return fsFolder.error();
    if (!FileExists(*fsFolder))
        return Fail(fsFolder->string(), "there is no such folder");
    const auto grid = std::make_unique<MagVarGrid>();
    ReadMagVarGrid(*grid, *fsFolder);
    Json values = Json::array();
    for (std::size_t i = 0; i < MagVarGrid::CellCount; ++i)
        values.push_back(grid->Values[i]);
    console.Out << values.dump() << '\n';
    return {};
}

void AddDumpCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const dump = app.add_subcommand("dump", "Prints what a file of the program or the simulator holds");
    dump->require_subcommand(1);
    const auto folders = std::make_shared<FolderOptions>();
    const auto icao = std::make_shared<std::string>();

    const auto add = [&](const char* name, const char* description, auto print) {
        CLI::App* const command = dump->add_subcommand(name, description);
        AddAppFolderOption(*command, *folders);
        command->callback([=, &console, &work] { work = [=, &console] { return print(console); }; });
        return command;
    };
    add("settings", "The settings record",
        [=](const Console& out) { return PrintSettings(folders->AppFile(SettingsFileName), out); });
    add("airports", "The airports, a line each",
        [=](const Console& out) { return PrintAirports(folders->AppFile(AirportsFileName), out, *icao); })
        ->add_option("--icao", *icao, "Only the airport of this ICAO identifier")
        ->type_name("ICAO");
    add("vors", "The VORs, a line each",
        [=](const Console& out) { return PrintAllRecords(folders->AppFile(VorsFileName), out, DecodeNavaid); });
    add("ndbs", "The NDBs, a line each",
        [=](const Console& out) { return PrintAllRecords(folders->AppFile(NdbsFileName), out, DecodeNavaid); });
    add("airspaces", "The airspaces, a line each",
        [=](const Console& out) { return PrintAllRecords(folders->AppFile(AirspacesFileName), out, DecodeAirspace); });
    AddFsFolderOption(*add("magvar", "The magnetic variation grid, index lon x 181 + (lat + 90)",
                           [=](const Console& out) { return PrintMagVar(*folders, out); }),
                      *folders);
}
} // namespace corvane
