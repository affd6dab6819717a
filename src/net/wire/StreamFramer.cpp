#include "net/wire/StreamFramer.h"

#include <algorithm>
#include <utility>

namespace corvane::directplay {
static constexpr std::size_t WordSize = 4;

static std::variant<std::uint32_t, DropReason> SizeOf(ByteSpan start)
{
    return CheckFirstWord(ByteReader(start).ReadU32());
}

std::optional<DropReason> StreamFramer::Feed(ByteSpan bytes, const MessageHandler& onMessage)
{
    while (!bytes.empty()) {
        if (!m_partial.empty() || bytes.size() < WordSize) {
            if (const auto reason = Gather(bytes, onMessage))
                return reason;
            continue;
        }
        const auto size = SizeOf(bytes);
        if (const auto* reason = std::get_if<DropReason>(&size))
            return *reason;
        const std::size_t length = std::get<std::uint32_t>(size);
        if (length > bytes.size()) {
            m_partial.assign(bytes.begin(), bytes.end());
            return std::nullopt;
        }
        onMessage(bytes.first(length));
        bytes = bytes.subspan(length);
    }
    return std::nullopt;
}

/// Adds to the unfinished message what it still needs: first its size, then the rest.
std::optional<DropReason> StreamFramer::Gather(ByteSpan& bytes, const MessageHandler& onMessage)
{
    std::size_t wanted = WordSize;
    if (m_partial.size() >= WordSize) {
        const auto size = SizeOf(m_partial);
        if (const auto* reason = std::get_if<DropReason>(&size))
            return *reason;
        wanted = std::get<std::uint32_t>(size);
    }
    const std::size_t taken = std::min(wanted - m_partial.size(), bytes.size());
    m_partial.insert(m_partial.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
    bytes = bytes.subspan(taken);
    if (wanted > WordSize && m_partial.size() == wanted)
        onMessage(std::exchange(m_partial, Bytes()));
    else if (m_partial.size() == WordSize && std::holds_alternative<DropReason>(SizeOf(m_partial)))
        return std::get<DropReason>(SizeOf(m_partial));
    return std::nullopt;
}
} // namespace corvane::directplay
