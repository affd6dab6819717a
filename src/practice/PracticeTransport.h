#pragma once

#include "session/ConnectionProvider.h"

#include <string_view>

namespace corvane {
/// Where practice sessions take place: in the program's memory, or on the network under an address of this machine.
/// Makes the peers both of the simulated members and of whoever joins them from this program.
class PracticeTransport : public ConnectionProvider {
public:
    /// For peers that are made from now on. An empty address means memory.
    virtual void ServeAt(std::string_view address) = 0;
    [[nodiscard]] virtual bool OnNetwork() const = 0;
};
} // namespace corvane
