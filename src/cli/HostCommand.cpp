#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/EventLines.h"
#include "cli/HostDebrief.h"
#include "cli/NetworkOptions.h"
#include "cli/NumberList.h"
#include "cli/TrafficEventLines.h"
#include "cli/TrafficOptions.h"
#include "core/Rounding.h"
#include "core/Settings.h"
#include "core/Text.h"
#include "follow/HostWatch.h"
#include "net/DirectPlayPeer.h"
#include "practice/PracticeSession.h"
#include "recording/ReplaySession.h"
#include "traffic/TrafficSession.h"
#include "traffic/out/FeedOut.h"

#include <functional>
#include <limits>
#include <ostream>
#include <thread>

namespace corvane {
namespace {
struct HostOptions {
    FolderOptions Folders;
    DirectPlayOptions Network;
    std::string Name;
    std::string Password;
    std::optional<std::int32_t> MaxPlayers;
    int Pilots = 5;
    std::uint64_t Seed = 1;
    std::optional<double> ForS;
    bool NoMigrate = false;
    TrafficOptions Traffic;   ///< instead of simulated pilots; its place is theirs too
    std::string Replay;       ///< the recording whose members appear instead of simulated pilots
    std::string ScenarioFile; ///< what the simulated pilots do; empty: as they like
    std::optional<PracticeScenario> Scenario;
    int Speed = 1;
    double AtS = 0;          ///< where the recording begins
    std::string DebriefFile; ///< empty: none
    std::string FeedOut;     ///< where the targets are offered; empty: nowhere
};

/// A session that is being hosted, whatever its members do.
struct Hosted {
    WatchedHost Host;
    std::function<Result<void>()> Advance;
    std::function<void()> End;
    std::function<std::string(std::string_view)> DestinationOf = {}; ///< of simulated pilots
};
/// Makes a session with the factory's peers; the clock goes on with the run.
using MakeHosted =
    std::function<Result<Hosted>(SessionPeerFactory& factory, SessionEvents& events, const MillisecondClock& now)>;
} // namespace

/// The airports and navaids around a place; without a database there are none, and the pilots fly from place to place.
static Result<AreaModel> LoadSurroundings(const HostOptions& options)
{
    const auto place = *ParseNumbers(options.Traffic.Around, ',', 2);
    AreaModel area;
    area.AreaCenter = {place[0], place[1]};
    const auto settingsFile = options.Folders.AppFile(SettingsFileName);
    if (std::error_code ignored; !std::filesystem::exists(settingsFile, ignored))
        return area;
    const auto settings = ReadSettings(settingsFile);
    if (!settings)
        return settings.error();
    std::vector<AirspaceRecord> airspaces;
    UnwatchedProgress unwatched;
    const Result<void> loaded =
        LoadAirportArea(options.Folders.AppFolder, *settings, "", airspaces, area, unwatched); // what lies around
    if (!loaded)
        return loaded.error();
    return area;
}

static constexpr std::int32_t DefaultMaxPlayers = 8;

static PracticeOptions ToPracticeOptions(const HostOptions& options)
{
    PracticeOptions practice;
    practice.Seed = options.Seed;
    practice.Pilots = options.Pilots;
    practice.Observers = 0;
    practice.SessionName = Utf8ToWindows1252(options.Name);
    practice.Password = Utf8ToWindows1252(options.Password);
    practice.MaxPlayers = options.MaxPlayers.value_or(DefaultMaxPlayers);
    practice.MigrateHost = !options.NoMigrate;
    practice.PeerForEach = false;
    practice.ComeAndGo = false; // as many pilots as were asked for, under the names that scripts have seen
    practice.HostStaysS = -1;
    if (options.Pilots == 0)
        practice.HostName = "Host";
    if (options.Scenario) {
        practice.Scenario = options.Scenario;
        practice.MaxPlayers = options.MaxPlayers.value_or(0); // room for all of it and some controllers
        if (options.Name.empty())
            practice.SessionName = options.Scenario->Name;
    }
    return practice;
}

static Result<void> Run(const Hosted& hosted, HostWatch& watch, FeedOut* feedOut, HostDebrief* debrief,
                        const EndOfRun& end)
{
    constexpr std::chrono::milliseconds Pause(10);
    while (!end.HasCome()) {
        if (Result<void> going = hosted.Advance(); !going)
            return going;
        if (Result<void> going = watch.Tick(end.ElapsedMs()); !going)
            return going;
        if (debrief != nullptr)
            debrief->Tick(watch.Players().Players(), end.ElapsedMs());
        if (feedOut != nullptr)
            feedOut->Tick(watch.Players().Players(), end.ElapsedMs());
        std::this_thread::sleep_for(Pause);
    }
    return {};
}

/// Hosts a session to the end of the run, and prints what happens there.
/// details  of members that come from outside
/// around  what a debrief knows of the world; null where none was loaded
static Result<void> Serve(const HostOptions& options, const Console& console, const TrafficDetailsTable& details,
                          const AreaModel* around, const MakeHosted& make)
{
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    auto feedOut = options.FeedOut.empty() ? Result<std::unique_ptr<FeedOut>>(nullptr)
                                           : OpenFeedOut(options.FeedOut, **grid, &details);
    if (!feedOut)
        return Fail("host", feedOut.error().Text());
    const EndOfRun end(options.ForS);
    DirectPlayProvider provider(options.Network);
    provider.Options.MustBeFound = true;
    EventLines lines(console.Out, end);
    TrafficEventLines events(lines, details, **grid);
    std::optional<HostDebrief> debrief;
    if (!options.DebriefFile.empty() && around != nullptr)
        debrief.emplace(events, *around, **grid);
    HostWatch watch(provider, **grid, debrief ? static_cast<SessionEvents&>(*debrief) : events);
    const auto hosted = make(watch, events, [&end] { return end.ElapsedMs(); });
    if (!hosted)
        return Fail("host", hosted.error().Text());
    lines.Listening(options.Network.BindAddress, options.Network.EnumerationPort);
    watch.Begin(hosted->Host, end.ElapsedMs());
    if (debrief && !hosted->Host.IsPilot)
        debrief->Watch().Ignore(hosted->Host.Name);
    if (debrief)
        debrief->Watch().SetPractice(
            {options.Scenario ? options.Scenario->Wind : PracticeWind(), hosted->DestinationOf});
    const Result<void> ran = Run(*hosted, watch, feedOut->get(), debrief ? &*debrief : nullptr, end);
    hosted->End();
    events.Disconnected(ran ? end.Reason() : ran.error().Text());
    const Result<void> written =
        debrief ? debrief->Write(options.DebriefFile, hosted->Host.Session.Name) : Result<void>();
    if (!ran)
        return Fail("host", ran.error().Text());
    return written;
}

static Result<void> HostPractice(HostOptions& options, const Console& console)
{
    if (!options.ScenarioFile.empty()) {
        auto scenario = ReadScenario(options.ScenarioFile);
        if (!scenario)
            return scenario.error();
        options.Scenario = *std::move(scenario);
    }
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    const auto around = LoadSurroundings(options);
    if (!around)
        return around.error();
    PracticeScene scene(around->AreaAirports, around->AreaVors, around->AreaNdbs, around->AreaCenter);
    return Serve(
        options, console, {}, &*around,
        [&](SessionPeerFactory& factory, SessionEvents& /*events*/, const MillisecondClock& now) -> Result<Hosted> {
            auto created = PracticeSession::Create(factory, std::move(scene), **grid, ToPracticeOptions(options));
            if (!created)
                return created.error();
            const std::shared_ptr<PracticeSession> session = *std::move(created);
            const PracticeMember& host = *session->Host();
            return Hosted{{host.SharePeer(), host.Id(), host.Name(), host.IsPilot(), session->Entry()},
                          [session, now]() -> Result<void> {
                              session->Advance(static_cast<double>(now()) / 1000);
                              return {};
                          },
                          [session] { session->End(); },
                          [session](std::string_view name) { return session->DestinationOf(name); }};
        });
}

static Result<void> HostRecording(const HostOptions& options, const Console& console)
{
    auto read = ReadRecording(options.Replay);
    if (!read)
        return read.error();
    if (read->LeftOut)
        PrintNotice(console, read->LeftOut->Text());
    const auto recording = std::make_shared<const Recording>(*std::move(read));
    return Serve(
        options, console, {}, nullptr,
        [&](SessionPeerFactory& factory, SessionEvents& /*events*/, const MillisecondClock& now) -> Result<Hosted> {
            const auto clock = std::make_shared<PlaybackClock>(now);
            clock->SetSpeed(options.Speed);
            auto created = ReplaySession::Create(factory, recording, *clock,
                                                 {.SessionName = Utf8ToWindows1252(options.Name),
                                                  .Password = Utf8ToWindows1252(options.Password),
                                                  .MaxPlayers = options.MaxPlayers.value_or(0),
                                                  .MigrateHost = !options.NoMigrate,
                                                  .BeginMs = RoundTo<std::int32_t>(options.AtS * 1000)});
            if (!created)
                return created.error();
            const std::shared_ptr<ReplaySession> session = *std::move(created);
            return Hosted{{session->Peer(), session->HostId(), session->HostName(), true, session->Entry()},
                          [session, clock] { return session->Advance(); },
                          [session] { session->End(); }};
        });
}

/// A place is kept for one more member, and one is the host's own.
static constexpr std::int32_t PlacesForOthers = 2;

static TrafficSessionOptions ToTrafficOptions(const HostOptions& options, SessionEvents& events)
{
    TrafficSessionOptions traffic;
    traffic.SessionName = Utf8ToWindows1252(options.Name);
    traffic.Password = Utf8ToWindows1252(options.Password);
    traffic.HostName = options.Traffic.Callsign.empty() ? "Host" : options.Traffic.Callsign;
    traffic.MaxPlayers = options.MaxPlayers.value_or(DefaultMaxPlayers);
    traffic.MigrateHost = !options.NoMigrate;
    traffic.HostIsMember = true;
    traffic.ShowMembers = true;
    traffic.OnNotice = [&events](std::string_view text) { events.Notice(MessageIcon::Information, text); };
    return traffic;
}

static Result<void> HostTraffic(const HostOptions& options, const Console& console)
{
    TrafficOptions wanted = options.Traffic;
    const std::int32_t places = options.MaxPlayers.value_or(DefaultMaxPlayers) - PlacesForOthers;
    wanted.Most = std::min(wanted.Most, static_cast<std::size_t>(std::max(places, 0)));
    auto opened = OpenTraffic(wanted, options.Folders, console.Notices);
    if (!opened)
        return Fail("host", opened.error().Text());
    TrafficDetailsTable details;
    return Serve(
        options, console, details, nullptr,
        [&](SessionPeerFactory& factory, SessionEvents& events, const MillisecondClock& now) -> Result<Hosted> {
            auto created = TrafficSession::Create(factory, *opened->Feed, details, ToTrafficOptions(options, events));
            if (!created)
                return created.error();
            const std::shared_ptr<TrafficSession> session = *std::move(created);
            return Hosted{{session->Peer(), session->HostId(), session->HostName(), false, session->Entry()},
                          [session, now] { return session->Advance(now()); },
                          [session] { session->End(); }};
        });
}

void AddHostCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    constexpr int MostMembers = 1000;
    constexpr double LongestBeginS = std::numeric_limits<std::int32_t>::max() / 1000;
    CLI::App* const command = app.add_subcommand("host", "Hosts a session with simulated pilots, a recording's members "
                                                         "or traffic from outside, and prints what happens there");
    const auto options = std::make_shared<HostOptions>();
    options->Network.BindAddress = "127.0.0.1";
    CLI::Option_group* const session = command->add_option_group("Session", "What is hosted");
    CLI::Option* const named =
        session->add_option("--name", options->Name, "Name of the session; else the recorded one's");
    named->type_name("TEXT");
    CLI::Option* const replay =
        session->add_option("--replay", options->Replay, "A recording whose members appear instead of simulated pilots")
            ->type_name("FILE");
    CLI::Option* const scenario =
        session->add_option("--scenario", options->ScenarioFile, "A file that says which simulated pilots do what")
            ->type_name("FILE")
            ->excludes(replay);
    session->require_option(1, 0);
    CLI::Option* const from = AddFromOption(*command, options->Traffic);
    from->excludes(replay)->needs(named);
    command->add_option("--speed", options->Speed, "How many times as fast the recording plays")
        ->check(CLI::Range(PlaybackClock::MinSpeed, PlaybackClock::MaxSpeed))
        ->needs(replay)
        ->capture_default_str();
    command->add_option("--at", options->AtS, "Where the recording begins, in seconds since its beginning")
        ->type_name("SECONDS")
        ->check(CLI::Range(0.0, LongestBeginS))
        ->needs(replay)
        ->capture_default_str();
    AddPeerOptions(*command, options->Network);
    command->add_option("--password", options->Password, "Asked of whoever joins")->type_name("TEXT");
    command->add_option("--max-players", options->MaxPlayers, "Most members, simulated or recorded ones included")
        ->check(CLI::Range(1, MostMembers))
        ->default_str(std::to_string(DefaultMaxPlayers));
    CLI::Option* const pilots =
        command->add_option("--pilots", options->Pilots, "Simulated pilots; a place stays free for a controller");
    pilots->check(CLI::Range(0, MostMembers))
        ->excludes(replay)
        ->excludes(from)
        ->excludes(scenario)
        ->capture_default_str();
    from->excludes(scenario);
    AddTrafficPlaceOptions(*command, options->Traffic);
    command->get_option("--around")
        ->excludes(replay)
        ->description("Where simulated pilots fly, or what other traffic is around [47.449,-122.309]");
    AddStationOptions(*command, options->Traffic);
    AddAppFolderOption(*command, options->Folders);
    command->add_option("--seed", options->Seed, "The same seed gives the same pilots")
        ->excludes(replay)
        ->capture_default_str();
    AddForOption(*command, options->ForS);
    command
        ->add_option("--debrief", options->DebriefFile,
                     "At the end: what controlling came to, as an HTML page, or as JSON where FILE ends in .json")
        ->type_name("FILE")
        ->excludes(replay)
        ->excludes(from);
    AddFeedOutOption(*command, options->FeedOut);
    command->add_flag("--no-migrate", options->NoMigrate, "The session ends with its host");
    command->callback([options, pilots, &console, &work] {
        const int room = options->MaxPlayers.value_or(DefaultMaxPlayers) - 1;
        if (pilots->count() > 0 && options->Pilots > std::max(room, 1))
            throw CLI::ValidationError("--pilots", "the session has room for " + std::to_string(std::max(room, 1)) +
                                                       " of " + std::to_string(options->Pilots) +
                                                       ", as one place stays free; see --max-players");
        if (!options->Traffic.HasPlace())
            options->Traffic.Around = "47.449,-122.309";
        CheckTrafficOptions(options->Traffic);
        work = [options, &console] {
            if (options->Traffic.IsWanted())
                return HostTraffic(*options, console);
            return options->Replay.empty() ? HostPractice(*options, console) : HostRecording(*options, console);
        };
    });
}
} // namespace corvane
