#pragma once

#include "traffic/TrafficEvents.h"

#include <cstdint>
#include <string>

namespace corvane {
/// Traffic that goes on by itself, as the bridge takes it: a source with its sockets and its thread, one that is played
/// in a test, or another feed of which only a part is let through. All calls are made on one thread and never wait.
///
/// Destroying it ends it.
class TrafficFeed {
public:
    virtual ~TrafficFeed() = default;

    /// What the list of sessions calls it, such as "FlightGear at 127.0.0.1:5000".
    [[nodiscard]] virtual std::string Name() const = 0;
    /// What happened since the last time, in the order that TrafficEvent promises.
    virtual TrafficEvents Take(std::int64_t nowMs) = 0;
    virtual void Tell(const TrafficWord& word) = 0;
    [[nodiscard]] virtual bool CanBeTalkedTo() const = 0;
    /// The link in a few words, such as "127.0.0.1:5000, 12 pilots, last heard 1 s ago".
    [[nodiscard]] virtual std::string Health() const = 0;
};
} // namespace corvane
