#include "net/machine/HeldMessages.h"

#include <utility>

namespace corvane::directplay {
bool HeldMessages::Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now)
{
    std::size_t messages = 0; // of the same source, which must leave room for others
    std::size_t bytes = bare.size();
    for (const Held& held : m_held) {
        if (held.From.Remote.Ip != origin.Remote.Ip)
            continue;
        ++messages;
        bytes += held.Content.size();
    }
    if (messages >= MaxHeldMessages / 2 || bytes > MaxHeldBytes / 2 || m_held.size() >= MaxHeldMessages ||
        m_bytes + bare.size() > MaxHeldBytes)
        return false;
    m_held.push_back({origin, Bytes(bare.begin(), bare.end()), sender, now});
    m_bytes += bare.size();
    return true;
}

std::vector<HeldMessages::Held> HeldMessages::TakeOf(WireId sender)
{
    std::vector<Held> ready;
    std::erase_if(m_held, [&](Held& held) {
        if (held.Sender != sender)
            return false;
        m_bytes -= held.Content.size();
        ready.push_back(std::move(held));
        return true;
    });
    return ready;
}

std::size_t HeldMessages::Expire(Millis now, Millis longest)
{
    std::size_t expired = 0;
    for (; !m_held.empty() && now - m_held.front().Since > longest; ++expired) {
        m_bytes -= m_held.front().Content.size();
        m_held.pop_front();
    }
    return expired;
}
} // namespace corvane::directplay
