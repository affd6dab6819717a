#pragma once

#include "practice/PracticeScenario.h"

#include <cstdint>
#include <optional>
#include <string>

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
    bool ComeAndGo = true;        ///< members join, leave, rename themselves and change their position messages
    double HostStaysS = 2 * 3600; ///< the host leaves some time after that, if it may; below 0: never
    std::optional<PracticeScenario> Scenario = {}; ///< who flies, instead of so many pilots who come and go
    double ShortPositionShare = 0.1;               ///< of the pilots: those that send PositionShort
};
} // namespace corvane
