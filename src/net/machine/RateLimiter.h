#pragma once

#include "net/wire/Protocol.h"

#include <map>

namespace corvane::directplay {
/// Counts what each source address asks for, so that nobody can make us work or connect out at will.
class RateLimiter {
public:
    /// True when the source may have one more answer within this second.
    bool Allow(std::uint32_t ip, Millis now);

private:
    struct Second {
        Millis Start{};
        unsigned Count = 0;
    };
    std::map<std::uint32_t, Second> m_sources;
};
} // namespace corvane::directplay
