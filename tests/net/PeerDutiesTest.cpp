#include "net/machine/HeldMessages.h"
#include "net/machine/Liveness.h"
#include "net/machine/SessionHost.h"
#include "net/wire/WireDecode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

/// Duties of a peer, each alone with the session's table.
namespace corvane::directplay {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// Notes what goes out, taken apart.
class NotedOutput final : public PeerOutput {
public:
    void SendStream(const SocketAddress& /*machine*/, Bytes message) override { Note(Streams, message); }
    void SendStreamOnce(const SocketAddress& /*machine*/, Bytes message) override { Note(Streams, message); }
    void SendBack(ConnectionId /*connection*/, Bytes message) override { Note(Streams, message); }
    void SendDatagram(const SocketAddress& /*to*/, Bytes message) override { Note(Datagrams, message); }
    void CloseStream(const SocketAddress& machine) override { Closed.push_back(machine); }
    void DropStream(const SocketAddress& machine) override { Closed.push_back(machine); }
    void OpenEnumerationPorts() override {}
    void CloseEnumerationPorts() override {}
    void Deliver(WireId /*machine*/, WireId /*from*/, WireId /*to*/, ByteSpan /*content*/) override {}
    void RequestDone(Result<WireId> /*result*/) override {}

    std::vector<WireMessage> Streams;
    std::vector<WireMessage> Datagrams;
    std::vector<SocketAddress> Closed;

private:
    static void Note(std::vector<WireMessage>& list, const Bytes& message)
    {
        const auto decoded = DecodeManagement(ByteSpan(message).subspan(PrefixSize));
        list.push_back(std::get<Management>(decoded).Body);
    }
};

class PeerDuties : public testing::Test {
protected:
    static Origin From(const SocketAddress& machine)
    {
        return {.Machine = machine, .Remote = {machine.Ip, 40000}, .LocalIp = 1, .Connection = 1};
    }
    MachineEntry& Enter(WireId id, std::uint32_t ip)
    {
        MachineEntry& machine = *Common.Table.Names.AddMachine(id);
        machine.Stream = {ip, 2300};
        machine.Datagram = {ip, 2350};
        return machine;
    }
    /// This machine, 10, is a member of 20's session.
    void BeMember(std::uint32_t flags)
    {
        Common.Table.Phase = SessionPhase::Member;
        Common.Table.OwnId = 10;
        Enter(10, 0);
        Enter(20, 2);
        Common.Table.SetHost(20);
        Common.Table.Description.Flags = flags;
    }

    NotedOutput Output;
    PeerCommon Common{{.Timers = {}, .StreamPort = 2300, .DatagramPort = 2350}, Output};
};

TEST_F(PeerDuties, AHostKeepsAnIdForWhomItGaveItToAndForAWhile)
{
    SessionHost host(Common);
    host.Begin({u"S", u"cat", {}, FlagPasswordRequired, 2}, Millis{0});
    const SocketAddress asker{7, 2300};
    const SocketAddress other{8, 2300};
    EXPECT_FALSE(host.Handle(From(asker), RequestPlayerId{PlayerIsSystem}, Millis{0}));
    EXPECT_FALSE(host.Handle(From(asker), RequestPlayerId{PlayerIsSystem}, Millis{1})) << "its answer was lost";
    ASSERT_EQ(Output.Streams.size(), 2U);
    const WireId id = std::get<RequestPlayerReply>(Output.Streams[0]).Id;
    EXPECT_EQ(std::get<RequestPlayerReply>(Output.Streams[1]).Id, id);
    EXPECT_TRUE(host.WasGiven(id, RequestKind::Join, asker, Millis{2}));
    EXPECT_FALSE(host.WasGiven(id, RequestKind::Join, other, Millis{2}));
    EXPECT_FALSE(host.WasGiven(id, RequestKind::Player, asker, Millis{2}));
    AddForwardRequest entering;
    entering.Id = id;
    entering.Password = u"cat";
    EXPECT_FALSE(host.Redeem(From(other), entering));
    EXPECT_TRUE(host.Redeem(From(asker), entering));
    EXPECT_FALSE(host.Redeem(From(asker), entering)) << "once";
    host.Handle(From(other), RequestPlayerId{PlayerIsSystem}, Millis{3});
    host.Tick(Millis{30002});
    EXPECT_THAT(Output.Closed, IsEmpty());
    host.Tick(Millis{30003});
    EXPECT_THAT(Output.Closed, ElementsAre(other));
}

struct WatchCase {
    const char* Name;
    std::function<void(SessionTable&)> Change;
    std::vector<WireId> Pinged; ///< of 20, which hosts, and 30
};
class Watching : public PeerDuties, public testing::WithParamInterface<WatchCase> {};
TEST_P(Watching, GoesByWhoHosts)
{
    BeMember(FlagKeepAlive);
    Enter(30, 3);
    GetParam().Change(Common.Table);
    Liveness liveness(Common);
    for (int period = 1; period <= 8; ++period)
        EXPECT_THAT(liveness.Tick(Millis{35000 * period}), IsEmpty());
    const auto watched = GetParam().Pinged.size();
    EXPECT_EQ(Output.Datagrams.size(), 8 * watched);
    EXPECT_EQ(Output.Streams.size(), 6 * watched) << "from the third on over both ways";
    EXPECT_EQ(liveness.Tick(Millis{35000 * 9}), GetParam().Pinged) << "they have let eight go by";
}
INSTANTIATE_TEST_SUITE_P(
    PeerDuties, Watching,
    testing::Values(WatchCase{"MembersWatchTheHost", [](SessionTable&) {}, {20}},
                    WatchCase{"TheHostEverybody", [](SessionTable& table) { table.SetHost(10); }, {20, 30}},
                    WatchCase{
                        "WithoutAHostAllEachOther", [](SessionTable& table) { table.Migrating = true; }, {20, 30}},
                    WatchCase{"NobodyWhereNotAskedTo", [](SessionTable& table) { table.Description.Flags = 0; }, {}}),
    [](const auto& row) { return std::string(row.param.Name); });

struct SpeakerCase {
    const char* Name;
    Origin From;
    bool Speaks; ///< for 20, at 0.0.0.2, whose neighbour behind the same address is 30
};
class Speakers : public PeerDuties, public testing::WithParamInterface<SpeakerCase> {};
TEST_P(Speakers, AreKnownByTheirAddressesAndStreams)
{
    BeMember(0);
    MachineEntry& neighbour = Enter(30, 2);
    neighbour.Stream.Port = 2301;
    neighbour.Datagram.Port = 2351;
    Common.Table.Bind({.Machine = neighbour.Stream, .Remote = {2, 40000}, .Connection = 5});
    EXPECT_EQ(Common.Table.SpeaksFor(GetParam().From, *Common.Table.Names.FindMachine(20)), GetParam().Speaks);
    EXPECT_FALSE(Common.Table.SpeaksFor(GetParam().From, *Common.Table.Names.FindMachine(10))) << "this machine itself";
}
INSTANTIATE_TEST_SUITE_P(
    PeerDuties, Speakers,
    testing::Values(SpeakerCase{"ItsDatagram", {.Machine = {}, .Remote = {2, 2350}}, true},
                    SpeakerCase{"ItsDatagramFromAnotherPort", {.Machine = {}, .Remote = {2, 9999}}, true},
                    SpeakerCase{"TheNeighboursDatagram", {.Machine = {}, .Remote = {2, 2351}}, false},
                    SpeakerCase{"AnotherAddress", {.Machine = {}, .Remote = {9, 2350}}, false},
                    SpeakerCase{"AFreshStream", {.Machine = {}, .Remote = {2, 40001}, .Connection = 6}, true},
                    SpeakerCase{"TheNeighboursStream", {.Machine = {}, .Remote = {2, 40000}, .Connection = 5}, false},
                    SpeakerCase{"OpenedToIt", {.Machine = {2, 2300}, .Remote = {2, 2300}, .Opened = true}, true},
                    SpeakerCase{
                        "OpenedToTheNeighbour", {.Machine = {2, 2301}, .Remote = {2, 2301}, .Opened = true}, false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(HeldMessages, LeaveRoomForOtherSourcesAndExpire)
{
    HeldMessages held;
    const Origin greedy{.Machine = {}, .Remote = {1, 1}};
    const Origin modest{.Machine = {}, .Remote = {2, 1}};
    const Bytes content(8);
    std::size_t kept = 0;
    while (held.Hold(greedy, content, 7, Millis{0}))
        ++kept;
    EXPECT_EQ(kept, MaxHeldMessages / 2);
    EXPECT_TRUE(held.Hold(modest, content, 8, Millis{10}));
    EXPECT_EQ(held.TakeOf(8).size(), 1U);
    EXPECT_THAT(held.TakeOf(8), IsEmpty());
    EXPECT_EQ(held.Expire(Millis{2000}, Millis{2000}), 0U);
    EXPECT_EQ(held.Expire(Millis{2001}, Millis{2000}), kept);
    EXPECT_EQ(held.Size(), 0U);
}
} // namespace
} // namespace corvane::directplay
