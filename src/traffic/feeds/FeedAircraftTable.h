#pragma once

#include "traffic/TrafficEvents.h"
#include "traffic/feeds/FeedReport.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace corvane {
/// When what a report tells was so, in milliseconds on a clock that never goes back.
struct FeedTimes {
    std::int64_t HeardMs = 0;    ///< the newest of it
    std::int64_t PositionMs = 0; ///< of the position, if the report has one
    std::int64_t LastWordMs = 0; ///< from here on the aircraft's time runs until it is gone
    std::uint32_t List = 0;      ///< the list that the report stands in; see DropUnlisted
};

/// The aircraft of a feed, each known by its address: puts together what single reports tell, and turns it into
/// traffic. An aircraft appears with its first position, under its callsign, or its address while that is unknown.
///
/// Wrong decodes are common at the edge of a receiver's range: a position that could not be reached from the last one
/// is held back until a second one agrees with it.
class FeedAircraftTable {
public:
    static constexpr std::int64_t GoneAfterMs = 60000;
    /// Three times what is in the air over the whole world; new addresses beyond are not taken up.
    static constexpr std::size_t MostAircraft = 65536;

    void Apply(const FeedReport& report, const FeedTimes& times);
    /// Removes every aircraft of which no report stood in this list.
    void DropUnlisted(std::uint32_t list);
    /// Removes the aircraft whose time is over.
    void Advance(std::int64_t nowMs);
    /// What has happened since the last time: one report for an aircraft at most, the newest.
    TrafficEvents TakeEvents();

    [[nodiscard]] bool Contains(FeedAddress address) const { return m_aircraft.contains(address); }
    /// Those with a position and those without.
    [[nodiscard]] std::size_t Count() const noexcept { return m_aircraft.size(); }

private:
    struct Fix {
        LatLon Position;
        std::int64_t AtMs = 0;
    };
    struct Aircraft {
        TrafficKey Key = 0; ///< 0 until it has appeared
        std::string Callsign;
        std::string Category;
        std::string TypeName;
        std::optional<Fix> Last;
        std::optional<Fix> HeldBack; ///< a position that does not fit the last one
        TrafficReport Report;
        bool SquawkEmergency = false;
        bool FlagEmergency = false;
        std::int64_t LastWordMs = 0;
        std::int64_t ToldMs = 0; ///< when it was heard what the last report was made of
        std::uint32_t List = 0;
        bool Waiting = false; ///< its address stands in m_waiting
        bool Moved = false;
        bool Renamed = false;
    };
    using Map = std::unordered_map<FeedAddress, Aircraft>;

    static bool Agree(const Fix& earlier, const Fix& later) noexcept;
    static void TakeValues(Aircraft& aircraft, const FeedReport& report);
    /// Whether the position was taken rather than held back.
    static bool TakePosition(Aircraft& aircraft, LatLon position, std::int64_t atMs);
    static bool TellsOfFlight(const FeedReport& report) noexcept;
    void Tell(FeedAddress address, Aircraft& aircraft);
    template <class IsGone> void DropWhere(IsGone isGone);
    void Drop(Map::iterator aircraft);

    Map m_aircraft;
    std::vector<FeedAddress> m_waiting; ///< whose events are to be told
    TrafficEvents m_events;
    TrafficKey m_lastKey = 0;
    std::int64_t m_nextSweepMs = 0;
};
} // namespace corvane
