#pragma once

#include "net/machine/PeerMachine.h"

#include <deque>
#include <functional>
#include <memory>

namespace corvane::directplay {
constexpr std::uint16_t SimulatedEnumerationPort = 47624;

/// Several state machines linked in memory, each on an address of its own (127.0.0.2, .3, ...) with stream port 2300
/// and datagram port 2350, and a clock that is moved by hand. Packets arrive in the order in which they were sent.
class SimulatedNetwork {
public:
    class Node final : public PeerOutput {
    public:
        Node(SimulatedNetwork& network, std::uint32_t ip) : m_network(network), Ip(ip), Machine(ConfigOf(ip), *this) {}

        [[nodiscard]] SocketAddress Stream() const { return {Ip, 2300}; }

        void SendStream(const SocketAddress& machine, Bytes message) override
        {
            m_network.Push(true, {Ip, 2300}, machine, std::move(message));
        }
        void SendStreamOnce(const SocketAddress& machine, Bytes message) override
        {
            ++Once;
            m_network.Push(true, {Ip, 2300}, machine, std::move(message));
        }
        void SendBack(ConnectionId connection, Bytes message) override
        {
            m_network.Push(true, {Ip, 2300}, {static_cast<std::uint32_t>(connection), 2300}, std::move(message));
        }
        void SendDatagram(const SocketAddress& to, Bytes message) override
        {
            m_network.Push(false, {Ip, 2350}, to, std::move(message));
        }
        void CloseStream(const SocketAddress& /*machine*/) override {}
        void DropStream(const SocketAddress& /*machine*/) override {}
        void OpenEnumerationPorts() override { EnumerationOpen = true; }
        void CloseEnumerationPorts() override { EnumerationOpen = false; }
        void Deliver(WireId /*machine*/, WireId from, WireId to, ByteSpan content) override
        {
            Received.push_back({from, to, Bytes(content.begin(), content.end())});
        }
        void RequestDone(Result<WireId> result) override { Done = std::move(result); }

        struct Message {
            WireId From = 0;
            WireId To = 0;
            Bytes Content;
        };

    private:
        static PeerConfig ConfigOf(std::uint32_t ip)
        {
            PeerConfig config;
            config.StreamPort = 2300;
            config.DatagramPort = 2350;
            config.PiecesByDatagram = true;
            config.Seed = ip;
            return config;
        }
        SimulatedNetwork& m_network;

    public:
        std::uint32_t Ip;
        bool Alive = true;
        bool EnumerationOpen = false;
        unsigned Once = 0;
        std::optional<Result<WireId>> Done;
        std::vector<Message> Received;
        PeerMachine Machine;
    };

    Node& Add() { return *m_nodes.emplace_back(std::make_unique<Node>(*this, 0x7F000002 + m_nodes.size())); }

    /// Delivers everything under way, and what that brings about.
    void Settle()
    {
        while (!m_packets.empty()) {
            const InFlight packet = std::move(m_packets.front());
            m_packets.pop_front();
            Arrive(packet);
        }
    }

    /// Moves the clock on in steps of a quarter of a second.
    void Pass(Millis time)
    {
        for (const Millis end = Now + time; Now < end;) {
            Now += Millis{250};
            for (const auto& node : m_nodes) {
                if (node->Alive)
                    node->Machine.Tick(Now);
            }
            Settle();
        }
    }

    /// A packet from anywhere, as a stranger may send it.
    void Inject(bool stream, const SocketAddress& from, const SocketAddress& to, Bytes message)
    {
        Push(stream, from, to, std::move(message));
        Settle();
    }

    Millis Now{1000};
    std::uint64_t Packets = 0;
    /// Sees every packet; false loses it.
    std::function<bool(bool stream, const SocketAddress& from, const SocketAddress& to, ByteSpan message)> Filter;

private:
    struct InFlight {
        bool Stream = false;
        SocketAddress From;
        SocketAddress To;
        Bytes Message;
    };

    void Push(bool stream, const SocketAddress& from, const SocketAddress& to, Bytes message)
    {
        ++Packets;
        if (!Filter || Filter(stream, from, to, message))
            m_packets.push_back({stream, from, to, std::move(message)});
    }

    void Arrive(const InFlight& packet)
    {
        for (const auto& node : m_nodes) {
            const bool enumeration = packet.To.Port == SimulatedEnumerationPort;
            const bool broadcast = packet.To.Ip == 0xFFFFFFFF && node->Ip != packet.From.Ip;
            if ((node->Ip != packet.To.Ip && !broadcast) || !node->Alive || (enumeration && !node->EnumerationOpen))
                continue;
            if (packet.Stream)
                node->Machine.OnStream({packet.From.Ip, {packet.From.Ip, 40000}, node->Ip, {}, enumeration},
                                       packet.Message, Now);
            else
                node->Machine.OnDatagram({packet.From, enumeration}, packet.Message, Now);
        }
    }

    std::vector<std::unique_ptr<Node>> m_nodes;
    std::deque<InFlight> m_packets;
};

/// A session of several machines: the first hosts.
class SimulatedSession {
public:
    using Node = SimulatedNetwork::Node;

    explicit SimulatedSession(std::uint32_t flags = 0x44, std::uint32_t maxPlayers = 8, std::u16string password = u"")
        : m_password(std::move(password))
    {
        Host().Machine.Host({u"Practice", m_password, {}, flags, maxPlayers}, Network.Now);
    }

    Node& Host() { return *m_nodes.front(); }
    Node& At(std::size_t index) { return *m_nodes[index]; }

    void Find(Node& node, std::uint32_t flags = EnumPasswordRequired)
    {
        EnumerateRequest request;
        request.Flags = flags;
        request.Broadcast = {0xFFFFFFFF, SimulatedEnumerationPort};
        node.Machine.Enumerate(request, Network.Now);
        Network.Pass(Millis{5000});
    }

    /// Adds a machine that tries to join; whether it did shows in its Done.
    Node& TryJoin(std::u16string_view password)
    {
        Node& node = Network.Add();
        m_nodes.push_back(&node);
        Find(node);
        node.Done.reset();
        if (!node.Machine.Found().empty())
            node.Machine.Join(node.Machine.Found().front().Description.Instance, password, Network.Now);
        Network.Settle();
        return node;
    }
    Node& Join() { return TryJoin(m_password); }

    WireId CreatePlayer(Node& node, std::u16string_view name)
    {
        node.Done.reset();
        node.Machine.CreatePlayer(name, u"Player", Network.Now);
        Network.Settle();
        return node.Done && *node.Done ? **node.Done : 0;
    }

    WireId CreateGroup(Node& node, std::u16string_view name)
    {
        node.Done.reset();
        node.Machine.CreateGroup(name, Network.Now);
        Network.Settle();
        return node.Done && *node.Done ? **node.Done : 0;
    }

    SimulatedNetwork Network;

private:
    std::u16string m_password;
    std::vector<Node*> m_nodes{&Network.Add()};
};

/// Short names of the players that a machine knows, in order of id.
inline std::set<std::u16string> NamesKnownTo(const SimulatedNetwork::Node& node)
{
    std::set<std::u16string> names;
    for (const auto& [id, player] : node.Machine.Table().Players())
        names.insert(player.ShortName);
    return names;
}
} // namespace corvane::directplay
