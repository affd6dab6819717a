#pragma once

#include "net/machine/PeerCommon.h"

namespace corvane::directplay {
struct FoundSession {
    SessionDescription Description;
    std::u16string Name;
    SocketAddress Host; ///< its stream address
};

struct EnumerateRequest {
    Guid Application; ///< empty: any
    std::uint32_t Flags = 0;
    std::optional<std::u16string> Password;
    std::optional<SocketAddress> Host; ///< its enumeration address; none: broadcast
    SocketAddress Broadcast;
    Millis Time{0}; ///< 0: the protocol's, or until a host that is asked by its address has answered
};

/// Looking for sessions: asks one machine or all, repeats the question, and lists the answers. No machine can fill the
/// list or pass off another's session as its own.
class SessionSearch {
public:
    explicit SessionSearch(PeerCommon& common) : m_common(common) {}

    void Begin(const EnumerateRequest& request, Millis now);
    bool Handle(const Origin& origin, const EnumSessionsReply& message, Millis now);
    /// Repeats what is to be repeated.
    void Tick(Millis now);

    [[nodiscard]] const std::vector<FoundSession>& Found() const noexcept { return m_found; }
    /// Null when none of that id was found.
    [[nodiscard]] const FoundSession* Find(const Guid& instance) const;

private:
    PeerCommon& m_common;
    std::vector<FoundSession> m_found;
    bool m_endsWithAnswers = false; ///< it need not last its whole time
    std::uint32_t m_askedIp = 0;    ///< the only machine whose answers count; 0: everybody was asked
};
} // namespace corvane::directplay
