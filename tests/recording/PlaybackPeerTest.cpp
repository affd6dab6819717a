#include "recording/PlaybackPeer.h"

#include "tests/recording/SampleRecording.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using test::Joined;
using test::Left;
using test::Renamed;
using test::Said;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const AnnounceMessage Announce7{MessageType::ObserverAnnounce, 7};
const AircraftInfoMessage Aircraft{"Jet Plane", "Learjet"};

class PlaybackPeers : public testing::Test {
protected:
    void Open(const std::vector<test::SampleRecord>& records, std::int64_t beginMs = 0)
    {
        Source = test::RecordingOf(records);
        ASSERT_NE(Source, nullptr);
        Peer = std::make_unique<PlaybackPeer>(
            [this, beginMs]() -> Result<PlaybackChoice> {
                return PlaybackChoice{Source, beginMs};
            },
            Clock);
        ASSERT_TRUE(Peer->InitializeConnection(PlaybackConnectionAddress));
        const auto sessions = Peer->GetDPEnumSessions(0, EnumSessionsAvailable);
        ASSERT_TRUE(sessions);
        ASSERT_EQ(sessions->size(), 1U);
        Entry = sessions->front();
        ASSERT_TRUE(Peer->Open(Entry, OpenJoin));
        const auto id = Peer->CreatePlayer("**Viewer", "Player");
        ASSERT_TRUE(id);
        Viewer = *id;
    }
    void Begin()
    {
        Send(AllPlayers, MessageType::IdentifyRequest);
        static_cast<void>(Received());
    }
    void Send(PlayerId to, MessageType type)
    {
        EXPECT_TRUE(Peer->Send(Viewer, to, SendGuaranteed, EncodeMessage(PlainMessage{type})));
    }
    /// Everything that waits, as sender and bytes.
    std::vector<std::pair<PlayerId, Bytes>> Received()
    {
        std::vector<std::pair<PlayerId, Bytes>> messages;
        const auto count = Peer->GetMessageCount(Viewer);
        for (std::int32_t i = 0; count && i < *count; ++i) {
            const auto message = Peer->Receive();
            EXPECT_TRUE(message);
            EXPECT_EQ(message->To, Viewer);
            messages.emplace_back(message->From, message->Content);
        }
        EXPECT_FALSE(Peer->Receive());
        return messages;
    }
    std::vector<std::pair<PlayerId, std::string>> Members()
    {
        std::vector<std::pair<PlayerId, std::string>> members;
        const auto listed = Peer->GetDPEnumPlayers();
        EXPECT_TRUE(listed);
        for (const SessionMember& member : *listed)
            members.emplace_back(member.Id, member.ShortName);
        return members;
    }

    std::int64_t Now = 0;
    PlaybackClock Clock{[this] { return Now; }};
    std::shared_ptr<const Recording> Source;
    std::unique_ptr<PlaybackPeer> Peer;
    SessionEntry Entry;
    PlayerId Viewer = 0;
};

TEST_F(PlaybackPeers, OfferTheSessionAsItBegan)
{
    Open({Joined(0, 5, "**A"), Joined(0, 7, "N1"), Joined(1, 8, "N2")});
    EXPECT_EQ(Entry.Name, "Traffic");
    EXPECT_EQ(Entry.CurrentPlayers, 2);
    EXPECT_EQ(Entry.MaxPlayers, 8);
    EXPECT_EQ(Entry.Flags, 68U);
    EXPECT_THAT(Members(), ElementsAre(Pair(5, "**A"), Pair(7, "N1"), Pair(1, "**Viewer")));
    EXPECT_FALSE(Peer->Open(Entry, OpenJoin));
    EXPECT_FALSE(Peer->CreatePlayer("**Second", "Player"));
    EXPECT_FALSE(Peer->GetMessageCount(7)) << "a recorded member is not the viewer";
    EXPECT_FALSE(Peer->Send(7, AllPlayers, SendGuaranteed, EncodeMessage(ChatTextMessage{"fake"})));
}

TEST_F(PlaybackPeers, GiveTheViewerAnIdThatNobodyEverHas)
{
    Open({Joined(0, 1, "N1"), Joined(0, -3, "N2"), Joined(9, 2, "N3"), Left(10, 2), Said(11, 3, Announce7)});
    EXPECT_EQ(Viewer, 4); // 5 recorded it, and 3 spoke without having joined
}

TEST_F(PlaybackPeers, AdmitTheViewerAndStandStillUntilItsRadarOpens)
{
    Open({Joined(0, 7, "N1"), Said(0, 7, Announce7), Said(0, 7, Aircraft)});
    Send(AllPlayers, MessageType::JoinRequest);
    Now += 60000;
    EXPECT_THAT(Received(), ElementsAre(Pair(5, EncodeMessage(AnnounceMessage{MessageType::PilotAnnounce, Viewer}))));
    Send(AllPlayers, MessageType::IdentifyRequest);
    EXPECT_THAT(Received(), ElementsAre(Pair(7, EncodeMessage(Announce7)), Pair(7, EncodeMessage(Aircraft)),
                                        Pair(5, EncodeMessage(AnnounceMessage{MessageType::PilotAnnounce, 5})),
                                        Pair(7, EncodeMessage(Announce7))));
    Send(7, MessageType::AircraftInfoRequest);
    Send(5, MessageType::AircraftInfoRequest); // has none
    Send(7, MessageType::ChatText);
    EXPECT_THAT(Received(), ElementsAre(Pair(7, EncodeMessage(Aircraft))));
}

TEST_F(PlaybackPeers, DeliverEveryMessageAtItsTime)
{
    for (const int speed : {1, 2, 5, 10, 30, 60}) {
        SCOPED_TRACE(speed);
        Now = 0;
        Clock.SetSpeed(speed);
        Open({Joined(0, 7, "N1"), Said(static_cast<std::uint32_t>(100 * speed), 7, ChatTextMessage{"due"}),
              Said(static_cast<std::uint32_t>(100 * speed + 1), 7, ChatTextMessage{"a moment later"})});
        Begin();
        Now = 99;
        EXPECT_THAT(Received(), IsEmpty());
        Now = 100;
        EXPECT_THAT(Received(), ElementsAre(Pair(7, EncodeMessage(ChatTextMessage{"due"}))));
        Clock.SetPaused(true);
        Now = 50000;
        EXPECT_THAT(Received(), IsEmpty());
        Clock.SetPaused(false);
        EXPECT_THAT(Received(), IsEmpty());
        Now += 1;
        EXPECT_THAT(Received(), ElementsAre(Pair(7, EncodeMessage(ChatTextMessage{"a moment later"}))));
        ASSERT_TRUE(Peer->Close());
    }
}

TEST_F(PlaybackPeers, FollowTheMembers)
{
    Open({Joined(0, 7, "N1"), Renamed(100, 7, "N1 heavy"), Joined(200, 8, "N2"),
          Said(250, 8, AnnounceMessage{MessageType::PilotAnnounce, 8}), Left(300, 7), Left(300, 5), Left(300, 99),
          Joined(400, 7, "N1 again")});
    Begin();
    Now = 100;
    EXPECT_THAT(Members(), ElementsAre(Pair(5, "**A"), Pair(7, "N1 heavy"), Pair(1, "**Viewer")));
    Now = 300;
    EXPECT_THAT(Members(), ElementsAre(Pair(5, "**A"), Pair(8, "N2"), Pair(1, "**Viewer")))
        << "whoever recorded stays to the end";
    EXPECT_EQ(*Peer->GetPlayerFriendlyName(7), "N1 heavy") << "messages from it may be waiting";
    EXPECT_FALSE(Peer->GetPlayerFriendlyName(99));
    Now = 400;
    EXPECT_THAT(Members(), ElementsAre(Pair(5, "**A"), Pair(7, "N1 again"), Pair(8, "N2"), Pair(1, "**Viewer")));
}

struct BeginningCase {
    const char* Name;
    std::int64_t BeginMs;
    std::int64_t PositionMs;
    std::vector<std::pair<PlayerId, std::string>> Members;
    std::vector<std::pair<PlayerId, Message>> Heard; ///< before the members introduce themselves
};
class PlaybackBeginnings : public PlaybackPeers, public testing::WithParamInterface<BeginningCase> {};

const PositionMessage Low{
    .Type = MessageType::PositionFull, .Latitude = 47, .Longitude = -122, .AltitudeFt = 1000, .TrueHeading = 90};
const PositionMessage High{
    .Type = MessageType::PositionFull, .Latitude = 48, .Longitude = -122, .AltitudeFt = 9000, .TrueHeading = 90};

TEST_P(PlaybackBeginnings, TellWhatHeldThen)
{
    Open({Joined(0, 7, "N1"), Joined(0, 8, "N2"), Said(0, 7, Aircraft), Said(0, 8, Aircraft), Said(100, 7, Low),
          Said(200, 8, ChatTextMessage{"leaving"}), Said(200, 8, Low), Left(250, 8), Joined(300, 2, "N3"),
          Renamed(300, 7, "N1 heavy"), Said(300, 7, High), Said(400, 7, Low)},
         GetParam().BeginMs);
    EXPECT_EQ(Entry.CurrentPlayers, static_cast<std::int32_t>(GetParam().Members.size()));
    auto members = GetParam().Members;
    members.emplace_back(Viewer, "**Viewer");
    Now += 5000;
    EXPECT_THAT(Members(), testing::ElementsAreArray(members)) << "before its radar opens";
    EXPECT_EQ(Clock.PositionMs(), GetParam().PositionMs);
    Send(AllPlayers, MessageType::IdentifyRequest);
    auto heard = Received();
    ASSERT_GE(heard.size(), GetParam().Heard.size());
    heard.resize(GetParam().Heard.size());
    for (std::size_t i = 0; i < heard.size(); ++i) {
        EXPECT_EQ(heard[i].first, GetParam().Heard[i].first);
        EXPECT_EQ(heard[i].second, EncodeMessage(GetParam().Heard[i].second)) << "message " << i;
    }
}

const ChatTextMessage Leaving{"leaving"};
INSTANTIATE_TEST_SUITE_P(
    Playback, PlaybackBeginnings,
    testing::Values(
        BeginningCase{"BeforeTheFirst", -1, 0, {{5, "**A"}, {7, "N1"}, {8, "N2"}}, {{7, Aircraft}, {8, Aircraft}}},
        BeginningCase{
            "Between", 150, 150, {{5, "**A"}, {7, "N1"}, {8, "N2"}}, {{7, Aircraft}, {8, Aircraft}, {7, Low}}},
        BeginningCase{"AfterOneLeft", 260, 260, {{5, "**A"}, {7, "N1"}}, {{7, Aircraft}, {7, Low}, {8, Leaving}}},
        BeginningCase{"AtRecords", // which are played, as ever
                      300,
                      300,
                      {{5, "**A"}, {7, "N1 heavy"}, {2, "N3"}},
                      {{7, Aircraft}, {7, Low}, {8, Leaving}, {7, High}}},
        BeginningCase{"AfterTheLast",
                      999999,
                      400,
                      {{5, "**A"}, {7, "N1 heavy"}, {2, "N3"}},
                      {{7, Aircraft}, {8, Leaving}, {7, High}, {7, Low}}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(PlaybackPeers, LeaveOutWhatWouldEndTheSession)
{
    std::vector<test::SampleRecord> records{Joined(0, 7, "N1")};
    for (const MessageType type : {MessageType::HostLeft, MessageType::RemovedByHost, MessageType::JoinRefused,
                                   MessageType::ObserverJoinRefused})
        records.push_back(Said(1, 7, PlainMessage{type}));
    records.push_back({1, RecordKind::MemberSpoke, 7, {1, 2, 3}});
    records.push_back({1, RecordKind::MemberSpoke, 7, EncodeMessage(PlainMessage{MessageType::PositionFull})});
    records.push_back(Said(1, 99, ChatTextMessage{"from nobody"}));
    records.push_back(Said(2, 7, ChatTextMessage{"still here"}));
    Open(records);
    Begin();
    Now = 10;
    EXPECT_THAT(Received(), ElementsAre(Pair(7, EncodeMessage(ChatTextMessage{"still here"}))));
}

TEST_F(PlaybackPeers, TellTheClockWhatPlays)
{
    EXPECT_FALSE(Clock.IsOpen());
    Open({Joined(0, 7, "N1"), Left(4321, 7)});
    EXPECT_TRUE(Clock.IsOpen());
    EXPECT_EQ(Clock.LengthMs(), 4321);
    ASSERT_TRUE(Peer->Close());
    EXPECT_FALSE(Clock.IsOpen());
    EXPECT_FALSE(Peer->GetMessageCount(Viewer));
    EXPECT_FALSE(Peer->GetDPEnumPlayers());
}
} // namespace
} // namespace corvane
