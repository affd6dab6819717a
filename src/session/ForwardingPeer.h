#pragma once

#include "session/SessionPeer.h"

#include <memory>
#include <utility>

namespace corvane {
/// A peer that hands every operation on to another, for those that change or watch some of them. Without another every
/// operation fails.
class ForwardingPeer : public SessionPeer {
public:
    explicit ForwardingPeer(std::shared_ptr<SessionPeer> target = {}) noexcept : m_target(std::move(target)) {}

    Result<std::vector<ConnectionEntry>> GetDPEnumConnections() override;
    Result<void> InitializeConnection(std::string_view address) override;
    Result<std::vector<SessionEntry>> GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags) override;
    Result<void> Open(const SessionEntry& session, std::uint32_t flags) override;
    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override;
    Result<void> SetPlayerName(PlayerId player, std::string_view friendlyName) override;
    Result<std::int32_t> CreateGroup(std::string_view shortName) override;
    Result<std::vector<SessionMember>> GetDPEnumGroups() override;
    Result<void> AddPlayerToGroup(std::int32_t group, PlayerId player) override;
    Result<std::vector<SessionMember>> GetDPEnumPlayers() override;
    Result<std::int32_t> GetMessageCount(PlayerId player) override;
    Result<ReceivedMessage> Receive() override;
    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override;
    Result<std::string> GetPlayerFriendlyName(PlayerId player) override;
    Result<void> DestroyPlayer(PlayerId player) override;
    Result<void> Close() override;
    [[nodiscard]] bool IsHost() const override { return m_target && m_target->IsHost(); }
    [[nodiscard]] bool Congested() const override { return m_target && m_target->Congested(); }

protected:
    [[nodiscard]] const std::shared_ptr<SessionPeer>& Target() const noexcept { return m_target; }
    void SetTarget(std::shared_ptr<SessionPeer> target) noexcept { m_target = std::move(target); }

private:
    std::shared_ptr<SessionPeer> m_target;
};
} // namespace corvane
