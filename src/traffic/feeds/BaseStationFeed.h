#pragma once

#include "traffic/TrafficFeed.h"
#include "traffic/feeds/BaseStationSource.h"
#include "traffic/feeds/FeedPlace.h"
#include "traffic/feeds/LinkReport.h"
#include "traffic/feeds/TextStream.h"

namespace corvane {
/// The aircraft of a receiver that offers BaseStation text.
class BaseStationFeed final : public TrafficFeed {
public:
    explicit BaseStationFeed(const FeedPlace& place);

    [[nodiscard]] std::string Name() const override { return "Aircraft feed " + m_report.Place(); }
    TrafficEvents Take(std::int64_t nowMs) override;
    void Tell(const TrafficWord& /*word*/) override {}
    [[nodiscard]] bool CanBeTalkedTo() const override { return false; }
    [[nodiscard]] std::string Health() const override;

private:
    BaseStationSource m_source;
    TextStream m_stream;
    LinkReport m_report;
};
} // namespace corvane
