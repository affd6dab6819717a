#include "tests/session/PumpFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PumpTest, MembersEnterByAnnouncingThemselves)
{
    const auto pilot = Joined("Ann");
    const auto observer = Joined("Bob");
    Announce(*pilot);
    Announce(*observer, MessageType::ObserverAnnounce);
    Announce(*pilot); // again: nothing more
    Announce(*pilot, MessageType::ObserverAnnounce);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann", "Bob"));
    EXPECT_EQ(Players.Players()[1].Role, "player");
    EXPECT_EQ(Players.Players()[2].Role, "observer");
    EXPECT_EQ(Refreshes, 2);
    EXPECT_THAT(Changes, ElementsAre("+Ann", "+Bob"));
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(PumpTest, PositionsReachTheTableMagnetic)
{
    MagVar.Values[270 * 181 + 45 + 90] = 3641; // 20.0006 degrees east at 45 N 90 W
    const auto pilot = Joined("Ann");
    Say(*pilot, Position); // not in the table yet
    Announce(*pilot);
    Say(*pilot, Position);
    Pump.PumpTick();
    ASSERT_EQ(Players.PlayerCount(), 2U);
    PlayerRecord expected;
    expected.Name = "Ann";
    expected.PlayerId = pilot->Id;
    expected.Role = "player";
    expected.Longitude = -90;
    expected.Latitude = 45;
    expected.AltitudeFt = 3281;
    expected.MagHeading = 160;
    expected.GroundSpeedKt = 194;
    EXPECT_EQ(Players.Players()[1], expected);
    EXPECT_THAT(Changes, ElementsAre("+Ann", "~Ann"));
    PositionMessage shortOne = Position;
    shortOne.Type = MessageType::PositionShort;
    Say(*pilot, shortOne);
    Say(*pilot, AircraftInfoMessage{"Jet Plane", "B737"});
    Pump.PumpTick();
    expected.GroundSpeedKt = 0;
    expected.AircraftType = "Jet Plane";
    expected.AircraftTitle = "B737";
    EXPECT_EQ(Players.Players()[1], expected);
}

TEST_F(PumpTest, EveryEntryOfTheSenderIsUpdated)
{
    const auto pilot = Joined("Ann");
    Players.Append("Ann", pilot->Id, PilotRole);
    Players.Append("Another name", pilot->Id, PilotRole);
    Players.Append("Ann", 999, PilotRole);
    Players.Append("Ann", pilot->Id, ObserverRole);
    Say(*pilot, Position);
    Pump.PumpTick();
    std::vector<int> altitudes;
    for (const PlayerRecord& player : Players.Players())
        altitudes.push_back(player.AltitudeFt);
    EXPECT_THAT(altitudes, ElementsAre(0, 3281, 0, 0, 3281));
}

TEST_F(PumpTest, ARenamedMemberComesBackUnderItsNewName)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Pump.PumpTick();
    EXPECT_TRUE(pilot->Peer->SetPlayerName(pilot->Id, "Eve"));
    Say(*pilot, Position);
    Pump.PumpTick();
    EXPECT_EQ(Players.Players()[1].AltitudeFt, 0) << "it is not its entry any more";
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC"));
    EXPECT_THAT(pilot->Received(), ElementsAre("IdentifyRequest"));
    Announce(*pilot);
    Say(*pilot, Position);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Eve"));
    EXPECT_EQ(Players.Players()[1].AltitudeFt, 3281);
}

TEST_F(PumpTest, TheSameNameWithANewIdIsAnotherMember)
{
    auto first = Joined("Ann");
    Announce(*first);
    Pump.PumpTick();
    first.reset();
    const auto second = Joined("Ann");
    Announce(*second);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann", "Ann"));
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann"));
    EXPECT_EQ(Players.Players()[1].PlayerId, second->Id);
}

TEST_F(PumpTest, TheLastWordsOfOneThatLeftAreStillHeard)
{
    auto pilot = Joined("Ann");
    Say(*pilot, ChatTextMessage{"Good bye"});
    Say(*pilot, PlainMessage{MessageType::IdentifyRequest}); // its answer is lost in silence
    pilot.reset();
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Ann|Good bye"));
    EXPECT_EQ(Disconnects, 0);
}

TEST_F(PumpTest, UpkeepPrunesAndAsks)
{
    auto leaver = Joined("Leaver");
    const auto pilot = Joined("Pilot");
    const auto observer = Joined("Observer");
    Announce(*leaver);
    Announce(*pilot);
    Announce(*observer, MessageType::ObserverAnnounce);
    Pump.PumpTick();
    Players.Players()[2].DepartureIcao = "KSEA";
    leaver.reset();
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Pilot", "Observer"));
    EXPECT_EQ(Players.Players()[1].DepartureIcao, "KSEA");
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
    EXPECT_THAT(pilot->Received(), ElementsAre("AircraftInfoRequest"));
    EXPECT_THAT(observer->Received(), IsEmpty());
}

TEST_F(PumpTest, UpkeepGoesOnBehindAFailure)
{
    const auto pilot = Joined("Pilot");
    Announce(*pilot);
    Pump.PumpTick();
    for (const char* operation : {"GetDPEnumPlayers", "GetPlayerFriendlyName"}) {
        FailingOperation = operation;
        Pump.UpkeepTick();
        EXPECT_THAT(pilot->Received(), ElementsAre("AircraftInfoRequest")) << operation;
    }
    FailingOperation = "Send";
    Pump.UpkeepTick();
    EXPECT_EQ(Players.PlayerCount(), 2U);
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(PumpTest, ChatIsHeardFromEveryone)
{
    const auto stranger = Joined("Zoe");
    Say(*stranger, ChatTextMessage{"One"});
    Say(*stranger, ChatTextMessage{"Two"});
    Say(*stranger, ChatTextMessage{""});
    stranger->SendBytes(Session.OwnPlayerId, {0x23, 0x10, 0, 0, 1, 0, 0, 0, 'x'});
    stranger->SendBytes(Session.OwnPlayerId, {0x23, 0x10, 0, 0, 3, 0, 0, 0, 0, 0});
    Session.SessionJoined = false;
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Zoe|One", "Zoe|Two"));
}

TEST_F(PumpTest, IdentifiesItselfWhenAsked)
{
    Say(HostMember, PlainMessage{MessageType::IdentifyRequest});
    Pump.PumpTick();
    while (const auto message = HostMember.Peer->Receive()) {
        if (message->From != SystemSender) {
            EXPECT_EQ(*DecodeMessage(message->Content),
                      Message(AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId}));
        }
    }
}

TEST_F(PumpTest, WhatAStrangerSendsIsNotRead)
{
    const auto stranger = Joined("Zoe");
    stranger->SendBytes(Session.OwnPlayerId, {0x19, 0x10, 0, 0, 50, 0, 0, 0, 1});
    stranger->SendBytes(Session.OwnPlayerId, {0x0E, 0x10, 0, 0, 255, 255, 255, 127});
    stranger->SendBytes(Session.OwnPlayerId, {0x34, 0x12, 0, 0, 255, 255, 255, 127});
    Pump.PumpTick();
    EXPECT_EQ(Disconnects, 0);
}

TEST_F(PumpTest, TicksStayAwayFromAnOpenBox)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Pump.PumpTick();
    static_cast<void>(pilot->Received());
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(*pilot, ChatTextMessage{"Before"});
    Boxes.WhileOpen = [&] {
        Say(*pilot, ChatTextMessage{"Meanwhile"});
        Pump.PumpTick();
        Pump.UpkeepTick();
    };
    Players.Append("Host", HostMember.Id, PilotRole);
    Pump.PumpTick();
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_THAT(Chat, ElementsAre("Ann|Before")) << "what came meanwhile waits for the next tick";
    EXPECT_THAT(pilot->Received(), IsEmpty());
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Ann|Before", "Ann|Meanwhile"));
}

TEST_F(PumpTest, ASessionLeftBehindAnOpenBoxIsLeftAlone)
{
    Say(HostMember, PlainMessage{MessageType::RemovedByHost});
    Boxes.WhileOpen = [&] { Disconnect(); };
    Pump.PumpTick();
    EXPECT_EQ(Disconnects, 1);
}

TEST_F(PumpTest, ARenameBehindAnOpenBoxIsNoticed)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Players.Append("Host", HostMember.Id, PilotRole);
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(*pilot, ChatTextMessage{"Hi"});
    Boxes.WhileOpen = [&] { EXPECT_TRUE(pilot->Peer->SetPlayerName(pilot->Id, "Eve")); };
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Eve|Hi"));
}

TEST_F(PumpTest, StartAsksEveryoneAndTakesNoForAnAnswer)
{
    Pump.Start();
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
    FailingOperation = "Send";
    Pump.Start();
    EXPECT_THAT(Boxes.Shown, IsEmpty());
    FailingOperation.clear();
    Pump.UpkeepTick();
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
}
} // namespace
} // namespace corvane
