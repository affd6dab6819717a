#pragma once

#include "net/wire/Protocol.h"
#include "session/SessionPeer.h"

#include <deque>
#include <map>
#include <mutex>
#include <optional>

namespace corvane::directplay {
/// What the network thread hands to the program's thread. It never refuses what has been read from a stream; instead
/// it says when a machine has filled its share, and the network stops reading from that machine until the program has
/// caught up. Safe to use from both threads.
class MessageQueue {
public:
    /// share  bytes that one machine's messages may take before it has to wait; all together may take four times that
    explicit MessageQueue(std::size_t share) : m_share(share) {}

    /// False, and nothing stored, when the machine is over its share and force is not set.
    bool Push(WireId machine, ReceivedMessage message, bool force);
    std::optional<ReceivedMessage> Pop();
    [[nodiscard]] std::size_t CountFor(PlayerId player) const;
    [[nodiscard]] bool Empty() const;
    [[nodiscard]] std::size_t Size() const;
    [[nodiscard]] bool IsOver(WireId machine) const;
    /// True when there is room for machine to be read again: below half of what would stop it.
    [[nodiscard]] bool HasRoom(WireId machine) const;
    void Drop(PlayerId player);
    void Clear();

private:
    struct Entry {
        WireId Machine = 0;
        ReceivedMessage Message;
    };
    [[nodiscard]] std::size_t HeldBy(WireId machine) const;
    void Subtract(const Entry& entry);

    mutable std::mutex m_mutex;
    std::size_t m_share;
    std::size_t m_bytes = 0;
    std::deque<Entry> m_entries;
    std::map<WireId, std::size_t> m_bytesOf;
    std::map<PlayerId, std::size_t> m_countOf;
};
} // namespace corvane::directplay
