#pragma once

#include "session/MemberRadio.h"
#include "traffic/TrafficEvents.h"

#include <optional>
#include <string>
#include <unordered_map>

namespace corvane {
/// What a source tells of an aircraft beyond what session messages carry.
struct TrafficDetails {
    std::string ShortType;
    std::string Title;
    std::optional<TrafficReport> Report; ///< the last one, as exact as it came: with transponder code and frequency
    bool operator==(const TrafficDetails&) const = default;
};

/// The details of a session's members, by player id. Empty in sessions that have no source behind them.
class TrafficDetailsTable final : public MemberRadios {
public:
    [[nodiscard]] const TrafficDetails* Find(PlayerId member) const noexcept
    {
        const auto found = m_details.find(member);
        return found == m_details.end() ? nullptr : &found->second;
    }
    [[nodiscard]] MemberRadio RadioOf(PlayerId member) const override
    {
        const TrafficDetails* const details = Find(member);
        if (details == nullptr || !details->Report)
            return {};
        return {details->Report->Squawk, details->Report->FrequencyKhz};
    }
    TrafficDetails& Of(PlayerId member) { return m_details[member]; }
    void Forget(PlayerId member) { m_details.erase(member); }
    void Clear() noexcept { m_details.clear(); }

private:
    std::unordered_map<PlayerId, TrafficDetails> m_details;
};
} // namespace corvane
