#include "follow/SessionFollower.h"

#include "core/NumberText.h"
#include "core/Text.h"
#include "session/ChatModel.h"

#include <utility>

namespace corvane {
SessionFollower::SessionFollower(SessionPeerFactory& factory, const MagVarGrid& magVar, SessionEvents& events,
                                 FollowOptions options)
    : m_factory(factory),
      m_events(events),
      m_options(std::move(options)),
      m_pump(m_session, m_players, magVar, events, m_options.Password),
      m_connection(factory, m_session, m_players, *this, m_pump.Boxes())
{
    m_session.TakesOver = m_options.TakesOver;
}

/// What is known of a failure that the user has been told in the program's words.
Error SessionFollower::Failure(std::string_view otherwise) const
{
    return m_connection.LastError().value_or(Fail("session", std::string(otherwise)));
}

std::optional<std::size_t> SessionFollower::WantedSession() const
{
    for (std::size_t i = 0; i < m_session.SessionList.size(); ++i)
        if (m_options.SessionName.empty() || m_session.SessionList[i].Name == m_options.SessionName)
            return i;
    return std::nullopt;
}

Result<void> SessionFollower::Join()
{
    m_connection.Load();
    m_connection.ConnectionTypeChosen(0);
    m_connection.LocateSession();
    if (m_connection.LastError())
        return *m_connection.LastError();
    const auto wanted = WantedSession();
    if (wanted)
        m_sessionName = m_session.SessionList[*wanted].Name;
    m_connection.JoinSession(wanted, m_options.Nickname);
    if (m_connection.State() == ConnectionState::Waiting)
        return {};
    if (wanted || m_options.SessionName.empty())
        return Failure(wanted ? "it cannot be joined" : "none was found");
    return Fail("session", "none of this name was found: " + Windows1252ToUtf8(m_options.SessionName));
}

void SessionFollower::SetTimers(bool running)
{
    m_startRetry = running;
}

void SessionFollower::OpenRadar()
{
    m_events.Joined(m_session.OwnPlayerId, m_sessionName);
    for (const PlayerRecord& player : m_players.Players())
        m_events.PlayerAdded(player);
    m_pump.Start(m_nowMs);
}

Result<void> SessionFollower::Tick(std::int64_t nowMs)
{
    m_nowMs = nowMs;
    if (std::exchange(m_startRetry, false)) {
        m_retry.Start(nowMs);
        m_waitingSinceMs = nowMs;
    }
    if (!m_session.SessionJoined)
        return AwaitAdmission();
    const Result<void> going = m_pump.Tick(nowMs);
    if (!going)
        Leave(going.error().Text());
    return going;
}

Result<void> SessionFollower::AwaitAdmission()
{
    m_connection.HandshakeTick();
    if (m_connection.State() == ConnectionState::Waiting && m_retry.Due(m_nowMs))
        m_connection.RetryTick();
    if (m_connection.State() == ConnectionState::Idle)
        return Failure("the host did not admit this member");
    if (m_connection.State() != ConnectionState::Waiting)
        return {};
    const std::int64_t waitedMs = m_nowMs - m_waitingSinceMs;
    if (waitedMs >= RetryIntervalMs && !std::exchange(m_saidThatItWaits, true))
        m_events.Notice(MessageIcon::Information, "Still waiting for the host to admit this member; it may be gone.");
    if (!m_options.AdmitWithinS || static_cast<double>(waitedMs) < *m_options.AdmitWithinS * 1000)
        return {};
    const Error late = Fail("session", "the host did not admit this member within " +
                                           NumberText(*m_options.AdmitWithinS) + " seconds");
    Leave(late.Text());
    return late;
}

void SessionFollower::Say(std::string_view text)
{
    const auto name = OwnFriendlyName(m_session);
    ChatModel unseen;
    if (SendChat(m_session, text, unseen, m_pump.Boxes()) && name)
        m_events.Chat(*name, text);
}

void SessionFollower::Leave(std::string_view reason)
{
    static_cast<void>(LeaveSession(m_factory, m_session, m_players)); // no other session follows
    m_events.Disconnected(reason);
}
} // namespace corvane
