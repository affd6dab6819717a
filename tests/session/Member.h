#pragma once

#include "net/memory/InMemoryNetwork.h"
#include "session/MessageCodec.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Another member of a session: a host or a pilot, driven by the test.
class Member {
public:
    explicit Member(InMemoryNetwork& network) : Peer(*InMemoryProvider(network).DirectPlayCreate())
    {
        EXPECT_TRUE(Peer->InitializeConnection(InMemoryProvider::ConnectionAddress));
    }

    void Host(std::string_view name, std::int32_t maxPlayers = 8, std::uint32_t flags = 68,
              std::string_view password = "")
    {
        SessionEntry description;
        description.Name = name;
        description.MaxPlayers = maxPlayers;
        description.Flags = flags;
        description.Password = password;
        EXPECT_TRUE(Peer->Open(description, OpenCreate));
        Id = *Peer->CreatePlayer("Host", "Player");
        Guid = Sessions().back().InstanceGuid;
    }

    void Join(std::string_view guid, std::string_view name)
    {
        SessionEntry entry;
        entry.InstanceGuid = guid;
        EXPECT_TRUE(Peer->Open(entry, OpenJoin));
        Id = *Peer->CreatePlayer(name, "Player");
        Guid = guid;
    }

    void Send(PlayerId to, const Message& message) const { SendBytes(to, EncodeMessage(message)); }
    void SendBytes(PlayerId to, const Bytes& message) const
    {
        EXPECT_TRUE(Peer->Send(Id, to, SendGuaranteed, message));
    }

    /// The names of the messages that have arrived, without the transport's own.
    std::vector<std::string> Received() const
    {
        std::vector<std::string> names;
        while (const auto message = Peer->Receive()) {
            if (message->From != SystemSender)
                names.emplace_back(MessageTypeName(DecodeHeader(message->Content)->Type));
        }
        return names;
    }

    std::vector<SessionEntry> Sessions() const { return *Peer->GetDPEnumSessions(0, EnumSessionsPasswordRequired); }

    std::unique_ptr<SessionPeer> Peer;
    PlayerId Id = 0;
    std::string Guid;
};
} // namespace corvane
