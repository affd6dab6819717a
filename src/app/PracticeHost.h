#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "session/practice/PracticeSession.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace corvane {
/// Keeps one practice session going over the loaded area, so that the connection window has it to offer.
class PracticeHost {
public:
    /// factory            makes the simulated members' peers; it and the grid must outlive the host
    /// connectionAddress  of the connection type on which the session is offered
    PracticeHost(SessionPeerFactory& factory, std::string connectionAddress, const MagVarGrid& variation,
                 std::uint64_t seed) noexcept
        : m_factory(factory), m_connectionAddress(std::move(connectionAddress)), m_variation(variation), m_seed(seed)
    {
    }

    /// Makes a session over an area, unless one over it goes on. A failure leaves none.
    Result<void> HostOver(const AreaModel& area);
    /// Lives on to a time on a clock in seconds.
    void Advance(double nowS);

private:
    SessionPeerFactory& m_factory;
    std::string m_connectionAddress;
    const MagVarGrid& m_variation;
    std::uint64_t m_seed;
    std::string m_areaName;
    std::unique_ptr<PracticeSession> m_session;
};
} // namespace corvane
