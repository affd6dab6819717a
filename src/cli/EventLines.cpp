#include "cli/EventLines.h"

namespace corvane {
void EventLines::Print(const char* event, const Json& members)
{
    Json line = {{"event", event}, {"time", static_cast<double>(m_end.ElapsedMs()) / 1000}};
    line.update(members);
    m_out << ToLine(line) << std::endl; // whoever reads along waits for it
}

void EventLines::PrintPlayer(const char* event, const PlayerRecord& player)
{
    Print(event, {{"Player", ToJson(player)}});
}

void EventLines::Listening(const std::string& address, std::uint16_t port)
{
    Print("listening", {{"address", address}, {"port", port}});
}

void EventLines::Joined(PlayerId ownPlayerId, std::string_view session)
{
    Print("joined", {{"OwnPlayerId", ownPlayerId}, {"Session", TextJson(session)}});
}

void EventLines::Chat(std::string_view from, std::string_view text)
{
    Print("chat", {{"From", TextJson(from)}, {"Text", TextJson(text)}});
}

static const char* IconName(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Information: return "information";
    case MessageIcon::Warning: return "warning";
    case MessageIcon::Critical: return "critical";
    }
    return "";
}

void EventLines::Notice(MessageIcon icon, std::string_view text)
{
    if (!m_end.HasCome())
        Print("notice", {{"Text", TextJson(text)}, {"Icon", IconName(icon)}});
}

void EventLines::Disconnected(std::string_view reason)
{
    Print("disconnected", {{"Reason", TextJson(reason)}});
}
} // namespace corvane
