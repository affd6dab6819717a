#pragma once

#include "core/Result.h"
#include "session/MemberManners.h"
#include "session/MessageCodec.h"
#include "session/SessionPeer.h"
#include "traffic/TrafficDetails.h"
#include "traffic/TrafficFeed.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

namespace corvane {
/// Members of a session on a network at most, the host included.
inline constexpr std::int32_t MostOnNetwork = 1000;

/// Texts are Windows-1252.
struct TrafficSessionOptions {
    std::string SessionName;
    std::string Password = {};
    std::string HostName;            ///< of the member that hosts and admits; it has no target
    std::int32_t MaxPlayers = 32767; ///< of the session, the host and others included; one place stays for another
    bool MigrateHost = false;        ///< another member takes the session over when this program ends
    std::string Address = {};        ///< of the connection; empty: the first that the factory's peers offer
    bool HostIsMember = false;       ///< the host introduces itself, hears what aircraft say, and says who spoke
    bool ShowMembers = false;        ///< the other members' pilots are told to the feed
    std::function<void(std::string_view)> OnNotice = {}; ///< of the link; none: the host says it
};

/// The bridge: turns any feed into members of a session. It hosts the session with the peers that a factory makes, in
/// memory or on a network, admits whoever asks while there is room, and gives every aircraft a player with a member's
/// manners. What the others say is told to the feed.
///
/// Players of this bridge are never told to its feed, so nothing goes round where two bridges meet.
class TrafficSession {
public:
    /// Creates the session with its host. The factory, feed and details must outlive it.
    static Result<std::unique_ptr<TrafficSession>> Create(SessionPeerFactory& factory, TrafficFeed& feed,
                                                          TrafficDetailsTable& details, TrafficSessionOptions options);
    ~TrafficSession();
    TrafficSession(const TrafficSession&) = delete;
    TrafficSession& operator=(const TrafficSession&) = delete;
    TrafficSession(TrafficSession&&) = delete;
    TrafficSession& operator=(TrafficSession&&) = delete;

    /// Answers what was received and does what the feed tells. An Error says how the session was lost.
    Result<void> Advance(std::int64_t nowMs);
    /// Whose lines are told to the feed as they are, where those of others have the speaker's name before them: the
    /// controller that this side is known by.
    void SetController(PlayerId member) noexcept { m_controller = member; }
    /// Lets every member leave, the host last. Nothing happens afterwards.
    void End();

    /// The entry under which others find the session.
    [[nodiscard]] const SessionEntry& Entry() const noexcept { return m_entry; }
    [[nodiscard]] const std::shared_ptr<SessionPeer>& Peer() const noexcept { return m_peer; }
    [[nodiscard]] PlayerId HostId() const noexcept { return m_hostId; }
    [[nodiscard]] const std::string& HostName() const noexcept { return m_options.HostName; }
    /// The aircraft that are members.
    [[nodiscard]] std::size_t AircraftCount() const noexcept { return m_keys.size(); }

private:
    /// An aircraft that is told of; its player, where there is room for one.
    struct Aircraft {
        PlayerId Id = 0; ///< 0: waiting for room
        AircraftAppeared Told;
    };
    /// A member of another program.
    struct Other {
        std::string Name;
        bool Shown = false; ///< to the feed, under that name
    };

    TrafficSession(TrafficFeed& feed, TrafficDetailsTable& details, TrafficSessionOptions options);

    // The session
    Result<void> Open(SessionPeerFactory& factory);
    void Send(PlayerId from, PlayerId to, ByteSpan message);
    void SendToOthers(PlayerId from, ByteSpan message);

    // What the feed tells
    void Apply(const AircraftAppeared& told);
    void Apply(const AircraftMoved& told);
    void Apply(const AircraftRenamed& told);
    void Apply(const AircraftSaid& told);
    void Apply(const OutsiderSaid& told);
    void Apply(const AircraftVanished& told);
    void Apply(const SourceNotice& told);
    [[nodiscard]] bool HasPlace() const noexcept;
    void Enter(TrafficKey key, Aircraft& aircraft);
    void Introduce(const Aircraft& aircraft);
    [[nodiscard]] MemberManners HostManners() const;
    void Notice(const std::string& text);

    // What the others say
    Result<void> ReceiveAll();
    void Handle(const ReceivedMessage& message);
    void HandleAtHost(const MessageHeader& header, const ReceivedMessage& message);
    void AnswerRequest(MessageType request, const ReceivedMessage& message);
    void HandleChat(const MessageHeader& header, const ReceivedMessage& message);
    void HandlePosition(const MessageHeader& header, const ReceivedMessage& message);
    Other* FindOther(PlayerId id);
    void LookWhoIsThere();

    TrafficFeed& m_feed;
    TrafficDetailsTable& m_details;
    TrafficSessionOptions m_options;
    SessionEntry m_entry;
    std::shared_ptr<SessionPeer> m_peer; ///< until the end
    PlayerId m_hostId = 0;
    PlayerId m_controller = 0; ///< 0: nobody
    std::int64_t m_nextLookMs = 0;
    std::unordered_map<TrafficKey, Aircraft> m_aircraft;
    std::unordered_map<PlayerId, TrafficKey> m_keys; ///< of the aircraft that have a player
    std::unordered_map<PlayerId, Other> m_others;
};
} // namespace corvane
