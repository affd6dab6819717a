#include "net/machine/PeerMachine.h"
#include "net/wire/WireEncode.h"

#include <cstdlib>

using namespace corvane;
using namespace corvane::directplay;

namespace {
/// Takes what the machine puts out, and looks only whether it makes sense.
class Sink final : public PeerOutput {
public:
    void SendStream(const SocketAddress& /*machine*/, Bytes message) override { Check(message); }
    void SendStreamOnce(const SocketAddress& /*machine*/, Bytes message) override { Check(message); }
    void SendBack(ConnectionId /*connection*/, Bytes message) override { Check(message); }
    void SendDatagram(const SocketAddress& /*to*/, Bytes message) override { Check(message); }
    void CloseStream(const SocketAddress& /*machine*/) override {}
    void DropStream(const SocketAddress& /*machine*/) override {}
    void OpenEnumerationPorts() override {}
    void CloseEnumerationPorts() override {}
    void Deliver(WireId /*machine*/, WireId /*from*/, WireId /*to*/, ByteSpan /*content*/) override {}
    void RequestDone(Result<WireId> /*result*/) override {}

private:
    static void Check(const Bytes& message)
    {
        if (message.size() < PrefixSize)
            std::abort();
    }
};

constexpr std::uint32_t FirstIp = 0x7F000002;

/// Reads the fuzzer's bytes as a list of steps: packets from a few addresses, the program's calls, and time.
class Script {
public:
    explicit Script(ByteSpan input) : m_in(input), m_machine(ConfigOf(), m_sink) {}

    void Run()
    {
        while (m_in.Left() > 0 && !m_in.Failed())
            Step(m_in.ReadU8());
        if (m_machine.HeldBytes() > MaxHeldBytes + MaxUnfinishedBytes ||
            m_machine.Table().Players().size() > MaxPlayers)
            std::abort();
        m_machine.Leave();
    }

private:
    static PeerConfig ConfigOf()
    {
        PeerConfig config;
        config.StreamPort = 2300;
        config.DatagramPort = 2350;
        config.PiecesByDatagram = true;
        config.Seed = 1;
        return config;
    }

    /// A packet with a well-formed prefix: command and body come from the input.
    Bytes NextPacket()
    {
        const bool management = (m_in.ReadU8() & 1) != 0;
        const std::uint8_t command = m_in.ReadU8();
        const ByteSpan body = m_in.ReadBytes(std::min<std::size_t>(m_in.ReadU16() % 600, m_in.Left()));
        if (!management)
            return EncodePlayerMessage(NextId(), NextId(), body, 2300);
        Bytes packet = EncodeMessage(YouAreDead{}, static_cast<std::uint16_t>(2300 + m_in.ReadU8() % 2));
        packet[24] = command;
        packet.insert(packet.end(), body.begin(), body.end());
        ByteWriter(packet).PatchI32(0, static_cast<std::int32_t>(packet.size() | (TokenRemote << 20)));
        return packet;
    }

    /// An id that may well exist: those of a session follow from its key.
    WireId NextId()
    {
        const WireId number = m_in.ReadU8() % 8;
        return ((number << 16) | number) ^ m_machine.Description().IdKey;
    }

    SocketAddress NextAddress() { return {FirstIp + m_in.ReadU8() % 3U, 2300}; }

    void Packet()
    {
        const SocketAddress from = NextAddress();
        const Bytes packet = NextPacket();
        if ((m_in.ReadU8() & 1) != 0)
            m_machine.OnDatagram({{from.Ip, 2350}, false}, packet, m_now);
        else
            m_machine.OnStream({from.Ip, {from.Ip, 40000}, FirstIp, {}, false}, packet, m_now);
    }

    /// A valid message with ids that may exist, to get past the first checks.
    void ValidMessage()
    {
        const WireId id = NextId();
        PackedPlayer record;
        record.Id = id;
        record.SystemId = NextId();
        record.ShortName = u"A";
        record.Service = ServiceData{NextAddress(), NextAddress()};
        WireMessage message = Ping{id, 0};
        switch (m_in.ReadU8() % 12) {
        case 0: message = RequestPlayerId{m_in.ReadU8()}; break;
        case 1: message = AddForwardRequest{id, record, u"", 0}; break;
        case 2: message = AddForward{0, id, record}; break;
        case 3: message = CreatePlayerMessage{record}; break;
        case 4: message = CreateGroupMessage{record}; break;
        case 5: message = DeletePlayerMessage{id, 0}; break;
        case 6: message = IAmNameServer{0, id, 7, record.Service}; break;
        case 7: message = RequestPlayerReply{id, 0}; break;
        case 8: message = TableOf(record); break;
        case 9: message = EnumSessionsReply{m_machine.Description(), u"S"}; break;
        case 10: message = AddPlayerToGroupMessage{id, NextId()}; break;
        default: break;
        }
        const SocketAddress from = NextAddress();
        m_machine.OnStream({from.Ip, {from.Ip, 40000}, FirstIp, {}, false}, EncodeMessage(message, 2300), m_now);
    }

    SuperEnumPlayersReply TableOf(const PackedPlayer& record)
    {
        SuperEnumPlayersReply table;
        table.Description.Flags = 0x44;
        table.Players.push_back({7, NextId(), 14, {}, {}, {}, record.Service, {}, 0});
        table.Players.push_back({5, NextId(), 14, {}, {}, {}, ServiceData{NextAddress(), NextAddress()}, {}, 0});
        table.Players.push_back({0, record.Id, record.SystemId, u"B", {}, {}, {}, {}, 0});
        return table;
    }

    void Step(std::uint8_t what)
    {
        switch (what % 16) {
        case 0: m_machine.Host({u"S", u"", {}, 0x44, 8}, m_now); break;
        case 1: m_machine.Enumerate({}, m_now); break;
        case 2:
            if (!m_machine.Found().empty())
                m_machine.Join(m_machine.Found().front().Description.Instance, u"", m_now);
            break;
        case 3: m_machine.CreatePlayer(u"Own", u"Player", m_now); break;
        case 4: m_machine.CreateGroup(u"G", m_now); break;
        case 5: (void)m_machine.Send(NextId(), NextId(), (m_in.ReadU8() & 1) != 0, Bytes(m_in.ReadU16() % 4000)); break;
        case 6: m_machine.OnStreamFailed(NextAddress(), m_now); break;
        case 7:
            m_now += Millis{m_in.ReadU16()};
            m_machine.Tick(m_now);
            break;
        case 8: (void)m_machine.DestroyPlayer(NextId()); break;
        case 9: m_machine.CancelRequest(); break;
        case 10: (void)m_machine.AddPlayerToGroup(NextId(), NextId()); break;
        case 11:
        case 12:
        case 13: ValidMessage(); break;
        default: Packet(); break;
        }
    }

    ByteReader m_in;
    Sink m_sink;
    PeerMachine m_machine;
    Millis m_now{0};
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Script(ByteSpan(data, size)).Run();
    return 0;
}
