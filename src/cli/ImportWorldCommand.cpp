#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/RecordJson.h"
#include "core/AtomicFile.h"
#include "core/File.h"
#include "core/Rounding.h"
#include "demo/DemoWorld.h"
#include "demo/WorldData.h"
#include "os/InterruptWatch.h"
#include "world/FlightGearFiles.h"
#include "world/WorldImport.h"

#include <optional>
#include <ostream>
#include <string>

namespace corvane {
namespace {
struct WorldOptions {
    WorldImport Import;
    std::string FlightGear; ///< empty where not given
    std::string Report;     ///< empty where not given
    bool NoPavements = false;
    bool NoMaps = false;
};

/// What was passed over: written to a report as it comes, and told at the end.
class PassedOverReport {
public:
    explicit PassedOverReport(const std::string& path)
    {
        if (!path.empty())
            m_file.emplace(path);
    }

    Result<void> Open() { return m_file ? m_file->Open() : Result<void>(); }
    void Add(const PassedLine& passed);
    Result<void> Commit() { return m_file ? m_file->Commit() : Result<void>(); }
    /// The airspaces, then each file's count.
    void Print(const std::vector<PassedLines>& files, const Console& console) const;

private:
    std::optional<AtomicFile> m_file;
    std::vector<std::string> m_airspaces; ///< a line each
};
} // namespace

static std::string PassedText(const PassedLine& passed)
{
    return "line " + std::to_string(passed.Line) + ": " + passed.Why;
}

void PassedOverReport::Add(const PassedLine& passed)
{
    if (passed.OfAirspace)
        m_airspaces.push_back("import: " + passed.File + ": " + PassedText(passed));
    if (!m_file)
        return;
    const Json json = {{"File", passed.File}, {"Line", passed.Line}, {"Why", passed.Why}};
    const std::string line = ToLine(json) + "\n";
    m_file->Write({reinterpret_cast<const std::uint8_t*>(line.data()), line.size()});
}

void PassedOverReport::Print(const std::vector<PassedLines>& files, const Console& console) const
{
    for (const std::string& airspace : m_airspaces)
        PrintNotice(console, airspace);
    for (const PassedLines& file : files)
        PrintNotice(console, "import: " + file.First.File + ": " + std::to_string(file.Count) +
                                 " lines passed over, the first is " + PassedText(file.First));
}

static Json CountsJson(const WorldImportCounts& counts)
{
    Json airspaces = Json::object();
    for (const auto& [name, count] : counts.Airspaces.ByClass)
        airspaces[name] = count;
    Json json = {{"AirportCount", counts.Records.Airports},
                 {"AirspaceCount", counts.Records.Airspaces},
                 {"VorCount", counts.Records.Vors},
                 {"NdbCount", counts.Records.Ndbs},
                 {"LeftOut",
                  {{"ClosedAirports", counts.Airports.Closed},
                   {"RepeatedAirports", counts.Airports.Repeated},
                   {"AirportsWithoutPosition", counts.Airports.WithoutPlace},
                   {"PavementPoints", counts.Airports.PavementPoints},
                   {"IlsWithoutAirport", counts.IlsWithoutAirport},
                   {"UnreadableAirspaces", counts.Airspaces.Unreadable},
                   {"AirspacesByClass", std::move(airspaces)}}}};
    if (counts.Maps.OutlinePoints)
        json["OutlinePoints"] = *counts.Maps.OutlinePoints;
    if (counts.Maps.TerrainPoints)
        json["TerrainPoints"] = *counts.Maps.TerrainPoints;
    return json;
}

/// Fills the files that FlightGear's folder has and the other options do not name.
static Result<void> ResolveFiles(WorldOptions& options)
{
    WorldImport& import = options.Import;
    import.Apt.Pavements = !options.NoPavements;
    if (!options.NoMaps)
        import.Maps = FindMapSources(import.AppFolder, DefaultDataFolder(), options.FlightGear);
    if (options.FlightGear.empty())
        return {};
    const FlightGearFiles found = FilesOfFlightGear(options.FlightGear);
    if (found.AptDat.empty() && found.NavDat.empty())
        return Fail(FullName(options.FlightGear), "holds neither Airports/apt.dat.gz nor Navaids/nav.dat.gz");
    if (import.AptDat.empty())
        import.AptDat = found.AptDat;
    if (import.NavDat.empty())
        import.NavDat = found.NavDat;
    return {};
}

static Result<WorldImportCounts> RunWorldImport(const WorldImport& import, PassedOverReport& report,
                                                const Console& console)
{
    const Result<std::vector<std::int16_t>> magVar = LoadMagVar(DefaultDataFolder());
    if (!magVar)
        return magVar.error();
    const InterruptWatch watch;
    ProgressBar bar(console.Notices, console.NoticesOnTerminal, "percent");
    WorldImportCallbacks callbacks;
    callbacks.Progress = [&](const WorldImportProgress& progress) {
        bar.Show(RoundTo<std::int32_t>(100 * progress.Done), 100, progress.File);
        return !watch.Interrupted();
    };
    callbacks.PassedOver = [&](const PassedLine& passed) { report.Add(passed); };
    return ImportWorld(import, *magVar, callbacks);
}

static Result<void> ImportAndReport(WorldOptions& options, const Console& console)
{
    if (Result<void> resolved = ResolveFiles(options); !resolved)
        return resolved;
    PassedOverReport report(options.Report);
    if (Result<void> opened = report.Open(); !opened)
        return opened;
    const Result<WorldImportCounts> counts = RunWorldImport(options.Import, report, console);
    if (!counts)
        return counts.error();
    if (Result<void> written = report.Commit(); !written)
        return written;
    report.Print(counts->PassedOver, console);
    for (const std::string& unusable : counts->Maps.Unusable)
        PrintNotice(console, "import: " + unusable);
    console.Out << ToLine(CountsJson(*counts)) << '\n';
    return {};
}

/// An empty name would be no input at all, and the database be replaced by an empty one.
static std::string CheckNamed(const std::string& file)
{
    return file.empty() ? "a file's name is empty" : std::string();
}

void AddImportWorld(CLI::App& import, const Console& console, CommandWork& work)
{
    CLI::App* const command = import.add_subcommand(
        "world", "Writes the database of open world data instead of a simulator's, replacing the one that is there");
    const auto options = std::make_shared<WorldOptions>();
    options->Import.AppFolder = ".";
    CLI::Option_group* const inputs = command->add_option_group("Input", "At least one of these");
    inputs->add_option("--apt-dat", options->Import.AptDat, "Airports: an apt.dat, plain or gzip")
        ->type_name("FILE")
        ->check(CheckNamed);
    inputs->add_option("--nav-dat", options->Import.NavDat, "VORs, NDBs and ILS: a nav.dat, plain or gzip")
        ->type_name("FILE")
        ->check(CheckNamed);
    inputs->add_option("--airspaces", options->Import.Airspaces, "Airspaces: OpenAir files")
        ->type_name("FILE")
        ->allow_extra_args(false)
        ->check(CheckNamed);
    inputs->add_option("--flightgear", options->FlightGear, "The data folder of FlightGear, which has the first two")
        ->type_name("DIR")
        ->check(CheckNamed);
    inputs->require_option(1, 0);
    command->add_option("--app-folder", options->Import.AppFolder, "The folder of the database")
        ->type_name("DIR")
        ->capture_default_str();
    command->add_flag("--no-pavements", options->NoPavements, "Leaves out the edges of aprons and taxiways");
    command->add_flag("--no-maps", options->NoMaps, "Makes no world.map and no world_terrain.db where there are none");
    command->add_option("--report", options->Report, "Lists the lines that were passed over, as JSON lines")
        ->type_name("FILE");
    command->callback(
        [options, &console, &work] { work = [options, &console] { return ImportAndReport(*options, console); }; });
}
} // namespace corvane
