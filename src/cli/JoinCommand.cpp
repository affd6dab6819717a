#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/EventLines.h"
#include "cli/NetworkOptions.h"
#include "core/Text.h"
#include "platform/InputLines.h"
#include "platform/directplay/DirectPlayPeer.h"
#include "session/follow/SessionFollower.h"

#include <thread>

namespace corvane {
namespace {
struct JoinOptions {
    FolderOptions Folders;
    DirectPlayOptions Network;
    FollowOptions Follow; ///< texts as given, in UTF-8
    std::optional<double> ForS;
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

static Result<void> Follow(SessionFollower& follower, const EndOfRun& end, const Console& console)
{
    constexpr std::chrono::milliseconds Pause(HandshakeIntervalMs);
    const Result<void> joined = follower.Join();
    if (!joined && !end.HasCome())
        return joined;
    InputLines input(console.LiveInput);
    while (!end.HasCome()) {
        if (const Result<void> going = follower.Tick(end.ElapsedMs()); !going)
            return going;
        if (follower.IsJoined())
            SayInput(input, follower);
        std::this_thread::sleep_for(Pause);
    }
    follower.Leave(end.Reason());
    return {};
}

static Result<void> Join(const JoinOptions& options, const Console& console)
{
    const auto grid = LoadMagVarGrid(options.Folders);
    if (!grid)
        return grid.error();
    const EndOfRun end(options.ForS);
    DirectPlayProvider provider(options.Network);
    provider.Options.WhileWaiting = [&end] { return !end.HasCome(); };
    EventLines events(console.Out, end);
    SessionFollower follower(provider, **grid, events, ToWindows1252(options.Follow));
    const Result<void> followed = Follow(follower, end, console);
    return followed ? followed : Fail("join", followed.error().Text());
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
    AddAppFolderOption(*command, options->Folders);
    AddForOption(*command, options->ForS);
    command->callback([options, &console, &work] { work = [options, &console] { return Join(*options, console); }; });
}
} // namespace corvane
