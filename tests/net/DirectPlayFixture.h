#pragma once

#include "net/DirectPlayPeer.h"
#include "tests/net/LoopbackAddress.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace corvane {
/// Waits for a condition with a deadline, looking often.
template <class Condition> bool Eventually(Condition condition)
{
    constexpr std::chrono::seconds Patience{20};
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// Peers with real sockets on loopback addresses: every machine of a test has an address of its own.
class DirectPlayPeers : public testing::Test {
protected:
    static DirectPlayOptions OptionsOf(int machine)
    {
        DirectPlayOptions options;
        options.BindAddress = test::LoopbackAddress(machine);
        options.HostAddress = test::LoopbackAddress(2);
        options.Reconnect = directplay::Millis{200};
        options.Linger = directplay::Millis{300};
        options.Timers.FirstRepeat = directplay::Millis{50};
        options.Timers.SecondRepeat = directplay::Millis{150};
        return options;
    }

    static std::unique_ptr<DirectPlayPeer> Ready(const DirectPlayOptions& options)
    {
        auto peer = std::make_unique<DirectPlayPeer>(options);
        const auto initialized = peer->InitializeConnection(DirectPlayConnectionAddress);
        EXPECT_TRUE(initialized) << initialized.error().Text();
        return peer;
    }

    static std::unique_ptr<DirectPlayPeer> Host(std::uint32_t flags = 68, std::int32_t maxPlayers = 8,
                                                const std::string& password = "")
    {
        auto host = Ready(OptionsOf(2));
        const auto open = host->Open({"Practice", 0, maxPlayers, "", flags, password}, OpenCreate);
        EXPECT_TRUE(open) << open.error().Text();
        return host;
    }

    static std::vector<SessionEntry> Find(DirectPlayPeer& peer)
    {
        const auto found = peer.GetDPEnumSessions(300, EnumSessionsPasswordRequired);
        EXPECT_TRUE(found);
        return found ? *found : std::vector<SessionEntry>{};
    }

    static Result<void> Join(DirectPlayPeer& peer, const std::string& password = "")
    {
        auto found = Find(peer);
        if (found.empty())
            return Fail("test", "no session found");
        found.front().Password = password;
        return peer.Open(found.front(), OpenJoin);
    }

    static PlayerId Player(DirectPlayPeer& peer, std::string_view name)
    {
        const auto id = peer.CreatePlayer(name, "Player");
        EXPECT_TRUE(id) << id.error().Text();
        return id ? *id : 0;
    }

    static std::unique_ptr<DirectPlayPeer> Joined(int machine)
    {
        auto peer = Ready(OptionsOf(machine));
        const auto joined = Join(*peer);
        EXPECT_TRUE(joined) << joined.error().Text();
        return peer;
    }

    static std::set<std::string> NamesOf(DirectPlayPeer& peer)
    {
        std::set<std::string> names;
        if (const auto players = peer.GetDPEnumPlayers()) {
            for (const SessionMember& player : *players)
                names.insert(player.ShortName);
        }
        return names;
    }

    /// The next message of a player, waited for.
    static std::optional<ReceivedMessage> Next(DirectPlayPeer& peer, PlayerId player)
    {
        const bool arrived = Eventually([&] {
            const auto count = peer.GetMessageCount(player);
            return !count || *count > 0;
        });
        auto message = peer.Receive();
        if (!arrived || !message)
            return std::nullopt;
        return *message;
    }
};
} // namespace corvane
