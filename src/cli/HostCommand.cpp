#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/EventLines.h"
#include "cli/NetworkOptions.h"
#include "cli/NumberList.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "platform/directplay/DirectPlayPeer.h"
#include "session/practice/PracticeWatch.h"

#include <thread>

namespace corvane {
namespace {
struct HostOptions {
    FolderOptions Folders;
    DirectPlayOptions Network;
    std::string Name;
    std::string Password;
    std::int32_t MaxPlayers = 8;
    int Pilots = 5;
    std::string Around = "47.449,-122.309";
    std::uint64_t Seed = 1;
    std::optional<double> ForS;
    bool NoMigrate = false;
};
} // namespace

/// The airports and navaids around a place; without a database there are none, and the pilots fly from place to place.
static Result<PracticeScene> LoadScene(const HostOptions& options)
{
    const auto place = *ParseNumbers(options.Around, ',', 2);
    const LatLon center{place[0], place[1]};
    const auto settingsFile = options.Folders.AppFile(SettingsFileName);
    if (std::error_code ignored; !std::filesystem::exists(settingsFile, ignored))
        return PracticeScene({}, {}, {}, center);
    const auto settings = ReadSettings(settingsFile);
    if (!settings)
        return settings.error();
    AreaModel area;
    area.AreaCenterLat = center.Lat;
    area.AreaCenterLon = center.Lon;
    std::vector<AirspaceRecord> airspaces;
    UnwatchedProgress unwatched;
    const Result<void> loaded =
        LoadAirportArea(options.Folders.AppFolder, *settings, "", airspaces, area, unwatched); // what lies around
    if (!loaded)
        return loaded.error();
    return PracticeScene(area.AreaAirports, area.AreaVors, area.AreaNdbs, center);
}

static PracticeOptions ToPracticeOptions(const HostOptions& options)
{
    PracticeOptions practice;
    practice.Seed = options.Seed;
    practice.Pilots = options.Pilots;
    practice.Observers = 0;
    practice.SessionName = Utf8ToWindows1252(options.Name);
    practice.Password = Utf8ToWindows1252(options.Password);
    practice.MaxPlayers = options.MaxPlayers;
    practice.MigrateHost = !options.NoMigrate;
    practice.PeerForEach = false;
    practice.ComeAndGo = false; // as many pilots as were asked for, under the names that scripts have seen
    practice.HostStaysS = -1;
    if (options.Pilots == 0)
        practice.HostName = "Host";
    return practice;
}

static Result<void> Run(PracticeSession& practice, PracticeWatch& watch, const EndOfRun& end)
{
    constexpr std::chrono::milliseconds Pause(10);
    while (!end.HasCome()) {
        practice.Advance(static_cast<double>(end.ElapsedMs()) / 1000);
        if (const Result<void> going = watch.Tick(end.ElapsedMs()); !going)
            return going;
        std::this_thread::sleep_for(Pause);
    }
    return {};
}

static Result<void> Host(const HostOptions& options, const Console& console)
{
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    auto scene = LoadScene(options);
    if (!scene)
        return scene.error();
    const EndOfRun end(options.ForS);
    DirectPlayProvider provider(options.Network);
    provider.Options.MustBeFound = true;
    EventLines events(console.Out, end);
    PracticeWatch watch(provider, **grid, events);
    const auto practice = PracticeSession::Create(watch, *std::move(scene), **grid, ToPracticeOptions(options));
    if (!practice)
        return Fail("host", practice.error().Text());
    events.Listening(options.Network.BindAddress, options.Network.EnumerationPort);
    watch.Begin(**practice, end.ElapsedMs());
    const Result<void> ran = Run(**practice, watch, end);
    (*practice)->End();
    events.Disconnected(ran ? end.Reason() : ran.error().Text());
    return ran ? ran : Fail("host", ran.error().Text());
}

/// A place on the earth.
static CLI::Validator Place()
{
    return {[](std::string& text) {
                const auto place = ParseNumbers(text, ',', 2);
                const bool valid = place && place->front() >= -90 && place->front() <= 90 && place->back() >= -180 &&
                                   place->back() <= 180;
                return valid ? std::string() : std::string("must have the form LAT,LON, in degrees");
            },
            "LAT,LON"};
}

void AddHostCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    constexpr int MostMembers = 1000;
    CLI::App* const command =
        app.add_subcommand("host", "Hosts a practice session with simulated pilots, and prints what happens there");
    const auto options = std::make_shared<HostOptions>();
    options->Network.BindAddress = "127.0.0.1";
    command->add_option("--name", options->Name, "Name of the session")->type_name("TEXT")->required();
    AddPeerOptions(*command, options->Network);
    command->add_option("--password", options->Password, "Asked of whoever joins")->type_name("TEXT");
    command->add_option("--max-players", options->MaxPlayers, "Most members, simulated ones included")
        ->check(CLI::Range(1, MostMembers))
        ->capture_default_str();
    command->add_option("--pilots", options->Pilots, "Simulated pilots; a place stays free for a controller")
        ->check(CLI::Range(0, MostMembers))
        ->capture_default_str();
    command->add_option("--around", options->Around, "Where they fly")
        ->check(Place())
        ->type_name("")
        ->capture_default_str();
    AddAppFolderOption(*command, options->Folders);
    command->add_option("--seed", options->Seed, "The same seed gives the same pilots")->capture_default_str();
    AddForOption(*command, options->ForS);
    command->add_flag("--no-migrate", options->NoMigrate, "The session ends with its host");
    command->callback([options, &console, &work] { work = [options, &console] { return Host(*options, console); }; });
}
} // namespace corvane
