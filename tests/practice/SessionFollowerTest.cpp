#include "follow/SessionFollower.h"

#include "follow/HostWatch.h"
#include "net/memory/InMemoryNetwork.h"
#include "practice/PracticeSession.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>

namespace corvane {
namespace {
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// Writes down what happens, and keeps the table that a reader of the events would have.
class EventDiary final : public SessionEvents {
public:
    void Joined(PlayerId ownPlayerId, std::string_view session) override
    {
        OwnId = ownPlayerId;
        Session = session;
    }
    void PlayerAdded(const PlayerRecord& player) override { Players[player.PlayerId] = player; }
    void PlayerUpdated(const PlayerRecord& player) override { Players[player.PlayerId] = player; }
    void PlayerRemoved(const PlayerRecord& player) override { Players.erase(player.PlayerId); }
    void Chat(std::string_view from, std::string_view text) override
    {
        Lines.push_back(std::string(from) + ": " + std::string(text));
    }
    void Notice(MessageIcon /*icon*/, std::string_view text) override { Notices.emplace_back(text); }
    void Disconnected(std::string_view reason) override { Reasons.emplace_back(reason); }

    [[nodiscard]] const PlayerRecord* Find(std::string_view name) const
    {
        const auto found = std::find_if(Players.begin(), Players.end(),
                                        [name](const auto& entry) { return entry.second.Name == name; });
        return found == Players.end() ? nullptr : &found->second;
    }

    PlayerId OwnId = 0;
    std::string Session;
    std::map<PlayerId, PlayerRecord> Players;
    std::vector<std::string> Lines;
    std::vector<std::string> Notices;
    std::vector<std::string> Reasons;
};

/// A hosted practice session that is watched from its host's place, and a member that follows it from outside.
class FollowedPractice : public testing::Test {
protected:
    void Host(PracticeOptions options)
    {
        options.PeerForEach = false;
        options.Observers = 0;
        options.ComeAndGo = false;
        auto created = PracticeSession::Create(Watch, test::MakeScene(), *Grid, std::move(options));
        ASSERT_TRUE(created) << created.error().Text();
        Practice = *std::move(created);
        const PracticeMember& host = *Practice->Host();
        Watch.Begin({host.SharePeer(), host.Id(), host.Name(), host.IsPilot(), Practice->Entry()}, NowMs);
    }
    Result<void> Join(FollowOptions options)
    {
        Member = std::make_unique<SessionFollower>(Provider, *Grid, Joined, std::move(options));
        return Member->Join();
    }
    /// Lets seconds pass; returns how following ended, if it did.
    Result<void> Live(int seconds)
    {
        Result<void> going;
        for (int i = 0; i < seconds * 10 && going; ++i) {
            NowMs += 100;
            Practice->Advance(static_cast<double>(NowMs) / 1000);
            EXPECT_TRUE(Watch.Tick(NowMs));
            if (Member)
                going = Member->Tick(NowMs);
        }
        return going;
    }

    InMemoryNetwork Network;
    InMemoryProvider Provider{Network};
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    EventDiary Hosted;
    EventDiary Joined;
    HostWatch Watch{Provider, *Grid, Hosted};
    std::unique_ptr<PracticeSession> Practice;
    std::unique_ptr<SessionFollower> Member;
    std::int64_t NowMs = 0;
};

TEST_F(FollowedPractice, ShowsBothSidesTheSameMembers)
{
    Host({.Pilots = 4, .SessionName = "Evening"});
    ASSERT_TRUE(Join({.Nickname = "Tower"}));
    ASSERT_TRUE(Live(6));
    EXPECT_EQ(Hosted.Session, "Evening");
    EXPECT_EQ(Joined.Session, "Evening");
    EXPECT_THAT(Joined.Notices, ElementsAre("Connected to FS session!"));
    ASSERT_THAT(Joined.Players, SizeIs(5));
    ASSERT_THAT(Hosted.Players, SizeIs(5));
    EXPECT_EQ(Joined.Players.at(Joined.OwnId).Name, "**Tower");
    for (const auto& [id, player] : Joined.Players) {
        EXPECT_EQ(Hosted.Players.at(id).Name, player.Name);
        EXPECT_EQ(Hosted.Players.at(id).Latitude, player.Latitude) << player.Name; // the host's own flight too
        EXPECT_EQ(player.Latitude == 0, id == Joined.OwnId);
        EXPECT_EQ(player.AircraftTitle.empty(), id == Joined.OwnId);
    }
}

TEST_F(FollowedPractice, TellsEachLineOfChatOnceOnBothSides)
{
    Host({.Pilots = 3});
    ASSERT_TRUE(Join({}));
    ASSERT_TRUE(Live(2));
    const std::string pilot = Practice->Members().back()->Name();
    Member->Say(pilot + " say altitude");
    ASSERT_TRUE(Live(3));
    for (const EventDiary* diary : {&Hosted, &Joined}) {
        EXPECT_EQ(std::ranges::count(diary->Lines, "**ATC Controller: " + pilot + " say altitude"), 1);
        EXPECT_THAT(diary->Lines, Contains(HasSubstr(pilot + ": "))); // the answer
    }
    const std::string host = Practice->Host()->Name();
    Member->Say(host + " say altitude");
    ASSERT_TRUE(Live(3));
    EXPECT_THAT(Hosted.Lines, Contains(HasSubstr(host + ": ")));
}

TEST_F(FollowedPractice, TellsWithinSecondsWhoComesGoesAndChangesNames)
{
    Host({.Pilots = 3});
    ASSERT_TRUE(Join({}));
    ASSERT_TRUE(Live(2));
    Practice->Members().back()->Leave();
    ASSERT_TRUE(Live(2));
    EXPECT_THAT(Joined.Players, SizeIs(3));
    EXPECT_THAT(Hosted.Players, SizeIs(3));
    Practice->Members().front()->Rename("Speedbird 1");
    ASSERT_TRUE(Live(31));
    for (const EventDiary* diary : {&Hosted, &Joined}) {
        EXPECT_NE(diary->Find("Speedbird 1"), nullptr);
        EXPECT_THAT(diary->Players, SizeIs(3));
    }
    Member->Leave("enough");
    Member.reset();
    ASSERT_TRUE(Live(2));
    EXPECT_THAT(Joined.Reasons, ElementsAre("enough"));
    EXPECT_THAT(Hosted.Players, SizeIs(2));
}

TEST_F(FollowedPractice, IsRefusedInTheProgramsWords)
{
    Host({.Pilots = 2, .SessionName = "Locked", .Password = "sesame"});
    struct {
        FollowOptions Options;
        const char* Notice;
    } const cases[] = {
        {{.Password = "other"}, "Failed to join game. Try to locate session again."},
        {{.SessionName = "Elsewhere"}, "Please select a FS multiplayer session."},
        {{.Nickname = ""}, "Please write a nickname."},
    };
    for (const auto& refused : cases) {
        Joined.Notices.clear();
        EXPECT_FALSE(Join(refused.Options));
        EXPECT_THAT(Joined.Notices, ElementsAre(refused.Notice));
    }
    EXPECT_TRUE(Join({.Password = "sesame"}));
    EXPECT_TRUE(Live(1));
    EXPECT_TRUE(Member->IsJoined());
}

TEST_F(FollowedPractice, SaysThatItWaitsAndGivesUpWhenNobodyAdmitsIt)
{
    Host({.Pilots = 2});
    ASSERT_TRUE(Join({.AdmitWithinS = 45}));
    const auto wait = [this](int seconds) { // the host has crashed
        Result<void> going;
        for (int i = 0; i < seconds * 10 && going; ++i)
            going = Member->Tick(NowMs += 100);
        return going;
    };
    ASSERT_TRUE(wait(29));
    EXPECT_THAT(Joined.Notices, IsEmpty());
    ASSERT_TRUE(wait(15));
    EXPECT_THAT(Joined.Notices, ElementsAre(HasSubstr("waiting for the host to admit")));
    const Result<void> end = wait(2);
    ASSERT_FALSE(end);
    EXPECT_THAT(end.error().Text(), HasSubstr("did not admit this member within 45 seconds"));
    EXPECT_THAT(Joined.Reasons, SizeIs(1));
}

TEST_F(FollowedPractice, EndsWithTheSession)
{
    Host({.Pilots = 2, .MigrateHost = false});
    ASSERT_TRUE(Join({}));
    ASSERT_TRUE(Live(2));
    Practice->End();
    NowMs += 1000;
    EXPECT_FALSE(Member->Tick(NowMs));
    EXPECT_THAT(Joined.Reasons, SizeIs(1));
    EXPECT_THAT(Joined.Notices.back(), HasSubstr("closes multiplayer session"));
}

TEST_F(FollowedPractice, SurvivesWhateverAMemberSendsToTheHost)
{
    Host({.Pilots = 2});
    const auto stranger = Provider.DirectPlayCreate();
    ASSERT_TRUE((*stranger)->InitializeConnection(InMemoryProvider::ConnectionAddress));
    const auto sessions = (*stranger)->GetDPEnumSessions(0, EnumSessionsPasswordRequired);
    ASSERT_TRUE((*stranger)->Open(sessions->front(), OpenJoin));
    const auto id = (*stranger)->CreatePlayer("Vandal", "Player");
    const Bytes position = EncodeMessage(PositionMessage{.Type = MessageType::PositionFull});
    const Bytes messages[] = {
        {},
        {1},
        Bytes(position.begin(), position.begin() + 12),
        EncodeMessage(PlainMessage{MessageType::RemovedByHost}),
        EncodeMessage(PlainMessage{MessageType::HostLeft}),
        EncodeMessage(AnnounceMessage{MessageType::PilotAnnounce, 77}),
        position, // from somebody who is gone when it is read
    };
    for (const Bytes& message : messages)
        ASSERT_TRUE((*stranger)->Send(*id, AllPlayers, SendGuaranteed, message));
    ASSERT_TRUE((*stranger)->DestroyPlayer(*id));
    EXPECT_TRUE(Live(3));
    EXPECT_THAT(Hosted.Notices, IsEmpty());
    EXPECT_THAT(Hosted.Reasons, IsEmpty());
}
} // namespace
} // namespace corvane
