#include "cli/RecordJson.h"
#include "tests/cli/CommandRun.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/net/LoopbackAddress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <future>
#include <thread>

namespace corvane {
namespace {
using test::LoopbackAddress;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

std::vector<Json> Lines(const std::string& out)
{
    std::vector<Json> lines;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);)
        lines.push_back(Json::parse(line));
    return lines;
}

std::vector<Json> Events(const std::string& out, const std::string& event)
{
    auto lines = Lines(out);
    std::erase_if(lines, [&event](const Json& line) { return line["event"] != event; });
    return lines;
}

std::vector<std::string> Texts(const std::vector<Json>& events, const char* member)
{
    std::vector<std::string> texts;
    for (const Json& event : events)
        texts.push_back(event[member]);
    return texts;
}

std::vector<std::string> PlayerNames(const std::vector<Json>& events)
{
    std::vector<std::string> names;
    for (const Json& event : events)
        names.push_back(event["Player"]["Name"]);
    return names;
}

std::vector<std::string> Joined(int machine, std::vector<std::string> more)
{
    std::vector<std::string> arguments{"join", "--address", LoopbackAddress(1), "--bind", LoopbackAddress(machine)};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

std::future<CommandRun> HostFor(const char* seconds, std::vector<std::string> more)
{
    std::vector<std::string> arguments{"host", "--bind", LoopbackAddress(1), "--for", seconds};
    arguments.insert(arguments.end(), more.begin(), more.end());
    auto host = std::async(std::launch::async, [arguments] { return RunCli(arguments); });
    for (int tries = 0; tries < 20; ++tries) // until it answers
        if (!RunCli({"sessions", "--address", LoopbackAddress(1), "--bind", LoopbackAddress(9), "--timeout", "0.2"})
                 .Out.empty())
            break;
    return host;
}

TEST(SessionCommands, FollowOneAnother)
{
    auto host = HostFor("8", {"--name", "Abend", "--pilots", "3", "--max-players", "6"});
    const CommandRun listed =
        RunCli({"sessions", "--address", LoopbackAddress(1), "--bind", LoopbackAddress(9), "--timeout", "0.3"});
    ASSERT_THAT(Lines(listed.Out), SizeIs(1));
    const Json session = Lines(listed.Out).front();
    EXPECT_EQ(session["Name"], "Abend");
    EXPECT_EQ(session["CurrentPlayers"], 3);
    EXPECT_EQ(session["MaxPlayers"], 6);
    EXPECT_EQ(session["Flags"], 68);

    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const std::string typed = "gr\xC3\xBC\xC3\x9F Gott\r\nsecond";
    ASSERT_EQ(write(pipe[1], typed.data(), typed.size()), static_cast<ssize_t>(typed.size()));
    close(pipe[1]); // the second line ends with the input
    const CommandRun joined = RunCli(Joined(2, {"--nickname", "Tower", "--for", "5"}), {}, pipe[0]);
    close(pipe[0]);
    EXPECT_EQ(joined.Status, 0) << joined.Notices;
    EXPECT_THAT(Texts(Events(joined.Out, "notice"), "Text"), testing::ElementsAre("Connected to FS session!"));
    ASSERT_THAT(Events(joined.Out, "joined"), SizeIs(1));
    EXPECT_EQ(Events(joined.Out, "joined")[0]["Session"], "Abend");
    const auto own = Events(joined.Out, "joined")[0]["OwnPlayerId"];
    EXPECT_EQ(Events(joined.Out, "player-added")[0]["Player"]["PlayerId"], own);
    EXPECT_THAT(Events(joined.Out, "player-added"), SizeIs(4));
    EXPECT_THAT(Events(joined.Out, "player-updated").size(), testing::Gt(5U));
    const std::vector<std::string> said{"gr\xC3\xBC\xC3\x9F Gott", "second"};
    EXPECT_EQ(Texts(Events(joined.Out, "chat"), "Text"), said);
    EXPECT_THAT(Events(joined.Out, "disconnected"), SizeIs(1));

    const CommandRun hosted = host.get();
    EXPECT_EQ(hosted.Status, 0) << hosted.Notices;
    EXPECT_EQ(Lines(hosted.Out).front()["address"], LoopbackAddress(1));
    EXPECT_EQ(Lines(hosted.Out).front()["port"], 47624);
    EXPECT_EQ(Texts(Events(hosted.Out, "chat"), "Text"), said);
    EXPECT_THAT(PlayerNames(Events(hosted.Out, "player-added")),
                IsSupersetOf(PlayerNames(Events(joined.Out, "player-added"))));
    EXPECT_EQ(PlayerNames(Events(hosted.Out, "player-removed")), std::vector<std::string>{"**Tower"});
    EXPECT_EQ(Lines(hosted.Out).back()["event"], "disconnected");
}

TEST(SessionCommands, TellARefusalInTheProgramsWords)
{
    auto host = HostFor("9", {"--name", "Locked", "--pilots", "1", "--max-players", "2", "--password", "sesame"});
    const CommandRun wrong = RunCli(Joined(2, {"--password", "open"}));
    EXPECT_EQ(wrong.Status, 1);
    EXPECT_THAT(Texts(Events(wrong.Out, "notice"), "Text"),
                testing::ElementsAre("Failed to join game. Try to locate session again."));
    EXPECT_EQ(Events(wrong.Out, "notice")[0]["Icon"], "warning");
    EXPECT_THAT(wrong.Notices, HasSubstr("corvane-cli: join: "));
    const CommandRun second = RunCli({"host", "--name", "Again", "--bind", LoopbackAddress(1), "--for", "5"});
    EXPECT_EQ(second.Status, 1);
    EXPECT_THAT(second.Out, IsEmpty());
    EXPECT_THAT(second.Notices, HasSubstr(LoopbackAddress(1) + ":47624"));
    EXPECT_EQ(host.get().Status, 0);
}

TEST(SessionCommands, EndWithStatusOneWhenTheSessionIsLost)
{
    auto host = HostFor("4", {"--name", "Short", "--pilots", "1", "--no-migrate"});
    const CommandRun joined = RunCli(Joined(2, {}));
    EXPECT_EQ(joined.Status, 1);
    EXPECT_EQ(Lines(joined.Out).back()["event"], "disconnected");
    EXPECT_THAT(Texts(Events(joined.Out, "notice"), "Text").back(), HasSubstr("closes multiplayer session."));
    EXPECT_EQ(host.get().Status, 0);
}

TEST(SessionCommands, RecordAndReplay)
{
    const TemporaryFolder folder;
    const std::string file = (folder.Path() / "abend.cvr").string();
    auto host = HostFor("7", {"--name", "Abend", "--pilots", "3"});
    const CommandRun recorded = RunCli(Joined(2, {"--nickname", "Tower", "--for", "4", "--record", file}));
    EXPECT_EQ(recorded.Status, 0) << recorded.Notices;
    const auto pilots = PlayerNames(Events(recorded.Out, "player-added"));
    ASSERT_THAT(pilots, SizeIs(4)); // and the recorder itself, first
    EXPECT_EQ(host.get().Status, 0);

    auto replay = HostFor("7", {"--replay", file, "--speed", "2"});
    const CommandRun watched = RunCli(Joined(3, {"--nickname", "Viewer", "--for", "4"}));
    EXPECT_EQ(watched.Status, 0) << watched.Notices;
    EXPECT_EQ(Events(watched.Out, "joined")[0]["Session"], "Abend");
    EXPECT_THAT(PlayerNames(Events(watched.Out, "player-added")), IsSupersetOf(pilots));
    const CommandRun replayed = replay.get();
    EXPECT_EQ(replayed.Status, 0) << replayed.Notices;
    EXPECT_THAT(PlayerNames(Events(replayed.Out, "player-added")), IsSupersetOf(pilots));
    EXPECT_THAT(Events(replayed.Out, "player-updated").size(), testing::Gt(3U)) << "they fly";

    std::filesystem::resize_file(file, std::filesystem::file_size(file) - 1);
    const CommandRun cut = RunCli({"host", "--replay", file, "--bind", LoopbackAddress(1), "--for", "0"});
    EXPECT_EQ(cut.Status, 0);
    EXPECT_THAT(cut.Notices, HasSubstr("abend.cvr: the record at byte "));
}

TEST(SessionCommands, SayWhichRecordingCannotBeReadOrWritten)
{
    const TemporaryFolder folder;
    const auto other = folder.Write("other.cvr", std::string("something else"));
    for (const auto& [file, why] :
         {std::pair{other, "is not a recorded session"}, std::pair{folder.Path() / "missing.cvr", "missing.cvr: "},
          std::pair{folder.Path(), "is not a file"}}) {
        const CommandRun run = RunCli({"host", "--replay", file.string(), "--bind", LoopbackAddress(1), "--for", "0"});
        EXPECT_EQ(run.Status, 1) << file;
        EXPECT_THAT(run.Out, IsEmpty());
        EXPECT_THAT(run.Notices, HasSubstr(file.string() + ": "));
        EXPECT_THAT(run.Notices, HasSubstr(why));
    }
    auto host = HostFor("4", {"--name", "Abend", "--pilots", "1"});
    const std::string nowhere = (folder.Path() / "no" / "abend.cvr").string();
    const CommandRun joined = RunCli(Joined(2, {"--for", "20", "--record", nowhere}));
    EXPECT_EQ(joined.Status, 1);
    EXPECT_THAT(joined.Notices, HasSubstr(nowhere + ": "));
    EXPECT_EQ(Lines(joined.Out).back()["event"], "disconnected") << "it leaves the session as it should";
    EXPECT_EQ(host.get().Status, 0);
}

TEST(SessionCommands, SayWhatIsWrongWithAddressesAndNumbers)
{
    const std::pair<std::vector<std::string>, const char*> wrong[] = {
        {{"sessions", "--address", "fe80::1"}, "is an IPv6 address"},
        {{"join", "--address", "127.0.0.1:2300"}, "see --port"},
        {{"sessions", "--address", "127.0.0.1", "--bind", "203.0.113.9"}, "is no address of this machine"},
        {{"host", "--name", "A", "--bind", "203.0.113.9"}, "is no address of this machine"},
        {{"host", "--name", "A", "--pilots", "20"}, "room for 7 of 20"},
        {{"join", "--\x1b[31m\xff"}, "--\\x1b[31m\\xff"}, // nothing reaches a terminal as it came
    };
    for (const auto& [arguments, why] : wrong)
        EXPECT_THAT(RunCli(arguments).Notices, HasSubstr(why));
}

TEST(SessionCommands, EndInTimeWhereNobodyAnswers)
{
    using Clock = std::chrono::steady_clock;
    const std::vector<std::string> searches[] = {
        {"sessions", "--address", LoopbackAddress(77), "--bind", LoopbackAddress(2), "--timeout", "1"},
        {"join", "--address", LoopbackAddress(77), "--bind", LoopbackAddress(2), "--for", "1"},
    };
    for (const auto& arguments : searches) {
        const auto start = Clock::now();
        const CommandRun run = RunCli(arguments);
        EXPECT_EQ(run.Status, 0) << run.Notices;
        EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(1900))
            << arguments.front(); // 1 s to linger is too much
    }
}

TEST(SessionCommands, LeaveAsTheyShouldWhenTheTerminalGoes)
{
    sigset_t hangUp;
    sigemptyset(&hangUp);
    sigaddset(&hangUp, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &hangUp, nullptr); // for the thread; the command unblocks it here again
    std::thread closing([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        kill(getpid(), SIGHUP);
    });
    const CommandRun run = RunCli(Joined(2, {"--for", "20"}));
    closing.join();
    EXPECT_EQ(run.Status, 0) << run.Notices;
    EXPECT_EQ(Lines(run.Out).back()["Reason"], "interrupted");
}

TEST(SessionCommands, RefuseWrongArguments)
{
    const std::vector<std::string> wrong[] = {
        {"host"}, // nameless
        {"host", "--name", "A", "--port", "0"},
        {"host", "--name", "A", "--port", "65536"},
        {"host", "--name", "A", "--ports", "2300"},
        {"host", "--name", "A", "--ports", "2400-2300"},
        {"host", "--name", "A", "--ports", "0-70000"},
        {"host", "--name", "A", "--bind", "nowhere"},
        {"host", "--name", "A", "--max-players", "0"},
        {"host", "--name", "A", "--pilots", "-1"},
        {"host", "--name", "A", "--around", "91,0"},
        {"host", "--name", "A", "--around", "47"},
        {"host", "--name", "A", "--for", "-1"},
        {"host", "--name", "A", "--speed", "2"}, // of what?
        {"host", "--replay", "A", "--speed", "0"},
        {"host", "--replay", "A", "--speed", "61"},
        {"host", "--replay", "A", "--pilots", "2"},
        {"host", "--replay", "A", "--around", "47,8"},
        {"host", "--replay", "A", "--seed", "2"},
        {"host", "--name", "A", "--pilots", "20"}, // with room for seven
        {"host", "--name", "A", "--pilots", "3", "--max-players", "3"},
        {"join", "--broadcast", "x"},
        {"join", "--address", "::1"},
        {"join", "--address", "host.example:47624"},
        {"join", "--admit-within", "0"},
        {"sessions", "--timeout", "0"},
        {"sessions", "--timeout", "soon"},
    };
    for (const auto& arguments : wrong)
        EXPECT_EQ(RunCli(arguments).Status, 2) << arguments.back();
}
} // namespace
} // namespace corvane
