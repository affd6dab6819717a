#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/EventLines.h"
#include "cli/InputLines.h"
#include "cli/NetworkOptions.h"
#include "cli/TrafficOptions.h"
#include "core/Text.h"
#include "follow/SessionFollower.h"
#include "net/DirectPlayPeer.h"
#include "recording/RecordingPeer.h"
#include "traffic/TrafficProvider.h"
#include "traffic/feeds/AircraftFeed.h"

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
            .Password = Utf8ToWindows1252(texts.Password)};
}

/// Says what stands on the standard input, but no more at once than others can read.
static void SayInput(InputLines& input, SessionFollower& follower)
{
    constexpr int MostAtOnce = 20;
    for (int i = 0; i < MostAtOnce; ++i) {
        const auto line = input.Next();
        if (!line)
            return;
        follower.Say(Utf8ToWindows1252(*line));
    }
}

static Result<void> Follow(SessionFollower& follower, JoinedRecording& recording, FeedOut* feedOut, const EndOfRun& end,
                           const Console& console)
{
    constexpr std::chrono::milliseconds Pause(HandshakeIntervalMs);
    const Result<void> joined = follower.Join();
    if (!joined && !end.HasCome())
        return joined;
    InputLines input(console.LiveInput);
    while (!end.HasCome()) {
        if (const Result<void> going = follower.Tick(end.ElapsedMs()); !going)
            return going;
        if (const Result<void> recorded = recording.Tick(follower.IsJoined()); !recorded) {
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
                             const TrafficDetailsTable& details, EventLines& events, const EndOfRun& end,
                             const Console& console)
{
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    const auto feedOut = OpenFeedOut(options.FeedOut, **grid, &details);
    if (!feedOut)
        return feedOut.error();
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

static Result<void> JoinFeed(const JoinOptions& options, const Console& console)
{
    const auto nearest = NearestOf(options.Traffic, options.Folders, console.Notices);
    if (!nearest)
        return nearest.error();
    const auto place = ParseFeedPlace(options.Traffic.Feed);
    if (!place)
        return place.error();
    const EndOfRun end(options.ForS);
    EventLines events(console.Out, end);
    TrafficDetailsTable details;
    TrafficConnection connection;
    connection.Name = "Aircraft feed";
    connection.Address = "feed:";
    connection.Open = [&]() -> Result<std::unique_ptr<TrafficFeed>> {
        return std::unique_ptr<TrafficFeed>(OpenAircraftFeed(*place, *nearest));
    };
    connection.OnNotice = [&events](std::string_view text) { events.Notice(MessageIcon::Warning, text); };
    TrafficProvider provider(std::move(connection), details);
    events.Listening(place->Kind == FeedKind::JsonFile ? place->Path : place->Host, place->Port);
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
    AddAppFolderOption(*command, options->Folders);
    AddForOption(*command, options->ForS);
    CLI::Option* const feed = AddFeedOption(*command, options->Traffic);
    for (const char* const ofSessions : {"--address", "--broadcast", "--session", "--password"})
        feed->excludes(command->get_option(ofSessions));
    AddTrafficPlaceOptions(*command, options->Traffic);
    AddFeedOutOption(*command, options->FeedOut);
    command->callback([options, &console, &work] {
        RequireTrafficPlace(options->Traffic, !options->Traffic.Feed.empty());
        work = [options, &console] {
            return options->Traffic.Feed.empty() ? JoinSession(*options, console) : JoinFeed(*options, console);
        };
    });
}
} // namespace corvane
