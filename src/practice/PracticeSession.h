#pragma once

#include "practice/PracticeMember.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
struct PracticeOptions {
    std::uint64_t Seed = 1;
    int Pilots = 8;    ///< at most so many at a time, and at least three quarters of them
    int Observers = 1; ///< at most so many at a time
    std::string SessionName = "Practice";
    std::string Password = {};
    std::int32_t MaxPlayers = 0; ///< of the session; 0 leaves room for eight besides the simulated members
    bool MigrateHost = true;     ///< another member takes the session over when the host leaves
    std::string HostName = {};   ///< of a host that does not fly; empty: the first pilot hosts
    std::string Address = {};    ///< of the connection; empty: the first that the factory's peers offer
    /// Every member on a peer of its own, which joins by itself; otherwise all are players of the host's peer, as on a
    /// machine that takes part in a network session with several players.
    bool PeerForEach = true;
    bool ComeAndGo = true;           ///< members join, leave, rename themselves and change their position messages
    double HostStaysS = 2 * 3600;    ///< the host leaves some time after that, if it may; below 0: never
    double ShortPositionShare = 0.1; ///< of the pilots: those that send PositionShort
};

/// "Practice - " and the area's name.
std::string PracticeSessionName(std::string_view areaName);

/// A practice session: simulated members of a multiplayer session with whom a controller trains. It hosts the session,
/// admits whoever asks while there is room, flies its pilots, and answers as real members do; everything goes through
/// session messages alone. Driven by Advance; the same seed and the same messages give the same session.
///
/// The factory and the variation grid must outlive it.
class PracticeSession {
public:
    /// Creates the session with its host and first members. An Error says which operation failed.
    static Result<std::unique_ptr<PracticeSession>> Create(SessionPeerFactory& factory, PracticeScene scene,
                                                           const MagVarGrid& grid, PracticeOptions options);

    /// Answers what was received and lives up to a time on a clock in seconds that never goes back. Positions are sent
    /// about once a second of it, the newest alone. A pause longer than LongestPauseS is skipped, not flown.
    void Advance(double nowS);
    static constexpr double LongestPauseS = 600;

    /// Lets every member leave, the host last. Nothing happens afterwards.
    void End();
    /// True once no member is left.
    [[nodiscard]] bool IsOver() const noexcept { return m_members.empty(); }

    [[nodiscard]] const std::vector<std::unique_ptr<PracticeMember>>& Members() const noexcept { return m_members; }
    /// The member that admits others; null while nobody here does.
    [[nodiscard]] const PracticeMember* Host() const noexcept { return m_host; }
    /// The entry under which others find the session.
    [[nodiscard]] const SessionEntry& Entry() const noexcept { return m_entry; }

private:
    PracticeSession(SessionPeerFactory& factory, PracticeScene scene, const MagVarGrid& grid, PracticeOptions options);

    // Joining
    Result<void> Open();
    Result<void> OpenAsHost();
    Result<std::shared_ptr<SessionPeer>> ConnectedPeer();
    Result<SessionEntry> FindOwnSession(const std::vector<SessionEntry>& before);
    Result<PracticeMember*> AddMember(std::shared_ptr<SessionPeer> peer, std::string name, std::optional<Pilot> pilot);
    Result<void> Join(std::string name, std::optional<Pilot> pilot);
    void JoinPilot();
    void JoinObserver();
    std::string NewCallsign(AircraftKind kind);
    [[nodiscard]] AircraftKind NewKind();

    // Receiving
    void ReceiveAll();
    void ReceiveOn(SessionPeer& peer);
    void Handle(PracticeMember& member, const ReceivedMessage& message);
    void HandleAnnounce(PracticeMember& member, const MessageHeader& header, const ReceivedMessage& message) const;
    void HandleChat(PracticeMember& member, const MessageHeader& header, const ReceivedMessage& message) const;
    [[nodiscard]] bool HasRoom() const;
    [[nodiscard]] bool IsOwnMember(PlayerId id) const noexcept;
    [[nodiscard]] bool IsFromHost(const ReceivedMessage& message) const noexcept;

    // Living
    void LiveOneStep();
    static void AnswerChat(PracticeMember& member);
    void AskForAdmissionAgain();
    void ComeAndGo();
    void LetOneGo();
    void LetHostGo();
    void RenameOne();
    void ChangePositionsOfOne();
    void RemoveLost();
    [[nodiscard]] PracticeMember* RandomPilot();
    [[nodiscard]] int Count(bool pilots) const noexcept;
    [[nodiscard]] bool MayJoin() const noexcept;

    SessionPeerFactory* m_factory;
    PracticeScene m_scene;
    const MagVarGrid* m_grid;
    PracticeOptions m_options;
    PracticeRandom m_random;
    SessionEntry m_entry;
    std::int32_t m_group = 0;

    std::vector<std::unique_ptr<PracticeMember>> m_members; ///< in order of joining
    PracticeMember* m_host = nullptr;

    std::optional<double> m_clockS; ///< lived up to here
    double m_hostingS = 0;          ///< since the present host took over
};
} // namespace corvane
