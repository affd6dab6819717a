#include "net/wire/WireDecode.h"
#include "net/wire/WireEncode.h"
#include "tests/net/SimulatedNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// What strangers, and members that lie, must not achieve.
namespace corvane::directplay {
namespace {
using testing::IsEmpty;
using testing::SizeIs;

class Hostility : public testing::Test {
protected:
    Hostility() : m_second(m_session.Join()), m_third(m_session.Join())
    {
        m_hostPlayer = m_session.CreatePlayer(m_session.Host(), u"Host");
        m_two = m_session.CreatePlayer(m_second, u"Two");
        m_three = m_session.CreatePlayer(m_third, u"Three");
        m_group = m_session.CreateGroup(m_session.Host(), u"G");
    }

    /// Sends to everybody, over streams and as datagrams.
    void Tell(const SocketAddress& from, const WireMessage& message)
    {
        for (auto* node : {&m_session.Host(), &m_second, &m_third}) {
            m_session.Network.Inject(true, from, node->Stream(), EncodeMessage(message, from.Port));
            m_session.Network.Inject(false, {from.Ip, 2350}, {node->Ip, 2350}, EncodeMessage(message, from.Port));
        }
    }

    void ExpectUnharmed()
    {
        for (auto* node : {&m_session.Host(), &m_second, &m_third}) {
            EXPECT_TRUE(node->Machine.InSession());
            EXPECT_EQ(NamesKnownTo(*node), (std::set<std::u16string>{u"Host", u"Two", u"Three"}));
            EXPECT_THAT(node->Machine.Table().Machines(), SizeIs(3));
            EXPECT_THAT(node->Machine.Table().Groups(), SizeIs(1));
            EXPECT_THAT(node->Machine.Table().Groups().at(m_group).Members, IsEmpty());
            EXPECT_EQ(node->Machine.SessionName(), u"Practice");
            EXPECT_EQ(node->Machine.HostSystemPlayer(), m_session.Host().Machine.OwnSystemPlayer());
            EXPECT_THAT(node->Received, IsEmpty());
        }
    }

    PackedPlayer FakeRecord(WireId id, WireId system)
    {
        PackedPlayer record;
        record.Id = id;
        record.SystemId = system;
        record.ShortName = u"Fake";
        record.Service = ServiceData{{0x7F0000C8, 2300}, {0x7F0000C8, 2350}};
        return record;
    }

    SimulatedSession m_session;
    SimulatedNetwork::Node& m_second;
    SimulatedNetwork::Node& m_third;
    WireId m_hostPlayer = 0;
    WireId m_two = 0;
    WireId m_three = 0;
    WireId m_group = 0;
    const SocketAddress m_stranger{0x7F0000C8, 2300}; // 127.0.0.200
};

TEST_F(Hostility, AStrangerCannotSpeakForAnybodyOrEndAnything)
{
    const WireId system = m_second.Machine.OwnSystemPlayer();
    const WireId host = m_session.Host().Machine.OwnSystemPlayer();
    Tell(m_stranger, YouAreDead{});
    for (const WireId id : {m_two, m_three, m_hostPlayer, system, host})
        Tell(m_stranger, DeletePlayerMessage{id, 0});
    Tell(m_stranger, DeleteGroupMessage{0, m_group});
    Tell(m_stranger, CreatePlayerMessage{FakeRecord(77, system)});
    Tell(m_stranger, CreatePlayerVerify{FakeRecord(77, host)});
    Tell(m_stranger, CreateGroupMessage{FakeRecord(78, host)});
    Tell(m_stranger, AddPlayerToGroupMessage{m_two, m_group});
    Tell(m_stranger, PlayerNameChanged{m_two, u"Renamed", u""});
    Tell(m_stranger, SessionDescChanged{{}, u"Taken", u""});
    Tell(m_stranger, AddForward{0, 79, FakeRecord(79, 79)});
    Tell(m_stranger, IAmNameServer{0, system, 7, ServiceData{{0, 2300}, {0, 2350}}});
    Tell(m_stranger, RequestPlayerReply{80, 0});
    Tell(m_stranger, AddForwardReply{1});
    Tell(m_stranger, SuperEnumPlayersReply{});
    ExpectUnharmed();
    EXPECT_GT(m_second.Machine.Counters().Of(DropReason::Stranger), 20U);
}

TEST_F(Hostility, AStrangersPlayerMessagesGoNowhere)
{
    for (const WireId from : {m_hostPlayer, m_three, WireId{12345}}) {
        const Bytes message = EncodePlayerMessage(from, m_two, Bytes{1}, 2300);
        m_session.Network.Inject(true, m_stranger, m_second.Stream(), message);
        m_session.Network.Inject(false, m_stranger, {m_second.Ip, 2350}, message);
        const auto pieces = CutMessage(ByteSpan(message).subspan(PrefixSize), Guid{{5}}, 4);
        for (const Packet& piece : pieces)
            m_session.Network.Inject(false, m_stranger, {m_second.Ip, 2350}, EncodeMessage(piece, 2300));
    }
    ExpectUnharmed();
    EXPECT_EQ(m_second.Machine.HeldBytes(), 0U);
}

TEST_F(Hostility, AMemberCannotSpeakForAnother)
{
    const SocketAddress liar = m_third.Stream();
    m_session.Network.Inject(true, liar, m_second.Stream(), EncodePlayerMessage(m_hostPlayer, m_two, Bytes{1}, 2300));
    m_session.Network.Inject(true, liar, m_second.Stream(), EncodeMessage(DeletePlayerMessage{m_hostPlayer, 0}, 2300));
    m_session.Network.Inject(true, liar, m_second.Stream(),
                             EncodeMessage(PlayerNameChanged{m_hostPlayer, u"X", u""}, 2300));
    m_session.Network.Inject(true, liar, m_second.Stream(), EncodeMessage(YouAreDead{}, 2300));
    m_session.Network.Inject(true, liar, m_second.Stream(), EncodeMessage(DeleteGroupMessage{0, m_group}, 2300));
    // Nor can a machine on a member's address that is not that member: another stream port, another machine.
    const SocketAddress neighbour{m_third.Ip, 2301};
    m_session.Network.Inject(true, neighbour, m_second.Stream(), EncodeMessage(DeletePlayerMessage{m_three, 0}, 2301));
    ExpectUnharmed();
}

TEST_F(Hostility, OnlyTheReservedMachineCanUseAReservedId)
{
    auto& host = m_session.Host();
    m_session.Network.Inject(true, m_stranger, host.Stream(), EncodeMessage(RequestPlayerId{9}, 2300));
    PackedPlayer record = FakeRecord(0, 0);
    for (WireId low = 0; low < 16; ++low) {
        record.Id = (low << 16 | low) ^ host.Machine.Description().IdKey;
        m_session.Network.Inject(true, {0x7F0000C9, 2300}, host.Stream(),
                                 EncodeMessage(AddForwardRequest{record.Id, record, u"", 0}, 2300));
    }
    ExpectUnharmed();
    m_session.Network.Pass(Millis{31000}); // and the reservation does not last
    EXPECT_NE(m_session.CreatePlayer(host, u"Next"), 0U);
}

TEST_F(Hostility, NobodyCanMakeUsConnectOutAtWill)
{
    auto& host = m_session.Host();
    const unsigned before = host.Once;
    for (std::uint16_t i = 0; i < 1000; ++i) {
        const auto port = static_cast<std::uint16_t>(2300 + i);
        m_session.Network.Inject(false, {m_stranger.Ip, 5000}, {host.Ip, SimulatedEnumerationPort},
                                 EncodeMessage(EnumSessions{{}, std::nullopt, EnumAll}, port));
    }
    EXPECT_EQ(host.Once - before, MaxAnswersPerSecond);
    const auto packets = m_session.Network.Packets;
    for (std::uint16_t i = 0; i < 1000; ++i)
        m_session.Network.Inject(true, m_stranger, host.Stream(),
                                 EncodeMessage(RequestPlayerId{9}, static_cast<std::uint16_t>(2300 + i)));
    EXPECT_EQ(m_session.Network.Packets - packets, 1000U); // the requests themselves: this source is at its limit
    EXPECT_GT(host.Machine.Counters().Of(DropReason::Flooding), 1900U);
}

TEST_F(Hostility, RepliesThatNobodyWaitsForAreIgnored)
{
    m_session.Network.Inject(true, m_session.Host().Stream(), m_second.Stream(),
                             EncodeMessage(EnumSessionsReply{{}, u"Far"}, 2300));
    m_session.Network.Inject(true, m_session.Host().Stream(), m_second.Stream(),
                             EncodeMessage(SuperEnumPlayersReply{}, 2300));
    EXPECT_THAT(m_second.Machine.Found(), SizeIs(1)); // its own, from before
    ExpectUnharmed();
}

TEST_F(Hostility, TheEnumerationPortTakesNothingElse)
{
    auto& host = m_session.Host();
    const auto bad = host.Machine.Counters().Of(DropReason::BadMagic);
    m_session.Network.Inject(true, m_second.Stream(), {host.Ip, SimulatedEnumerationPort},
                             EncodeMessage(DeletePlayerMessage{m_two, 0}, 2300));
    m_session.Network.Inject(false, m_second.Stream(), {host.Ip, SimulatedEnumerationPort},
                             EncodePlayerMessage(m_two, m_hostPlayer, Bytes{1}, 2300));
    ExpectUnharmed();
    EXPECT_EQ(host.Machine.Counters().Of(DropReason::BadMagic), bad + 1);
}

TEST_F(Hostility, AMemberThatFloodsStaysWithinTheCaps)
{
    const SocketAddress from = m_third.Stream();
    for (WireId i = 0; i < 2 * MaxPlayers; ++i)
        m_second.Machine.OnStream({1, from, m_second.Ip, {}, false},
                                  EncodeMessage(CreatePlayerMessage{FakeRecord(0x100000 + i, 0)}, 2300),
                                  m_session.Network.Now);
    EXPECT_THAT(m_second.Machine.Table().Players(), SizeIs(MaxPlayers));
    for (WireId i = 0; i < 2 * MaxHeldMessages; ++i)
        m_second.Machine.OnStream({1, from, m_second.Ip, {}, false},
                                  EncodePlayerMessage(0x900000 + i, m_two, Bytes(4000), 2300), m_session.Network.Now);
    EXPECT_LE(m_second.Machine.HeldBytes(), MaxHeldBytes);
    EXPECT_GT(m_second.Machine.Counters().Of(DropReason::Flooding), MaxPlayers);
}

TEST_F(Hostility, AHostTakesOnlyPlayersAndGroupsWhoseIdsItGave)
{
    auto& host = m_session.Host();
    for (WireId i = 0; i < MaxPlayers; ++i)
        m_session.Network.Inject(true, m_third.Stream(), host.Stream(),
                                 EncodeMessage(CreatePlayerMessage{FakeRecord(0x100000 + i, 0)}, 2300));
    m_session.Network.Inject(true, m_third.Stream(), host.Stream(),
                             EncodeMessage(CreateGroupMessage{FakeRecord(0x200000, 0)}, 2300));
    ExpectUnharmed();
    // An id that another machine was given is no better than one that nobody was given.
    WireId given = 0;
    m_session.Network.Filter = [&](bool, const SocketAddress& from, const SocketAddress&, ByteSpan message) {
        const auto decoded = DecodeManagement(message.subspan(PrefixSize));
        if (from == host.Stream() && std::holds_alternative<Management>(decoded))
            if (const auto* reply = std::get_if<RequestPlayerReply>(&std::get<Management>(decoded).Body))
                given = reply->Id;
        return from != m_second.Stream() || given == 0; // whoever was given it does not use it
    };
    m_session.CreatePlayer(m_second, u"Late");
    m_session.Network.Filter = {};
    ASSERT_NE(given, 0U);
    m_session.Network.Inject(true, m_third.Stream(), host.Stream(),
                             EncodeMessage(CreatePlayerMessage{FakeRecord(given, 0)}, 2300));
    EXPECT_FALSE(host.Machine.Table().Players().contains(given));
}

TEST_F(Hostility, ANewHostTakesIdsOfTheOldOneWhileTheyMayComeAndWhileThereIsRoom)
{
    m_session.Host().Machine.Leave();
    m_session.Network.Settle();
    auto& heir = m_second.Machine.Hosting() ? m_second : m_third;
    auto& other = m_second.Machine.Hosting() ? m_third : m_second;
    ASSERT_TRUE(heir.Machine.Hosting());
    const auto create = [&](WireId id) {
        m_session.Network.Inject(true, other.Stream(), heir.Stream(),
                                 EncodeMessage(CreatePlayerMessage{FakeRecord(id, 0)}, 2300));
    };
    for (WireId id = 0x100000; id < 0x100020; ++id)
        create(id);
    EXPECT_THAT(heir.Machine.Table().Players(), SizeIs(8)); // as many as the session takes
    m_session.Network.Pass(Millis{6000});
    m_session.Network.Inject(true, other.Stream(), heir.Stream(),
                             EncodeMessage(DeletePlayerMessage{0x100000, 0}, 2300));
    create(0x100021);
    EXPECT_THAT(heir.Machine.Table().Players(), SizeIs(7));
}

TEST_F(Hostility, ChangesAreTheValidOnesAndNoMore)
{
    for (auto* node : {&m_session.Host(), &m_second, &m_third})
        (void)node->Machine.TakeChanges();
    Tell(m_stranger, PlayerNameChanged{m_two, u"Renamed", u""});
    Tell(m_stranger, DeletePlayerMessage{m_three, 0});
    Tell(m_third.Stream(), PlayerNameChanged{m_two, u"Renamed", u""});
    Tell(m_third.Stream(), Ping{m_third.Machine.OwnSystemPlayer(), 1});
    for (auto* node : {&m_session.Host(), &m_second})
        EXPECT_FALSE(node->Machine.TakeChanges().Any());
    m_session.Network.Inject(true, m_third.Stream(), m_second.Stream(),
                             EncodeMessage(PlayerNameChanged{m_three, u"Drei", u""}, 2300));
    const SessionChanges changes = m_second.Machine.TakeChanges();
    EXPECT_EQ(changes.Ids, std::set<WireId>{m_three});
    EXPECT_FALSE(changes.Everybody || changes.Session);
}

TEST_F(Hostility, OneAddressCannotTakeAllPlacesOfMachines)
{
    SimulatedSession open(0x44, 0); // any number of players
    auto& host = open.Host();
    for (std::uint16_t i = 0; i < 2 * MaxMachinesPerSource; ++i) {
        const SocketAddress from{m_stranger.Ip, static_cast<std::uint16_t>(3000 + i)};
        open.Network.Pass(Millis{1000});
        WireId given = 0;
        open.Network.Filter = [&](bool, const SocketAddress&, const SocketAddress& to, ByteSpan message) {
            const auto decoded = DecodeManagement(message.subspan(PrefixSize));
            if (to == from && std::holds_alternative<Management>(decoded))
                if (const auto* reply = std::get_if<RequestPlayerReply>(&std::get<Management>(decoded).Body))
                    given = reply->Id;
            return to != from;
        };
        open.Network.Inject(true, from, host.Stream(), EncodeMessage(RequestPlayerId{9}, from.Port));
        open.Network.Inject(true, from, host.Stream(),
                            EncodeMessage(AddForwardRequest{given, FakeRecord(given, given), u"", 0}, from.Port));
    }
    EXPECT_THAT(host.Machine.Table().Machines(), SizeIs(1 + MaxMachinesPerSource));
    open.Network.Filter = {};
    const auto& honest = open.Join();
    open.Network.Pass(Millis{5000}); // the others do not acknowledge it
    EXPECT_TRUE(honest.Done && *honest.Done);
}

TEST_F(Hostility, ARivalHostIsToldToGo)
{
    // A host that is announced a host answers that the other is dead, and the other believes its host alone.
    const WireId second = m_second.Machine.OwnSystemPlayer();
    m_session.Network.Inject(true, m_second.Stream(), m_session.Host().Stream(),
                             EncodeMessage(IAmNameServer{0, second, 7, ServiceData{{0, 2300}, {0, 2350}}}, 2300));
    EXPECT_TRUE(m_session.Host().Machine.Hosting());
    EXPECT_FALSE(m_second.Machine.InSession());
}
} // namespace
} // namespace corvane::directplay
