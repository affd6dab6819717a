#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "session/practice/PracticeSession.h"

#include <cstdint>
#include <memory>
#include <string>

namespace corvane {
/// Keeps one practice session going over the loaded area, so that the connection window has it to offer.
class PracticeHost {
public:
    /// factory  makes the simulated members' peers; it and the grid must outlive the host
    PracticeHost(SessionPeerFactory& factory, const MagVarGrid& variation, std::uint64_t seed) noexcept
        : m_factory(factory), m_variation(variation), m_seed(seed)
    {
    }

    /// Makes a session over an area, unless one over it goes on. A failure leaves none.
    Result<void> HostOver(const AreaModel& area);
    /// Lives on to a time on a clock in seconds.
    void Advance(double nowS);

private:
    SessionPeerFactory& m_factory;
    const MagVarGrid& m_variation;
    std::uint64_t m_seed;
    std::string m_areaName;
    std::unique_ptr<PracticeSession> m_session;
};
} // namespace corvane
