#include "follow/HostWatch.h"

#include "session/ForwardingPeer.h"

#include <deque>
#include <utility>

namespace corvane {
/// What the hosting member heard and said, until the watch has read it.
struct HostWatch::Overheard {
    static constexpr std::size_t MostKept = 100000; ///< a flood is not worth more memory

    PlayerId Host = 0;
    std::deque<ReceivedMessage> Messages;

    /// Keeps what tells of the members; requests are answered by the session itself.
    void Note(PlayerId from, ByteSpan content)
    {
        if (from == SystemSender || Messages.size() >= MostKept)
            return;
        const auto message = DecodeMessage(content);
        if (!message || std::holds_alternative<PlainMessage>(*message) ||
            std::holds_alternative<UnknownMessage>(*message))
            return;
        Messages.push_back({from, Host, Bytes(content.begin(), content.end())});
    }
};

/// The hosted session's peer, listened to. The first player that is created on it hosts.
class HostWatch::HostingPeer final : public ForwardingPeer {
public:
    HostingPeer(std::shared_ptr<SessionPeer> target, std::shared_ptr<Overheard> overheard)
        : ForwardingPeer(std::move(target)), m_overheard(std::move(overheard))
    {
    }

    Result<PlayerId> CreatePlayer(std::string_view friendlyName, std::string_view formalName) override
    {
        auto id = ForwardingPeer::CreatePlayer(friendlyName, formalName);
        if (id && m_overheard->Host == 0)
            m_overheard->Host = *id;
        return id;
    }

    Result<ReceivedMessage> Receive() override
    {
        auto message = ForwardingPeer::Receive();
        if (message && message->To == m_overheard->Host)
            m_overheard->Note(message->From, message->Content);
        return message;
    }

    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override
    {
        if (from == m_overheard->Host && (to == AllPlayers || to == from)) // nobody is sent what he says himself
            m_overheard->Note(from, message);
        return ForwardingPeer::Send(from, to, flags, message);
    }

private:
    std::shared_ptr<Overheard> m_overheard;
};

/// The pump's peer: it receives what was overheard, and asks questions in the hosting member's name.
class HostWatch::WatchingPeer final : public ForwardingPeer {
public:
    /// announce  how the host introduces itself
    WatchingPeer(std::shared_ptr<SessionPeer> host, std::shared_ptr<Overheard> overheard, MessageType announce)
        : ForwardingPeer(std::move(host)), m_overheard(std::move(overheard)), m_announce(announce)
    {
    }

    Result<std::int32_t> GetMessageCount(PlayerId player) override
    {
        if (auto alive = ForwardingPeer::GetMessageCount(player); !alive)
            return alive;
        return static_cast<std::int32_t>(m_overheard->Messages.size());
    }

    Result<ReceivedMessage> Receive() override
    {
        if (m_overheard->Messages.empty())
            return Fail("Receive", "no message waits");
        ReceivedMessage message = std::move(m_overheard->Messages.front());
        m_overheard->Messages.pop_front();
        // A sender whom nobody knows any more has nothing to tell; the pump would take it for the end.
        if (!GetPlayerFriendlyName(message.From))
            message.From = SystemSender;
        return message;
    }

    Result<void> Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message) override
    {
        const auto header = DecodeHeader(message);
        if (!header ||
            (header->Type != MessageType::IdentifyRequest && header->Type != MessageType::AircraftInfoRequest))
            return {}; // the hosted session says that itself
        if (to != m_overheard->Host)
            return ForwardingPeer::Send(from, to, flags, message);
        if (header->Type == MessageType::IdentifyRequest) // the host goes by another name now
            m_overheard->Note(to, EncodeMessage(AnnounceMessage{m_announce, to}));
        return {};
    }

private:
    std::shared_ptr<Overheard> m_overheard;
    MessageType m_announce;
};

HostWatch::HostWatch(SessionPeerFactory& factory, const MagVarGrid& magVar, SessionEvents& events)
    : m_factory(factory),
      m_events(events),
      m_overheard(std::make_shared<Overheard>()),
      m_pump(m_session, m_players, magVar, events)
{
}

Result<std::unique_ptr<SessionPeer>> HostWatch::DirectPlayCreate()
{
    auto peer = m_factory.DirectPlayCreate();
    if (!peer)
        return peer;
    return std::unique_ptr<SessionPeer>(
        std::make_unique<HostingPeer>(std::shared_ptr<SessionPeer>(*std::move(peer)), m_overheard));
}

void HostWatch::Begin(const WatchedHost& host, std::int64_t nowMs)
{
    const MessageType announce = host.IsPilot ? MessageType::PilotAnnounce : MessageType::ObserverAnnounce;
    m_session.SessionPeer = std::make_unique<WatchingPeer>(host.Peer, m_overheard, announce);
    m_session.SessionGuid = host.Session.InstanceGuid;
    m_session.SessionMaxPlayers = host.Session.MaxPlayers;
    m_session.OwnPlayerId = host.Id;
    m_session.SessionJoined = true;
    m_events.Joined(host.Id, host.Session.Name);
    m_players.Append(host.Name, host.Id, host.IsPilot ? PilotRole : ObserverRole);
    m_events.PlayerAdded(m_players.Players().front());
    m_pump.Start(nowMs);
}

Result<void> HostWatch::Tick(std::int64_t nowMs)
{
    return m_pump.Tick(nowMs);
}
} // namespace corvane
