#pragma once

#include <string>
#include <unistd.h>

namespace corvane::test {
/// The address of one of this test's own machines. Tests run side by side as processes: each takes a network of its own
/// out of 127/8, by its process id.
///
/// machine  1 to 254
inline std::string LoopbackAddress(int machine)
{
    const auto process = static_cast<unsigned>(getpid());
    return "127." + std::to_string(1 + process / 250 % 250) + "." + std::to_string(1 + process % 250) + "." +
           std::to_string(machine);
}
} // namespace corvane::test
