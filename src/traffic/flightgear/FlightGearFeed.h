#pragma once

#include "core/Result.h"
#include "traffic/TrafficFeed.h"
#include "traffic/flightgear/FlightGearSource.h"

#include <memory>
#include <string>

namespace corvane {
/// Where FlightGear's traffic comes from.
struct FlightGearLink {
    std::string PartnerHost; ///< name or IPv4 address of a relay, or of a machine where another program runs
    std::uint16_t PartnerPort = FlightGearPort;
    std::string BindAddress;      ///< of this machine; empty: any
    std::uint16_t ListenPort = 0; ///< 0: any that is free
    FlightGearStation Station;    ///< its clock and its partner's name are filled in
};

/// FlightGear's multiplayer traffic over UDP. One socket, on a thread of its own, sends and receives; what comes from
/// other addresses than the partner's is dropped. A partner that is not found, refuses or falls silent is no end.
class FlightGearFeed final : public TrafficFeed {
public:
    /// Takes the socket and starts the thread. An Error says what cannot be had.
    static Result<std::unique_ptr<FlightGearFeed>> Start(FlightGearLink link);
    ~FlightGearFeed() override;
    FlightGearFeed(const FlightGearFeed&) = delete;
    FlightGearFeed& operator=(const FlightGearFeed&) = delete;
    FlightGearFeed(FlightGearFeed&&) = delete;
    FlightGearFeed& operator=(FlightGearFeed&&) = delete;

    [[nodiscard]] std::string Name() const override;
    TrafficEvents Take(std::int64_t nowMs) override;
    void Tell(const TrafficWord& word) override;
    [[nodiscard]] bool CanBeTalkedTo() const override { return true; }
    [[nodiscard]] std::string Health() const override;

    [[nodiscard]] std::string LocalAddress() const;
    [[nodiscard]] std::uint16_t LocalPort() const;
    /// Datagrams read from the socket so far.
    [[nodiscard]] std::uint64_t Received() const;

private:
    class Impl;
    explicit FlightGearFeed(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};
} // namespace corvane
