#pragma once

#include "net/machine/SessionSearch.h"

namespace corvane::directplay {
/// How a step of a join went.
struct JoinStep {
    bool Heeded = true;    ///< the message came from the host and belongs to this step
    bool Complete = false; ///< this machine is a member now
    std::string Failure{}; ///< the join is over
};

/// The joiner's side of a join: asks the host for an id, introduces itself, and takes over the table of members.
class Joining {
public:
    explicit Joining(PeerCommon& common) : m_common(common) {}

    /// session: what was found of it, if anything. A failure ends the request.
    void Begin(const Guid& instance, const FoundSession* session, std::u16string_view password, Millis now);
    JoinStep OnId(const Origin& origin, const RequestPlayerReply& message, Millis now);
    JoinStep OnTable(const Origin& origin, const SuperEnumPlayersReply& message, Millis now);
    [[nodiscard]] JoinStep OnRefusal(const Origin& origin, const AddForwardReply& message) const;
    [[nodiscard]] JoinStep OnLoginFailed(const Origin& origin) const;
    [[nodiscard]] bool UnderWay() const noexcept;

    /// What a host means by refusing an id or a join.
    static std::string RefusalText(std::uint32_t result);

private:
    void MergeMachine(const Origin& origin, const SuperPackedPlayer& entry, Millis now);
    void MergePlayer(const SuperPackedPlayer& entry);
    void MergeGroup(const SuperPackedPlayer& entry);
    [[nodiscard]] WireId OwnerIn(const SuperPackedPlayer& entry) const;

    PeerCommon& m_common;
};

/// The older form of the table in the newer one.
SuperEnumPlayersReply ToSuper(const EnumPlayersReply& message);
} // namespace corvane::directplay
