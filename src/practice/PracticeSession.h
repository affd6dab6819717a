#pragma once

#include "practice/PracticeCrew.h"
#include "practice/PracticeOptions.h"
#include "practice/ScenarioDirector.h"
#include "practice/TrafficMaker.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
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
    [[nodiscard]] bool IsOver() const noexcept { return Members().empty(); }

    [[nodiscard]] const PracticeCrew::List& Members() const noexcept { return m_crew.Members(); }
    /// The member that admits others; null while nobody here does.
    [[nodiscard]] const PracticeMember* Host() const noexcept { return m_crew.Host(); }
    /// Where a pilot flies to, by its name: an ICAO code; empty where it goes to no airport or is not there.
    [[nodiscard]] std::string DestinationOf(std::string_view name) const;
    /// The entry under which others find the session.
    [[nodiscard]] const SessionEntry& Entry() const noexcept { return m_entry; }

private:
    PracticeSession(SessionPeerFactory& factory, PracticeScene scene, const MagVarGrid& grid, PracticeOptions options);

    // Joining
    Result<void> Open();
    Result<void> OpenAsHost();
    Result<SessionEntry> FindOwnSession(const std::vector<SessionEntry>& before);
    Result<PracticeMember*> AddMember(std::shared_ptr<SessionPeer> peer, std::string name, std::optional<Pilot> pilot);
    Result<void> Join(std::string name, std::optional<Pilot> pilot);
    void JoinPilot();
    void JoinObserver();

    // Living
    void SeeGround();
    void LiveOneStep();
    void AnswerChat(PracticeMember& member);
    void AskForAdmissionAgain();
    [[nodiscard]] bool MayJoin() const noexcept;

    SessionPeerFactory* m_factory;
    PracticeScene m_scene;
    PracticeOptions m_options;
    PracticeRandom m_random;
    SessionEntry m_entry;
    std::int32_t m_group = 0;

    TrafficMaker m_traffic;
    PracticeCrew m_crew;
    GroundTraffic m_ground; ///< as it was before the present step, or when somebody came last
    std::optional<ScenarioDirector> m_director;
    std::optional<double> m_clockS; ///< lived up to here
};
} // namespace corvane
