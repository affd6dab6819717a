#pragma once

#include "core/Bytes.h"
#include "traffic/TrafficEvents.h"

#include <cstdint>
#include <vector>

namespace corvane {
/// What turns the bytes of one kind of traffic into events, and words into bytes: a state machine that has neither
/// sockets nor a clock. It runs wherever its link puts it, on one thread.
///
/// Times are milliseconds on any clock that never goes back. Bytes are hostile: whatever comes, the memory held is
/// bounded, and the work by the bytes.
class TrafficSource {
public:
    virtual ~TrafficSource() = default;

    /// A datagram has come, or the next piece of a stream.
    virtual void Receive(ByteSpan bytes, std::int64_t nowMs) = 0;
    /// A stream begins anew: what came before belongs to another one.
    virtual void Restart(std::int64_t /*nowMs*/) {}
    /// Time goes on: what is silent vanishes, what is due to be sent becomes output. Called some ten times a second.
    virtual void Advance(std::int64_t nowMs) = 0;
    /// A source that cannot be talked to takes no notice.
    virtual void Tell(const TrafficWord& /*word*/) {}

    /// What happened since the last time, in order.
    virtual TrafficEvents TakeEvents() = 0;
    /// Datagrams to be sent since the last time.
    virtual std::vector<Bytes> TakeOutput() { return {}; }
};
} // namespace corvane
