#include "traffic/feeds/LinkReport.h"

#include "core/Text.h"

#include <utility>

namespace corvane {
void LinkReport::Opened(TrafficEvents& events)
{
    m_open = true;
    m_why.clear();
    if (std::exchange(m_told, false))
        events.emplace_back(SourceNotice{m_place + " is there again"});
}

void LinkReport::Failed(const std::string& why, TrafficEvents& events)
{
    m_open = false;
    m_why = Utf8ToWindows1252(why); // the system speaks its user's language
    if (!std::exchange(m_told, true))
        events.emplace_back(SourceNotice{m_place + ": " + m_why + "; trying again"});
}

std::string LinkReport::Health(std::size_t aircraft) const
{
    std::string text = m_place;
    if (!m_open)
        text += ", " + (m_why.empty() ? "connecting" : m_why);
    text += ", " + std::to_string(aircraft) + " aircraft";
    if (m_open && m_heardMs)
        text += ", last heard " + std::to_string((m_nowMs - *m_heardMs) / 1000) + " s ago";
    else if (m_open)
        text += ", nothing heard yet";
    return text;
}
} // namespace corvane
