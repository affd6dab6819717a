#pragma once

#include "traffic/TrafficEvents.h"

#include <cstddef>
#include <mutex>
#include <unordered_map>

namespace corvane {
/// What a source's thread hands to the program's thread. However long the program does not look, it holds no more than
/// one report for each aircraft, the aircraft that came and those that went since, and LineLimit lines: reports and
/// names replace older ones, and an aircraft that came and went meanwhile has never been there.
///
/// Safe to use from both threads.
class TrafficQueue {
public:
    static constexpr std::size_t LineLimit = 1000; ///< chat lines and notices that wait; later ones are lost

    void Push(TrafficEvents events);
    /// What waits, in the order that TrafficEvent promises.
    TrafficEvents Take();

private:
    /// What waits for one aircraft.
    struct Waiting {
        std::optional<AircraftAppeared> Appeared;
        std::optional<AircraftRenamed> Renamed;
        std::optional<AircraftMoved> Moved;
        bool Vanished = false;
    };
    void Add(TrafficEvent& event);
    void AddLine(TrafficEvent& event);
    void Forget(std::unordered_map<TrafficKey, Waiting>::iterator entry);

    std::mutex m_mutex;
    std::vector<TrafficKey> m_order; ///< of m_waiting, by the first event of each
    std::unordered_map<TrafficKey, Waiting> m_waiting;
    TrafficEvents m_lines;
};
} // namespace corvane
