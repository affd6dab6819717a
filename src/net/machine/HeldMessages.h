#pragma once

#include "net/machine/SessionTable.h"

#include <deque>

namespace corvane::directplay {
/// Messages that come before what they need: before a joiner has its table, or before their sender is known. All are
/// capped, and no source may take more than half.
class HeldMessages {
public:
    struct Held {
        Origin From;
        Bytes Content;     ///< bare: from the signature or the sender's id on
        WireId Sender = 0; ///< of a player message; 0 for what waits for the table
        Millis Since{};
    };

    /// False, and nothing kept, when there is no room.
    bool Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now);
    /// Hands over what waits for a sender, in order of arrival; 0: what waits for the table.
    std::vector<Held> TakeOf(WireId sender);
    /// Drops what has waited for longer than a time. Returns how many.
    std::size_t Expire(Millis now, Millis longest);
    [[nodiscard]] std::size_t Size() const noexcept { return m_bytes; }

private:
    std::deque<Held> m_held; ///< in order of arrival
    std::size_t m_bytes = 0;
};
} // namespace corvane::directplay
