#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "practice/PracticeSession.h"
#include "practice/PracticeTransport.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
/// Keeps one practice session going over the loaded area, so that the connection window has it to offer.
class PracticeHost {
public:
    /// transport  it and the grid must outlive the host
    PracticeHost(PracticeTransport& transport, const MagVarGrid& variation, std::uint64_t seed) noexcept
        : m_transport(transport), m_variation(variation), m_seed(seed)
    {
    }

    /// What can happen in the session, besides that pilots come and go as they like.
    [[nodiscard]] const std::vector<PracticeScenario>& Scenarios() const noexcept { return m_scenarios; }
    void SetScenarios(std::vector<PracticeScenario> scenarios)
    {
        m_scenarios = std::move(scenarios);
        m_playing.reset();
    }
    /// Adds a scenario, which sessions made from now on play.
    void AddAndPlay(PracticeScenario scenario)
    {
        m_playing = m_scenarios.size();
        m_scenarios.push_back(std::move(scenario));
    }
    /// Makes the session anew with the scenario of that index; without one, pilots come and go.
    Result<void> Play(std::optional<std::size_t> scenario, const AreaModel& area);
    /// The index of the scenario that is played; nothing while none is.
    [[nodiscard]] std::optional<std::size_t> Playing() const noexcept { return m_playing; }
    /// Makes a session over an area, unless one over it goes on. A failure leaves none.
    Result<void> HostOver(const AreaModel& area);
    /// Makes the session anew under an address of this machine, where other machines can join it; an empty address
    /// takes it back into memory. A failure leaves one in memory.
    Result<void> ServeAt(std::string_view address, const AreaModel& area);
    /// Where other machines can join the session; empty while they cannot.
    [[nodiscard]] const std::string& ServedAt() const noexcept { return m_address; }
    /// The wind in the session of that instance GUID; nothing where that is another's.
    [[nodiscard]] std::optional<PracticeWind> WindIn(std::string_view instanceGuid) const;
    /// Where a pilot of the session flies to, by its callsign: an ICAO code; empty where it goes to no airport.
    [[nodiscard]] std::string DestinationOf(std::string_view callsign) const;
    /// Lives on to a time on a clock in seconds.
    void Advance(double nowS);

private:
    void End();

    PracticeTransport& m_transport;
    const MagVarGrid& m_variation;
    std::uint64_t m_seed; ///< of the next session
    std::vector<PracticeScenario> m_scenarios;
    std::optional<std::size_t> m_playing; ///< index of it; below their number
    std::string m_address;
    std::string m_areaName;
    std::unique_ptr<PracticeSession> m_session;
};
} // namespace corvane
