#pragma once

#include "session/MemberRadio.h"
#include "session/PlayerTable.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace corvane {
/// The members of the session as the scope shows them; borrowed for one call. The controller's own entry, known by
/// either id or name, is never shown.
struct Pilots {
    std::span<PlayerRecord> Players; ///< in table order; only the drawing of targets writes, their MinimumAltitudeFt
    std::int32_t OwnPlayerId = 0;
    std::string_view OwnName;             ///< the controller's own friendly name in the session
    const MemberRadios* Radios = nullptr; ///< null: nobody knows them
};
} // namespace corvane
