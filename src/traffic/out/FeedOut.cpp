#include "traffic/out/FeedOut.h"

#include "traffic/feeds/FeedPlace.h"

namespace corvane {
Result<FeedOutPlace> ParseFeedOutPlace(std::string_view text)
{
    constexpr std::string_view Prefix = "sbs:";
    if (!text.starts_with(Prefix))
        return Fail('"' + std::string(text) + '"', "must have the form sbs:PORT or sbs:ADDRESS:PORT");
    const std::string_view rest = text.substr(Prefix.size());
    const bool portAlone = rest.find(':') == std::string_view::npos;
    const FeedOutPlace usual;
    const auto place = ParseHostAndPort(portAlone ? usual.Address + ':' + std::string(rest) : std::string(rest), 0);
    if (!place)
        return Fail('"' + std::string(text) + '"', place.error().Why);
    return FeedOutPlace{place->Host, place->Port};
}

Result<std::unique_ptr<FeedOut>> OpenFeedOut(std::string_view text, const MagVarGrid& magVar,
                                             const TrafficDetailsTable* details)
{
    const auto place = ParseFeedOutPlace(text);
    if (!place)
        return place.error();
    return FeedOut::Open(*place, magVar, details);
}

std::string TrafficStatus(std::string_view health, const FeedOut* out)
{
    std::string status(health);
    if (out == nullptr)
        return status;
    const std::size_t readers = out->Server().ReaderCount();
    status.append(status.empty() ? "" : "; ").append("offered at port ") += std::to_string(out->Server().Port());
    status += ", " + std::to_string(readers) + (readers == 1 ? " reader" : " readers");
    return status;
}

Result<std::unique_ptr<FeedOut>> FeedOut::Open(const FeedOutPlace& place, const MagVarGrid& magVar,
                                               const TrafficDetailsTable* details)
{
    auto server = LineServer::Open(place.Address, place.Port);
    if (!server)
        return server.error();
    return std::unique_ptr<FeedOut>(new FeedOut(*std::move(server), magVar, details));
}

void FeedOut::Tick(std::span<const PlayerRecord> players, std::int64_t nowMs)
{
    if (m_server->Accept())
        m_lines.RepeatAll();
    m_server->Send(m_lines.Due(players, nowMs, BaseStationTime()));
}
} // namespace corvane
