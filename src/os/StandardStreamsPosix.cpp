#include "os/StandardStreams.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace corvane {
bool IsTerminal(int descriptor) noexcept
{
    return isatty(descriptor) != 0;
}

std::optional<std::size_t> ReadWaiting(int descriptor, std::span<char> buffer) noexcept
{
    pollfd waiting{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (poll(&waiting, 1, 0) <= 0)
        return std::nullopt;
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return std::nullopt;
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}
} // namespace corvane
