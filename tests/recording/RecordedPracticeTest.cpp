#include "practice/PracticeSession.h"
#include "recording/PlaybackPeer.h"
#include "recording/RecordingPeer.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/practice/Controller.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace corvane {
namespace {
class PlaybackFactory final : public SessionPeerFactory {
public:
    PlaybackFactory(std::filesystem::path file, PlaybackClock& clock, std::int64_t beginMs)
        : m_file(std::move(file)), m_clock(clock), m_beginMs(beginMs)
    {
    }

    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override
    {
        const auto source = [file = m_file, beginMs = m_beginMs]() -> Result<PlaybackChoice> {
            auto recording = ReadRecording(file);
            if (!recording)
                return recording.error();
            return PlaybackChoice{std::make_shared<const Recording>(*std::move(recording)), beginMs};
        };
        return std::unique_ptr<SessionPeer>(std::make_unique<PlaybackPeer>(source, m_clock));
    }

private:
    std::filesystem::path m_file;
    PlaybackClock& m_clock;
    std::int64_t m_beginMs;
};

/// The table's entries but one, by id.
std::vector<PlayerRecord> Sorted(const PlayerTable& players, PlayerId without)
{
    std::vector<PlayerRecord> sorted(players.Players().begin(), players.Players().end());
    std::erase_if(sorted, [without](const PlayerRecord& player) { return player.PlayerId == without; });
    std::sort(sorted.begin(), sorted.end(),
              [](const PlayerRecord& a, const PlayerRecord& b) { return a.PlayerId < b.PlayerId; });
    return sorted;
}

/// One second of a controller's program, at a second of its clock.
void Second(test::Controller& atc, int second)
{
    atc.PumpTick();
    if (second % 30 == 0)
        atc.UpkeepTick();
}

TEST(RecordedPractice, ShowsTheSamePlayersAtEveryMoment)
{
    constexpr int Before = 45; // seconds of the session before the recording: it begins in the middle
    constexpr int Length = 900;
    const TemporaryFolder folder;
    const auto file = folder.Path() / "practice.cvr";
    std::int64_t nowMs = 0;
    std::vector<std::vector<PlayerRecord>> shown; // after each second
    std::vector<std::string> chat;
    {
        SessionRecorder recorder([&nowMs] { return nowMs; });
        InMemoryNetwork network;
        InMemoryProvider provider(network);
        RecordingPeerFactory factory(provider, recorder);
        const auto grid = std::make_unique<MagVarGrid>();
        auto practice = PracticeSession::Create(provider, test::MakeScene(), *grid, {.Seed = 3, .Pilots = 12});
        ASSERT_TRUE(practice);
        test::Controller atc(factory);
        atc.Ask();
        (*practice)->Advance(0);
        ASSERT_TRUE(atc.HandshakeTick());
        std::set<std::string> names;
        for (int second = 1; second <= Before + Length; ++second) {
            nowMs += 1000;
            (*practice)->Advance(static_cast<double>(second));
            Second(atc, second);
            if (second == Before) {
                atc.Chat.clear();
                ASSERT_TRUE(recorder.Start(file));
            }
            if (second == Before + 100)
                atc.Say(atc.Players.Players().back().Name + " say heading");
            if (second >= Before)
                shown.push_back(Sorted(atc.Players, 0));
            for (const PlayerRecord& player : shown.empty() ? std::vector<PlayerRecord>() : shown.back())
                names.insert(player.Name);
        }
        ASSERT_FALSE(recorder.TakeFailure());
        chat = atc.Chat;
        EXPECT_GT(names.size(), shown.front().size()) << "members came, went or changed their names";
        EXPECT_FALSE(chat.empty());
    }

    for (const int begin : {0, 15, 435, 885, Length}) { // the table was brought up to date there
        SCOPED_TRACE(begin);
        PlaybackClock clock([&nowMs] { return nowMs; });
        PlaybackFactory factory(file, clock, std::int64_t{begin} * 1000);
        test::Controller viewer(factory);
        viewer.Ask();
        ASSERT_TRUE(viewer.HandshakeTick());
        Second(viewer, Before);
        for (auto second = static_cast<std::size_t>(begin); second < shown.size(); ++second) {
            ASSERT_EQ(Sorted(viewer.Players, viewer.Session.OwnPlayerId), shown[second]) << "after second " << second;
            nowMs += 1000;
            Second(viewer, Before + static_cast<int>(second) + 1);
        }
        EXPECT_FALSE(viewer.Disconnected);
        // What the controller said itself, its own window showed as it was sent; its viewer hears it.
        std::erase_if(viewer.Chat, [](const std::string& line) { return line.starts_with("**ATC Controller: "); });
        EXPECT_EQ(viewer.Chat, chat);
    }
}
} // namespace
} // namespace corvane
