#pragma once

#include "session/SessionPeer.h"

#include <cstdint>
#include <optional>

namespace corvane {
/// What a member tells of its radios, which session messages do not carry.
struct MemberRadio {
    std::optional<std::uint16_t> Squawk; ///< four octal digits as a decimal number: 0021 is 21
    std::optional<std::int32_t> FrequencyKhz;
    bool operator==(const MemberRadio&) const = default;
};

/// Whoever knows the members' radios.
class MemberRadios {
public:
    virtual ~MemberRadios() = default;
    [[nodiscard]] virtual MemberRadio RadioOf(PlayerId member) const = 0;
};
} // namespace corvane
