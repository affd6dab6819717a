#pragma once

#include "core/Bytes.h"
#include "traffic/TrafficEvents.h"

#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane::test {
/// Whom a source's events have made appear, and how they were last told to be.
class Sky {
public:
    struct Seen {
        AircraftAppeared Told;
        TrafficReport Report;
        int Reports = 0;
    };

    void Take(const TrafficEvents& events)
    {
        for (const TrafficEvent& event : events)
            std::visit([this](const auto& told) { Take(told); }, event);
    }

    [[nodiscard]] const Seen* Find(std::string_view name) const
    {
        for (const auto& [key, seen] : m_seen)
            if (seen.Told.Name == name)
                return &seen;
        return nullptr;
    }
    [[nodiscard]] std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& [key, seen] : m_seen)
            names.push_back(seen.Told.Name);
        return names;
    }

    std::vector<std::string> Notices;
    std::vector<std::string> OutsidersLines;
    int Disorder = 0; ///< events of aircraft that were not there, or were already

private:
    void Take(const AircraftAppeared& told)
    {
        Disorder += m_seen.try_emplace(told.Key, Seen{told, {}, 0}).second ? 0 : 1;
    }
    void Take(const AircraftMoved& told)
    {
        if (Seen* const seen = Known(told.Key)) {
            seen->Report = told.Report;
            ++seen->Reports;
        }
    }
    void Take(const AircraftRenamed& told)
    {
        if (Seen* const seen = Known(told.Key))
            seen->Told.Name = told.Name;
    }
    void Take(const AircraftSaid& told) { Known(told.Key); }
    void Take(const OutsiderSaid& told) { OutsidersLines.push_back(told.Name + ": " + told.Text); }
    void Take(const AircraftVanished& told)
    {
        if (Known(told.Key) != nullptr)
            m_seen.erase(told.Key);
    }
    void Take(const SourceNotice& told) { Notices.push_back(told.Text); }

    Seen* Known(TrafficKey key)
    {
        const auto found = m_seen.find(key);
        if (found != m_seen.end())
            return &found->second;
        ++Disorder;
        return nullptr;
    }

    std::map<TrafficKey, Seen> m_seen;
};

inline ByteSpan BytesOf(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}
} // namespace corvane::test
