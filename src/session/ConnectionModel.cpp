#include "session/ConnectionModel.h"

#include "core/NumberText.h"
#include "core/Text.h"
#include "session/BusyFlag.h"
#include "session/MemberManners.h"
#include "session/PlayerTable.h"

#include <vector>

namespace corvane {
static constexpr std::string_view Disconnected = "Disconnected";

ConnectionModel::ConnectionModel(SessionPeerFactory& factory, SessionState& session, PlayerTable& players,
                                 ConnectionView& view, MessageBoxes& boxes)
    : m_factory(factory), m_session(session), m_players(players), m_view(view), m_boxes(boxes)
{
}

void ConnectionModel::Load()
{
    if (m_busy)
        return;
    m_joinAccepted = false;
    m_session.SessionJoined = false;
    m_session.RadarOpen = false;
    m_state = ConnectionState::Idle;
    m_chosenType.reset();
    if (auto created = CreateSessionObjects(m_factory, m_session); !created)
        m_lastError = created.error();
    m_view.SetConnections(m_session.ConnectionList);
}

void ConnectionModel::ConnectionTypeChosen(std::size_t index)
{
    if (m_busy)
        return;
    m_chosenType = index;
    StopTalking();
    static_cast<void>(CreateSessionObjects(m_factory, m_session)); // locating sessions tries again and reports it
}

/// Leaves whatever session there is and clears what was found.
void ConnectionModel::StopTalking()
{
    ReleaseSessionObjects(m_session);
    m_view.SetSessions({});
    m_view.SetTimers(false);
    m_view.SetStatus(Disconnected);
    m_state = ConnectionState::Idle;
}

void ConnectionModel::Reset()
{
    m_view.SetListsEnabled(true);
    StopTalking();
    static_cast<void>(CreateSessionObjects(m_factory, m_session)); // locating sessions tries again and reports it
}

void ConnectionModel::FailWith(Failure failure, const Error& error)
{
    m_lastError = error;
    if (m_exitWanted)
        return Reset();
    switch (failure) {
    case Failure::Enumeration: m_boxes.Inform("Error, canceled connection. Try to locate session again."); break;
    case Failure::Initialization:
        m_boxes.Warn(m_chosenType == std::size_t{0} ? "Error while the initialization of your LAN network card."
                                                    : "Error while the initialization of the type of connection.");
        break;
    case Failure::Listing:
        m_boxes.Warn("Error, in enumeration of multiplayer sessions. Try to locate session again.");
        break;
    case Failure::Joining: m_boxes.Warn("Failed to join game. Try to locate session again."); break;
    case Failure::PlayerCreation: m_boxes.Warn("Failed to create player. Try to locate session again."); break;
    }
    Reset();
}

void ConnectionModel::LocateSession()
{
    if (m_busy)
        return;
    {
        const BusyFlag busy(m_busy);
        m_session.LeaveOperation = false;
        FindSessions();
    }
    if (m_exitWanted)
        End();
}

void ConnectionModel::FindSessions()
{
    StopTalking();
    const Result<void> created = CreateSessionObjects(m_factory, m_session);
    m_view.SetListsEnabled(false);
    m_view.SetStatus("Looking for FS Server...");
    m_state = ConnectionState::Looking;
    if (!m_chosenType) {
        m_boxes.Inform("Please select one type of connection.");
        Reset();
    } else if (!created) {
        FailWith(Failure::Enumeration, created.error());
    } else {
        Locate();
    }
}

/// A session's line, such as "Traffic (3/8)"; an entry that no session can be opened by is damaged.
static Result<std::string> SessionLine(const SessionEntry& entry)
{
    if (entry.InstanceGuid.empty())
        return Fail("session \"" + Windows1252ToUtf8(entry.Name) + "\"", "its description is damaged");
    return OneLine(entry.Name) + " (" + NumberText(entry.CurrentPlayers) + "/" + NumberText(entry.MaxPlayers) + ")";
}

void ConnectionModel::Locate()
{
    if (*m_chosenType >= m_session.ConnectionList.size())
        return FailWith(Failure::Enumeration, Fail("connection type", "is no longer available"));
    const std::string address = m_session.ConnectionList[*m_chosenType].Address;
    SessionPeer& peer = *m_session.SessionPeer;
    if (auto initialized = peer.InitializeConnection(address); !initialized)
        return FailWith(Failure::Initialization, initialized.error());
    if (auto found = peer.GetDPEnumSessions(0, EnumSessionsAvailable); !found)
        return FailWith(Failure::Enumeration, found.error());
    auto found = peer.GetDPEnumSessions(0, EnumSessionsPasswordRequired); // lists the open ones again
    if (!found)
        return FailWith(Failure::Enumeration, found.error());
    std::vector<std::string> lines;
    for (const SessionEntry& entry : *found) {
        auto line = SessionLine(entry);
        if (!line)
            return FailWith(Failure::Listing, line.error());
        lines.push_back(std::move(*line));
    }
    m_view.SetListsEnabled(true);
    if (lines.empty())
        return StopTalking();
    m_session.SessionList = std::move(*found);
    m_view.SetSessions(lines);
    m_view.SetStatus("Done");
    m_state = ConnectionState::Listed;
}

void ConnectionModel::JoinSession(std::optional<std::size_t> selected, std::string_view nickname)
{
    if (m_busy)
        return;
    {
        const BusyFlag busy(m_busy);
        m_session.LeaveOperation = false;
        OpenSession(selected, nickname);
    }
    if (m_exitWanted)
        End();
}

void ConnectionModel::OpenSession(std::optional<std::size_t> selected, std::string_view nickname)
{
    const bool listed = selected && *selected < m_session.SessionList.size();
    if (!listed || nickname.empty())
        return RefuseSelection(listed, !nickname.empty());
    m_view.SetListsEnabled(false);
    m_view.SetStatus("Connecting...");
    m_state = ConnectionState::Connecting;
    Join(m_session.SessionList[*selected], nickname);
}

void ConnectionModel::RefuseSelection(bool selected, bool named)
{
    if (!selected)
        m_boxes.Warn("Please select a FS multiplayer session.");
    if (!named)
        m_boxes.Warn("Please write a nickname.");
    m_session.SessionList.clear();
    m_view.SetSessions({});
    m_view.SetTimers(false);
    m_view.SetStatus(Disconnected);
    m_state = ConnectionState::Idle;
}

void ConnectionModel::Join(SessionEntry entry, std::string_view nickname)
{
    // Compared whole: hosts that set any other flag beside these are joined without a question.
    constexpr std::uint32_t Protected = SessionKeepAlive + SessionPasswordRequired;
    if (entry.Flags == Protected || entry.Flags == Protected + SessionMigrateHost) {
        auto password = m_boxes.AskText(MessageTitle, "This session requires a password. Enter the password.");
        if (!password) { // nothing has been opened yet, so the list is still good
            m_view.SetListsEnabled(true);
            m_view.SetStatus("Done");
            m_state = ConnectionState::Listed;
            return;
        }
        entry.Password = std::move(*password);
    }
    m_session.SessionGuid = entry.InstanceGuid;
    m_session.SessionMaxPlayers = entry.MaxPlayers;
    if (auto opened = m_session.SessionPeer->Open(entry, OpenJoin); !opened)
        return FailWith(Failure::Joining, opened.error());
    if (auto created = CreateOwnPlayer(nickname); !created)
        return FailWith(Failure::PlayerCreation, created.error());
    m_view.SetTimers(true);
    m_view.SetListsEnabled(true); // a host may never answer: the user can locate another session meanwhile
    m_state = ConnectionState::Waiting;
}

Result<void> ConnectionModel::CreateOwnPlayer(std::string_view nickname)
{
    const auto id = m_session.SessionPeer->CreatePlayer("**" + std::string(nickname), MemberManners::FormalName);
    if (!id)
        return id.error();
    m_session.OwnPlayerId = *id;
    if (*id < 1) // the program's mark for having no player: no answer would ever be read
        return Fail("CreatePlayer", "the session gave the player id " + NumberText(*id));
    return RequestJoin();
}

Result<void> ConnectionModel::RequestJoin() const
{
    return SendFromOwnPlayer(m_session, AllPlayers, EncodeMessage(PlainMessage{MessageType::JoinRequest}));
}

void ConnectionModel::HandshakeTick()
{
    if (m_busy || m_state != ConnectionState::Waiting || !m_session.HasOwnPlayer())
        return;
    const BusyFlag busy(m_busy);
    static_cast<void>(ReadAnswers()); // a failure ends the tick quietly; the retry notices when the session is gone
}

Result<void> ConnectionModel::ReadAnswers()
{
    SessionPeer& peer = *m_session.SessionPeer;
    const auto count = peer.GetMessageCount(m_session.OwnPlayerId);
    if (!count)
        return count.error();
    for (std::int32_t i = 0; i < *count; ++i) {
        const auto message = peer.Receive();
        if (!message)
            return message.error();
        if (message->From == SystemSender)
            continue;
        const auto header = DecodeHeader(message->Content);
        if (!header)
            return header.error();
        if (header->Type == MessageType::JoinRefused) {
            Refused();
            return {};
        }
        if (header->Type != MessageType::PilotAnnounce)
            continue;
        const auto announce = DecodeAnnounce(*header, message->Content);
        if (!announce)
            return announce.error();
        if (announce->PlayerId == m_session.OwnPlayerId)
            return Accepted();
    }
    return {};
}

Result<void> ConnectionModel::Accepted()
{
    const auto name = OwnFriendlyName(m_session);
    if (!name)
        return name.error();
    m_players.Empty(); // an acceptance that failed half-way may have left an entry
    m_players.Append(*name, m_session.OwnPlayerId, PilotRole);
    const auto groups = m_session.SessionPeer->GetDPEnumGroups();
    if (!groups)
        return groups.error();
    for (const SessionMember& group : *groups) {
        if (group.ShortName != MemberManners::Group)
            continue;
        if (auto added = m_session.SessionPeer->AddPlayerToGroup(group.Id, m_session.OwnPlayerId); !added)
            return added;
    }
    m_joinAccepted = true;
    m_boxes.Inform("Connected to FS session!");
    Open();
    return {};
}

void ConnectionModel::Open()
{
    m_session.SessionJoined = true;
    m_session.RadarOpen = true;
    m_state = ConnectionState::Connected;
    m_view.SetStatus("Connected");
    m_view.SetTimers(false);
    m_view.SetStatus("Loading ATC's radar window, please wait...");
    m_view.OpenRadar();
}

void ConnectionModel::Refused()
{
    m_lastError = Fail("JoinRequest", "the session's host refused it");
    m_boxes.Warn("Connection refused.");
    m_session.SessionJoined = false;
    m_session.RadarOpen = false;
    m_view.SetTimers(false);
    Reset();
}

void ConnectionModel::RetryTick()
{
    if (m_busy || m_state != ConnectionState::Waiting || !m_session.HasOwnPlayer())
        return;
    const BusyFlag busy(m_busy);
    auto sent = SendFromOwnPlayer(m_session, AllPlayers, EncodeMessage(PlainMessage{MessageType::JoinRetry}));
    if (sent)
        sent = RequestJoin();
    if (!sent)
        FailWith(Failure::Joining, sent.error());
}

void ConnectionModel::Exit()
{
    if (m_joinAccepted)
        return;
    if (!m_busy)
        return End();
    m_exitWanted = m_state == ConnectionState::Looking || m_state == ConnectionState::Connecting;
    LeaveOperation();
}

void ConnectionModel::End()
{
    StopTalking();
    m_view.SetStatus("Please Wait...");
    m_view.EndProgram();
}
} // namespace corvane
