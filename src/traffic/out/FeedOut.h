#pragma once

#include "traffic/out/LineServer.h"
#include "traffic/out/FeedTargets.h"

namespace corvane {
/// Where BaseStation text is offered: "sbs:PORT" at this machine alone, "sbs:ADDRESS:PORT" elsewhere.
struct FeedOutPlace {
    std::string Address = "127.0.0.1";
    std::uint16_t Port = 0;
    bool operator==(const FeedOutPlace&) const = default;
};
Result<FeedOutPlace> ParseFeedOutPlace(std::string_view text);

class FeedOut;
/// Opens the place that a text names. An Error says what is wrong with the text, or why the place cannot be had.
Result<std::unique_ptr<FeedOut>> OpenFeedOut(std::string_view text, const MagVarGrid& magVar,
                                             const TrafficDetailsTable* details);
/// How traffic from outside and to it is, in a line: health, if there is such traffic, and the readers of out, which
/// may be null.
std::string TrafficStatus(std::string_view health, const FeedOut* out);

/// Offers a session's targets to other programs, as a receiver would.
class FeedOut {
public:
    /// The grid and the details, which may be null, must outlive it. An Error says why the place cannot be had.
    static Result<std::unique_ptr<FeedOut>> Open(const FeedOutPlace& place, const MagVarGrid& magVar,
                                                 const TrafficDetailsTable* details);

    /// Does what is due. Called some ten times a second.
    void Tick(std::span<const PlayerRecord> players, std::int64_t nowMs);
    [[nodiscard]] const LineServer& Server() const noexcept { return *m_server; }

private:
    FeedOut(std::unique_ptr<LineServer> server, const MagVarGrid& magVar, const TrafficDetailsTable* details)
        : m_server(std::move(server)), m_lines(magVar, details)
    {
    }

    std::unique_ptr<LineServer> m_server;
    FeedTargets m_lines;
};
} // namespace corvane
