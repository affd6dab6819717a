#include "net/sockets/MessageQueue.h"

#include <utility>

namespace corvane::directplay {
static constexpr std::size_t SharesInTotal = 4;

static std::size_t CostOf(const ReceivedMessage& message)
{
    constexpr std::size_t Overhead = 96; // of an entry, roughly: many empty messages must count too
    return message.Content.size() + Overhead;
}

std::size_t MessageQueue::HeldBy(WireId machine) const
{
    const auto at = m_bytesOf.find(machine);
    return at == m_bytesOf.end() ? 0 : at->second;
}

bool MessageQueue::Push(WireId machine, ReceivedMessage message, bool force)
{
    const std::scoped_lock lock(m_mutex);
    const std::size_t cost = CostOf(message);
    if (!force && (HeldBy(machine) + cost > m_share || m_bytes + cost > SharesInTotal * m_share))
        return false;
    m_bytes += cost;
    m_bytesOf[machine] += cost;
    ++m_countOf[message.To];
    m_entries.push_back({machine, std::move(message)});
    return true;
}

void MessageQueue::Subtract(const Entry& entry)
{
    const std::size_t cost = CostOf(entry.Message);
    m_bytes -= cost;
    if ((m_bytesOf[entry.Machine] -= cost) == 0)
        m_bytesOf.erase(entry.Machine);
    if (--m_countOf[entry.Message.To] == 0)
        m_countOf.erase(entry.Message.To);
}

std::optional<ReceivedMessage> MessageQueue::Pop()
{
    const std::scoped_lock lock(m_mutex);
    if (m_entries.empty())
        return std::nullopt;
    Subtract(m_entries.front());
    ReceivedMessage message = std::move(m_entries.front().Message);
    m_entries.pop_front();
    return message;
}

std::size_t MessageQueue::CountFor(PlayerId player) const
{
    const std::scoped_lock lock(m_mutex);
    const auto at = m_countOf.find(player);
    return at == m_countOf.end() ? 0 : at->second;
}

bool MessageQueue::Empty() const
{
    const std::scoped_lock lock(m_mutex);
    return m_entries.empty();
}

std::size_t MessageQueue::Size() const
{
    const std::scoped_lock lock(m_mutex);
    return m_bytes;
}

bool MessageQueue::IsOver(WireId machine) const
{
    const std::scoped_lock lock(m_mutex);
    return HeldBy(machine) > m_share || m_bytes > SharesInTotal * m_share;
}

bool MessageQueue::HasRoom(WireId machine) const
{
    const std::scoped_lock lock(m_mutex);
    return HeldBy(machine) <= m_share / 2 && m_bytes <= SharesInTotal * m_share / 2;
}

void MessageQueue::Drop(PlayerId player)
{
    const std::scoped_lock lock(m_mutex);
    for (auto at = m_entries.begin(); at != m_entries.end();) {
        if (at->Message.To != player) {
            ++at;
            continue;
        }
        Subtract(*at);
        at = m_entries.erase(at);
    }
}

void MessageQueue::Clear()
{
    const std::scoped_lock lock(m_mutex);
    m_entries.clear();
    m_bytesOf.clear();
    m_countOf.clear();
    m_bytes = 0;
}
} // namespace corvane::directplay
