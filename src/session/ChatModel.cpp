#include "session/ChatModel.h"

#include "core/Text.h"
#include "session/MessageCodec.h"

namespace corvane {
static constexpr std::string_view LineEnd = "\r\n";

static std::size_t LineEnds(std::string_view text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(LineEnd); at != std::string_view::npos; at = text.find(LineEnd, at + 1))
        ++count;
    return count;
}

void ChatModel::AddChatLine(std::string_view from, std::string_view text)
{
    std::string line = OneLine(from); // nobody else's words may look like a line of their own
    line += ": ";
    line += OneLine(text);
    line += LineEnd;
    m_history.insert(0, line);
    ++m_lineCount;
    if (m_history.size() > HistoryLimit) {
        const std::size_t lastWhole = m_history.rfind(LineEnd, HistoryLimit - LineEnd.size());
        const std::size_t keep = lastWhole == std::string::npos ? HistoryLimit : lastWhole + LineEnd.size();
        const std::string_view forgotten = std::string_view(m_history).substr(keep);
        m_lineCount -= LineEnds(forgotten) + (forgotten.ends_with(LineEnd) ? 0 : 1); // the banner has no line end
        m_history.resize(keep);
    }
}

void ChatModel::RefreshPlayerList(const PlayerTable& players)
{
    m_members.clear();
    for (const PlayerRecord& player : players.Players())
        m_members.push_back(OneLine(player.Name));
}

void ChatModel::Clear()
{
    m_history = Banner;
    m_lineCount = 1;
    m_members.clear();
}

static Result<void> SendLine(const SessionState& session, std::string_view text, ChatModel& log)
{
    const auto name = OwnFriendlyName(session); // first, so that a line that was sent can be shown
    if (!name)
        return name.error();
    if (auto sent = SendFromOwnPlayer(session, AllPlayers, EncodeMessage(ChatTextMessage{std::string(text)})); !sent)
        return sent;
    log.AddChatLine(*name, text);
    return {};
}

bool SendChat(const SessionState& session, std::string_view text, ChatModel& log, MessageBoxes& boxes)
{
    if (!session.HasOwnPlayer() || SendLine(session, text, log))
        return true;
    boxes.Inform("Failed to send message. Try to send it again.");
    return false;
}
} // namespace corvane
