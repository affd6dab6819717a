#pragma once

#include "net/wire/WireDecode.h"

#include <functional>

namespace corvane::directplay {
/// Cuts a byte stream into messages by their size fields. Holds at most one unfinished message, and never more memory
/// than has arrived.
class StreamFramer {
public:
    using MessageHandler = std::function<void(ByteSpan message)>;

    /// Hands every message that bytes complete to onMessage. A reason means that the stream is out of step: nothing
    /// after it can be trusted, and the connection must be closed.
    std::optional<DropReason> Feed(ByteSpan bytes, const MessageHandler& onMessage);

    /// True while the start of a message waits for the rest of it.
    [[nodiscard]] bool InsideMessage() const noexcept { return !m_partial.empty(); }

private:
    std::optional<DropReason> Gather(ByteSpan& bytes, const MessageHandler& onMessage);

    Bytes m_partial;
};
} // namespace corvane::directplay
