#pragma once

#include "session/SessionPeer.h"

#include <string>

namespace corvane {
/// A way of reaching sessions that the program offers in its list of connection types; makes its peers.
class ConnectionProvider : public SessionPeerFactory {
public:
    /// As the list of connection types shows it.
    [[nodiscard]] virtual std::string Name() const = 0;
    /// Distinguishes this provider from the others; InitializeConnection takes it.
    [[nodiscard]] virtual std::string Address() const = 0;
};
} // namespace corvane
