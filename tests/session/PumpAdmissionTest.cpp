#include "tests/session/PumpFixture.h"

#include <gmock/gmock.h>

// Who is let in, who hosts, and how a session ends: what the pump makes of it.

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* RemovedBox = "i: The host had removed you from the session, Corvane closes multiplayer session.";
constexpr const char* HostingBox = "i: The original host had left the session, Corvane is now hosting the session.";
constexpr const char* LostBox = "i: The FS multiplayer connection was lost, Corvane closes multiplayer session.";

TEST_F(PumpTest, NothingButChatCountsBeforeTheHostsAdmission)
{
    Session.SessionJoined = false;
    Say(HostMember, PlainMessage{MessageType::IdentifyRequest});
    Say(HostMember, AnnounceMessage{MessageType::PilotAnnounce, HostMember.Id});
    HostMember.SendBytes(Session.OwnPlayerId, {3, 0x10, 0, 0, 4, 0, 0, 0}); // cut short, but never read
    Pump.PumpTick();
    EXPECT_THAT(HostMember.Received(), IsEmpty());
    EXPECT_EQ(Players.PlayerCount(), 1U);
    EXPECT_EQ(Disconnects, 0);
}

struct AdmissionCase {
    const char* Name;
    std::size_t Entries;
    bool Host;
    bool InTable;
    MessageType Request;
    std::vector<std::string> Reply;
};
class Admissions : public PumpTest, public testing::WithParamInterface<AdmissionCase> {};
TEST_P(Admissions, AreTheHostsToGive)
{
    const AdmissionCase& c = GetParam();
    const auto asker = Joined("Asker");
    if (c.Host) {
        Say(HostMember, PlainMessage{MessageType::HostLeft});
        Players.Append("Host", HostMember.Id, PilotRole); // so that more than one entry is left
        Pump.PumpTick();
        ASSERT_TRUE(Pump.IsSessionHost());
    }
    Players.Empty();
    if (c.InTable)
        Players.Append("Asker", asker->Id, PilotRole);
    while (Players.PlayerCount() < c.Entries)
        Players.Append("Somebody", 1000, PilotRole);
    Say(*asker, PlainMessage{c.Request});
    Pump.PumpTick();
    EXPECT_EQ(asker->Received(), c.Reply);
    EXPECT_EQ(Players.PlayerCount(), c.Entries) << "a member enters by its own announcement";
}
INSTANTIATE_TEST_SUITE_P(
    MessagePump, Admissions,
    testing::Values(
        AdmissionCase{"EightOfEight", 8, true, false, MessageType::JoinRequest, {"PilotAnnounce"}},
        AdmissionCase{"NineOfEight", 9, true, false, MessageType::JoinRequest, {"JoinRefused"}},
        AdmissionCase{"AlreadyThere", 2, true, true, MessageType::JoinRequest, {"JoinRefused"}},
        AdmissionCase{"Observer", 8, true, false, MessageType::ObserverJoinRequest, {"ObserverAnnounce"}},
        AdmissionCase{"OneObserverTooMany", 9, true, false, MessageType::ObserverJoinRequest, {"ObserverJoinRefused"}},
        AdmissionCase{"NotTheHost", 1, false, false, MessageType::JoinRequest, {}}),
    [](const auto& row) { return std::string(row.param.Name); });

struct HostLeftCase {
    const char* Name;
    bool OwnEntry;
    int Others;
    const char* Box; ///< empty for none
    bool Hosting;
    bool Over;
};
class HostChanges : public PumpTest, public testing::WithParamInterface<HostLeftCase> {};
TEST_P(HostChanges, DependOnTheEntriesLeft)
{
    const HostLeftCase& c = GetParam();
    Players.Empty();
    if (c.OwnEntry)
        Players.Append("**ATC", Session.OwnPlayerId, PilotRole);
    Players.Append("Host", HostMember.Id, PilotRole); // to be pruned
    std::vector<std::unique_ptr<Member>> others;
    for (int i = 0; i < c.Others; ++i) {
        others.push_back(Joined("Other"));
        Players.Append("Other", others.back()->Id, PilotRole);
    }
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(HostMember, ChatTextMessage{"Bye"});
    EXPECT_TRUE(HostMember.Peer->Close());
    Pump.PumpTick();
    EXPECT_EQ(Boxes.Shown, *c.Box == '\0' ? std::vector<std::string>() : std::vector<std::string>{c.Box});
    EXPECT_EQ(Pump.IsSessionHost(), c.Hosting);
    EXPECT_EQ(Disconnects, c.Over ? 1 : 0);
    EXPECT_EQ(Chat.size(), c.Over ? 0U : 1U) << "the messages behind it are handled unless the session is over";
}
INSTANTIATE_TEST_SUITE_P(MessagePump, HostChanges,
                         testing::Values(HostLeftCase{"OwnEntryAlone", true, 0, LostBox, false, true},
                                         HostLeftCase{"AnotherAlone", false, 1, "", false, false},
                                         HostLeftCase{"NoEntry", false, 0, HostingBox, true, false},
                                         HostLeftCase{"Two", true, 1, HostingBox, true, false},
                                         HostLeftCase{"Three", true, 2, HostingBox, true, false}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST_F(PumpTest, RemovalEndsTheSession)
{
    Say(HostMember, PlainMessage{MessageType::RemovedByHost});
    Say(HostMember, ChatTextMessage{"And stay out"});
    Pump.PumpTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre(RemovedBox));
    EXPECT_EQ(Disconnects, 1);
    EXPECT_THAT(Chat, IsEmpty());
    EXPECT_EQ(Players.PlayerCount(), 0U);
    Pump.PumpTick(); // without an own player: nothing
    Pump.UpkeepTick();
    EXPECT_EQ(Disconnects, 1);
}

/// What becomes of a controller whom the transport has made the host.
struct TakeOverCase {
    const char* Name;
    bool TakesOver;
    bool HostSaysSo; ///< before it goes
    std::vector<std::string> Boxes;
    std::vector<std::string> Reply;
};
class TakeOvers : public PumpTest, public testing::WithParamInterface<TakeOverCase> {};
TEST_P(TakeOvers, HappenWhereWantedWhenTheHostIsGoneWithoutAWord)
{
    const TakeOverCase& c = GetParam();
    constexpr int Ticks = MessagePump::TakeOverMs / PumpIntervalMs;
    Session.TakesOver = c.TakesOver;
    const auto asker = Joined("Asker");
    const auto other = Joined("Other");
    Players.Append("Other", other->Id, PilotRole);
    for (int i = 0; i < 2 * Ticks; ++i)
        Pump.PumpTick();
    EXPECT_THAT(Boxes.Shown, IsEmpty()) << "the host is there";
    if (c.HostSaysSo)
        Say(HostMember, PlainMessage{MessageType::HostLeft});
    ASSERT_TRUE(HostMember.Peer->Close());
    for (int i = 0; i < Ticks - 1; ++i)
        Pump.PumpTick();
    EXPECT_EQ(Pump.IsSessionHost(), c.HostSaysSo);
    Pump.PumpTick();
    Say(*asker, PlainMessage{MessageType::JoinRequest});
    Pump.PumpTick();
    EXPECT_EQ(Boxes.Shown, c.Boxes);
    EXPECT_EQ(asker->Received(), c.Reply);
}
INSTANTIATE_TEST_SUITE_P(
    MessagePump, TakeOvers,
    testing::Values(TakeOverCase{"NotWanted", false, false, {}, {}},
                    TakeOverCase{"Wanted",
                                 true,
                                 false,
                                 {"i: The original host is gone without a word, Corvane is now hosting the session."},
                                 {"PilotAnnounce"}},
                    TakeOverCase{"ByTheRules", true, true, {HostingBox}, {"PilotAnnounce"}}),
    [](const auto& row) { return std::string(row.param.Name); });

struct BrokenCase {
    const char* Name;
    const char* Operation;
    Bytes Message;
};
class BrokenSessions : public PumpTest, public testing::WithParamInterface<BrokenCase> {};
TEST_P(BrokenSessions, CountAsRemoval)
{
    Players.Append("Host", HostMember.Id, PilotRole);
    HostMember.SendBytes(Session.OwnPlayerId, GetParam().Message);
    FailingOperation = GetParam().Operation;
    Pump.PumpTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre(RemovedBox));
    EXPECT_EQ(Disconnects, 1);
    EXPECT_TRUE(Pump.LastError());
}
/// The same with the option: what cannot be read is passed over and counted, what the session refuses still ends it.
TEST_P(BrokenSessions, AreForgivenTheirMessages)
{
    Players.Append("Host", HostMember.Id, PilotRole);
    Pump.PassMalformed(true);
    HostMember.SendBytes(Session.OwnPlayerId, GetParam().Message);
    HostMember.Send(Session.OwnPlayerId, ChatTextMessage{"After it"});
    FailingOperation = GetParam().Operation;
    Pump.PumpTick();
    const bool malformed = FailingOperation.empty();
    EXPECT_EQ(Disconnects, malformed ? 0 : 1);
    EXPECT_EQ(Pump.MalformedCount(), malformed ? 1 : 0);
    EXPECT_EQ(Chat.size(), malformed ? 1U : 0U);
}
const Bytes SomeChat = EncodeMessage(ChatTextMessage{"Hello"});
INSTANTIATE_TEST_SUITE_P(
    MessagePump, BrokenSessions,
    testing::Values(BrokenCase{"Count", "GetMessageCount", SomeChat}, BrokenCase{"Receive", "Receive", SomeChat},
                    BrokenCase{"Name", "GetPlayerFriendlyName", SomeChat},
                    BrokenCase{"Answer", "Send", EncodeMessage(PlainMessage{MessageType::IdentifyRequest})},
                    BrokenCase{"Members", "GetDPEnumPlayers", EncodeMessage(PlainMessage{MessageType::HostLeft})},
                    BrokenCase{"HeaderCutShort", "", {1, 2, 3, 4, 5, 6, 7}}, BrokenCase{"Empty", "", {}},
                    BrokenCase{"AnnounceCutShort", "", {3, 0x10, 0, 0, 4, 0, 0, 0, 1, 2, 3}},
                    BrokenCase{"PositionCutShort", "", {0x19, 0x10, 0, 0, 50, 0, 0, 0, 1}},
                    BrokenCase{"TitleCutShort", "", {0x0E, 0x10, 0, 0, 255, 255, 255, 127, 0, 0, 65}},
                    BrokenCase{"ChatCutShort", "", {0x23, 0x10, 0, 0, 5, 0, 0, 0, 65}}),
    [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
