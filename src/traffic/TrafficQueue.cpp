#include "traffic/TrafficQueue.h"

#include <utility>

namespace corvane {
void TrafficQueue::Push(TrafficEvents events)
{
    const std::lock_guard lock(m_mutex);
    for (TrafficEvent& event : events)
        Add(event);
}

void TrafficQueue::AddLine(TrafficEvent& event)
{
    if (m_lines.size() < LineLimit)
        m_lines.push_back(std::move(event));
}

static TrafficKey KeyOf(const TrafficEvent& event)
{
    return std::visit(
        [](const auto& told) -> TrafficKey {
            if constexpr (requires { told.Key; })
                return told.Key;
            else
                return 0;
        },
        event);
}

void TrafficQueue::Add(TrafficEvent& event)
{
    if (std::holds_alternative<SourceNotice>(event) || std::holds_alternative<AircraftSaid>(event) ||
        std::holds_alternative<OutsiderSaid>(event))
        return AddLine(event);
    const TrafficKey key = KeyOf(event);
    const auto [entry, isNew] = m_waiting.try_emplace(key);
    if (isNew)
        m_order.push_back(key);
    Waiting& waiting = entry->second;
    if (auto* appeared = std::get_if<AircraftAppeared>(&event))
        waiting.Appeared = std::move(*appeared);
    else if (auto* moved = std::get_if<AircraftMoved>(&event))
        waiting.Moved = *moved;
    else if (auto* renamed = std::get_if<AircraftRenamed>(&event))
        waiting.Renamed = std::move(*renamed);
    else if (waiting.Appeared)
        Forget(entry);
    else
        waiting = {.Appeared = {}, .Renamed = {}, .Moved = {}, .Vanished = true};
}

/// An aircraft came and went. Its place in the order goes with the others' of its kind, before they are many.
void TrafficQueue::Forget(std::unordered_map<TrafficKey, Waiting>::iterator entry)
{
    m_waiting.erase(entry);
    if (m_order.size() > 2 * m_waiting.size() + LineLimit)
        std::erase_if(m_order, [this](TrafficKey key) { return !m_waiting.contains(key); });
}

TrafficEvents TrafficQueue::Take()
{
    std::unique_lock lock(m_mutex);
    const auto order = std::exchange(m_order, {});
    auto waiting = std::exchange(m_waiting, {});
    auto lines = std::exchange(m_lines, {});
    lock.unlock();
    TrafficEvents events;
    events.reserve(waiting.size() + lines.size());
    for (const TrafficKey key : order) {
        const auto found = waiting.find(key);
        if (found == waiting.end())
            continue;
        Waiting& told = found->second;
        if (told.Appeared)
            events.emplace_back(*std::move(told.Appeared));
        if (told.Renamed)
            events.emplace_back(*std::move(told.Renamed));
        if (told.Moved)
            events.emplace_back(*told.Moved);
    }
    for (TrafficEvent& line : lines)
        events.push_back(std::move(line));
    for (const TrafficKey key : order)
        if (const auto found = waiting.find(key); found != waiting.end() && found->second.Vanished)
            events.emplace_back(AircraftVanished{key});
    return events;
}
} // namespace corvane
