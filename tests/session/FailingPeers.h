#pragma once

#include "session/ForwardingPeer.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {
/// Decides whether an operation is to fail. call counts, from 1, the operation's calls through the same factory. Beside
/// the operations of SessionPeer it is asked "DirectPlayCreate", and once for every listed session "GetSessionItem",
/// whose failure hands out an entry without an instance GUID, as a damaged answer would.
using FailureHook = std::function<bool(std::string_view operation, int call)>;

/// Makes another factory's peers, any call of which can be made to fail.
class FailingFactory final : public SessionPeerFactory {
public:
    FailingFactory(SessionPeerFactory& inner, FailureHook hook)
        : m_inner(inner), m_plan(std::make_shared<Plan>(std::move(hook)))
    {
    }

    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override
    {
        if (m_plan->Fails("DirectPlayCreate"))
            return Fail("DirectPlayCreate", "told to fail");
        auto peer = m_inner.DirectPlayCreate();
        if (!peer)
            return peer;
        return std::unique_ptr<SessionPeer>(std::make_unique<Peer>(*std::move(peer), m_plan));
    }

private:
    struct Plan {
        explicit Plan(FailureHook hook) : Hook(std::move(hook)) {}
        bool Fails(const std::string& operation) { return Hook(operation, ++Calls[operation]); }
        FailureHook Hook;
        std::map<std::string, int> Calls;
    };

    class Peer final : public ForwardingPeer {
    public:
        Peer(std::shared_ptr<SessionPeer> target, std::shared_ptr<Plan> plan)
            : ForwardingPeer(std::move(target)), m_plan(std::move(plan))
        {
        }

        Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override
        {
            return Unless("GetDPEnumConnections", [&] { return ForwardingPeer::GetDPEnumConnections(); });
        }
        Result<void> InitializeConnection(std::string_view address) override
        {
            return Unless("InitializeConnection", [&] { return ForwardingPeer::InitializeConnection(address); });
        }
        Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) override
        {
            auto found =
                Unless("GetDPEnumSessions", [&] { return ForwardingPeer::GetDPEnumSessions(timeoutMs, flags); });
            for (std::size_t i = 0; found && i < found->size(); ++i)
                if (m_plan->Fails("GetSessionItem"))
                    (*found)[i].InstanceGuid.clear();
            return found;
        }
        Result<void> Open(const SessionEntry& session, std::uint32_t flags) override
        {
            return Unless("Open", [&] { return ForwardingPeer::Open(session, flags); });
        }
        Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override
        {
            return Unless("CreatePlayer", [&] { return ForwardingPeer::CreatePlayer(friendlyName, formalName); });
        }
        Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override
        {
            return Unless("SetPlayerName", [&] { return ForwardingPeer::SetPlayerName(player, friendlyName); });
        }
        Result<std::int32_t> CreateGroup(std::string_view shortName) override
        {
            return Unless("CreateGroup", [&] { return ForwardingPeer::CreateGroup(shortName); });
        }
        Result<std::vector<SessionMember>> GetDPEnumGroups() override
        {
            return Unless("GetDPEnumGroups", [&] { return ForwardingPeer::GetDPEnumGroups(); });
        }
        Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override
        {
            return Unless("AddPlayerToGroup", [&] { return ForwardingPeer::AddPlayerToGroup(group, player); });
        }
        Result<std::vector<SessionMember>> GetDPEnumPlayers() override
        {
            return Unless("GetDPEnumPlayers", [&] { return ForwardingPeer::GetDPEnumPlayers(); });
        }
        Result<std::int32_t> GetMessageCount(PlayerId player) override
        {
            return Unless("GetMessageCount", [&] { return ForwardingPeer::GetMessageCount(player); });
        }
        Result<ReceivedMessage> Receive() override
        {
            return Unless("Receive", [&] { return ForwardingPeer::Receive(); });
        }
        Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override
        {
            return Unless("Send", [&] { return ForwardingPeer::Send(from, to, flags, message); });
        }
        Result<std::string> GetPlayerFriendlyName(PlayerId player) override
        {
            return Unless("GetPlayerFriendlyName", [&] { return ForwardingPeer::GetPlayerFriendlyName(player); });
        }
        Result<void> DestroyPlayer(PlayerId player) override
        {
            return Unless("DestroyPlayer", [&] { return ForwardingPeer::DestroyPlayer(player); });
        }
        Result<void> Close() override
        {
            return Unless("Close", [&] { return ForwardingPeer::Close(); });
        }

    private:
        template <class Operation> auto Unless(const char* name, Operation operation) -> decltype(operation())
        {
            if (m_plan->Fails(name))
                return Fail(name, "told to fail");
            return operation();
        }

        std::shared_ptr<Plan> m_plan;
    };

    SessionPeerFactory& m_inner;
    std::shared_ptr<Plan> m_plan;
};
} // namespace corvane
