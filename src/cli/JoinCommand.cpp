#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/EventLines.h"
#include "cli/InputLines.h"
#include "cli/NetworkOptions.h"
#include "cli/TrafficEventLines.h"
#include "cli/TrafficOptions.h"
#include "core/Text.h"
#include "follow/SessionFollower.h"
#include "net/DirectPlayPeer.h"
#include "recording/RecordingPeer.h"
#include "traffic/TrafficProvider.h"
#include "traffic/out/FeedOut.h"

#include <thread>

namespace corvane {
namespace {
struct JoinOptions {
    FolderOptions Folders;
    DirectPlayOptions Network;
    FollowOptions Follow; ///< texts as given, in UTF-8
    std::optional<double> ForS;
    std::string Record; ///< file to which the session is recorded; empty: none
    TrafficOptions Traffic;
    std::string FeedOut;
};

/// Records a session from the moment of being admitted.
class JoinedRecording {
public:
    JoinedRecording(std::string file, SessionEvents& events) : m_file(std::move(file)), m_events(events) {}

    [[nodiscard]] SessionRecorder& Recorder() noexcept { return m_recorder; }
    /// An Error says why the recording cannot begin. One that stops later is told of, and the session goes on.
    Result<void> Tick(bool joined)
    {
        if (joined && !m_file.empty() && !m_begun) {
            m_begun = true;
            return m_recorder.Start(m_file);
        }
        if (auto failure = m_recorder.TakeFailure()) {
            m_events.Notice(MessageIcon::Warning, BoxText(*failure));
            m_outcome = *std::move(failure);
        }
        return {};
    }
    [[nodiscard]] const Result<void>& Outcome() const noexcept { return m_outcome; }

private:
    std::string m_file;
    SessionEvents& m_events;
    SessionRecorder m_recorder{SteadyMilliseconds()};
    bool m_begun = false;
    Result<void> m_outcome;
};
} // namespace

static FollowOptions ToWindows1252(const FollowOptions& texts)
{
    return {.SessionName = Utf8ToWindows1252(texts.SessionName),
            .Nickname = Utf8ToWindows1252(texts.Nickname),
            .Password = Utf8ToWindows1252(texts.Password),
            .AdmitWithinS = texts.AdmitWithinS,
            .TakesOver = texts.TakesOver};
}

/// Says what stands on the standard input, but no more at once than others can read.
static void SayInput(InputLines& input, SessionFollower& follower)
{
    constexpr int MostAtOnce = 20;
    for (int i = 0; i < MostAtOnce; ++i) {
        const auto line = follower.Congested() ? std::nullopt : input.Next();
        if (!line)
            return;
        follower.Say(Utf8ToWindows1252(*line));
    }
}

static Result<void> Follow(SessionFollower& follower, JoinedRecording& recording, FeedOut* feedOut, const EndOfRun& end,
                           const Console& console)
{
    constexpr std::chrono::milliseconds Pause(HandshakeIntervalMs);
    Result<void> joined = follower.Join();
    if (!joined && !end.HasCome())
        return joined;
    InputLines input(console.LiveInput);
    while (!end.HasCome()) {
        if (Result<void> going = follower.Tick(end.ElapsedMs()); !going)
            return going;
        if (Result<void> recorded = recording.Tick(follower.IsJoined()); !recorded) {
            follower.Leave(recorded.error().Text());
            return recorded;
        }
        if (follower.IsJoined())
            SayInput(input, follower);
        if (feedOut != nullptr)
            feedOut->Tick(follower.Players().Players(), end.ElapsedMs());
        std::this_thread::sleep_for(Pause);
    }
    follower.Leave(end.Reason());
    return recording.Outcome();
}

/// Follows the session that a factory's peers find, to the end of the run.
static Result<void> FollowOn(SessionPeerFactory& factory, const JoinOptions& options,
                             const TrafficDetailsTable& details, EventLines& lines, const EndOfRun& end,
                             const Console& console)
{
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    auto feedOut = options.FeedOut.empty() ? Result<std::unique_ptr<FeedOut>>(nullptr)
                                           : OpenFeedOut(options.FeedOut, **grid, &details);
    if (!feedOut)
        return Fail("join", feedOut.error().Text());
    TrafficEventLines events(lines, details, **grid);
    JoinedRecording recording(options.Record, events);
    RecordingPeerFactory recorded(factory, recording.Recorder());
    SessionFollower follower(recorded, **grid, events, ToWindows1252(options.Follow));
    const Result<void> followed = Follow(follower, recording, feedOut->get(), end, console);
    return followed ? followed : Fail("join", followed.error().Text());
}

static Result<void> JoinSession(const JoinOptions& options, const Console& console)
{
    const EndOfRun end(options.ForS);
    DirectPlayProvider provider(options.Network);
    provider.Options.WhileWaiting = [&end] { return !end.HasCome(); };
    EventLines events(console.Out, end);
    return FollowOn(provider, options, {}, events, end, console);
}

/// Traffic from outside is a session of this process, which is followed like any other.
static Result<void> JoinTraffic(const JoinOptions& options, const Console& console)
{
    const EndOfRun end(options.ForS);
    EventLines events(console.Out, end);
    auto opened = OpenTraffic(options.Traffic, options.Folders, console.Notices);
    if (!opened)
        return Fail("join", opened.error().Text());
    TrafficDetailsTable details;
    TrafficConnection connection;
    connection.Name = opened->Feed->Name();
    connection.Address = "traffic:";
    connection.Open = [&feed = opened->Feed]() -> Result<std::unique_ptr<TrafficFeed>> { return std::move(feed); };
    connection.OnNotice = [&events](std::string_view text) { events.Notice(MessageIcon::Warning, text); };
    TrafficProvider provider(std::move(connection), details);
    events.Listening(opened->Address, opened->Port);
    return FollowOn(provider, options, details, events, end, console);
}

void AddJoinCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand(
        "join", "Joins a session, prints what happens there, and says the lines of its input as chat");
    const auto options = std::make_shared<JoinOptions>();
    AddSearchOptions(*command, options->Network);
    AddPeerOptions(*command, options->Network);
    command->add_option("--session", options->Follow.SessionName, "Name of the session; else the first found")
        ->type_name("NAME");
    command->add_option("--nickname", options->Follow.Nickname, "The others see it with ** before it")
        ->type_name("TEXT")
        ->capture_default_str();
    command->add_option("--password", options->Follow.Password, "Of the session, should it require one")
        ->type_name("TEXT");
    command->add_option("--record", options->Record, "Records the session to a file, replacing one of that name")
        ->type_name("FILE");
    command
        ->add_option("--admit-within", options->Follow.AdmitWithinS,
                     "Gives up when the host has not admitted this member for so long; without it, never")
        ->check(CLI::PositiveNumber)
        ->type_name("SECONDS");
    command->add_flag("--take-over", options->Follow.TakesOver,
                      "Admits members when the host is gone without a word and this one becomes the transport's host");
    AddAppFolderOption(*command, options->Folders);
    AddForOption(*command, options->ForS);
    CLI::Option* const feed = AddFeedOption(*command, options->Traffic);
    CLI::Option* const flightGear = AddFlightGearOption(*command, options->Traffic)->excludes(feed);
    for (const char* const ofSessions : {"--address", "--broadcast", "--session", "--password"})
        for (CLI::Option* const traffic : {feed, flightGear})
            traffic->excludes(command->get_option(ofSessions));
    AddStationOptions(*command, options->Traffic);
    AddTrafficPlaceOptions(*command, options->Traffic);
    AddFeedOutOption(*command, options->FeedOut);
    CLI::Option* const nickname = command->get_option("--nickname");
    command->callback([options, nickname, &console, &work] {
        options->Traffic.BindAddress = options->Network.BindAddress;
        CheckTrafficOptions(options->Traffic);
        if (options->Traffic.HasPlace() && !options->Traffic.IsWanted())
            throw CLI::RequiredError("--flightgear or --feed");
        if (nickname->empty() && !options->Traffic.Callsign.empty())
            options->Follow.Nickname = options->Traffic.Callsign;
        work = [options, &console] {
            return options->Traffic.IsWanted() ? JoinTraffic(*options, console) : JoinSession(*options, console);
        };
    });
}
} // namespace corvane
