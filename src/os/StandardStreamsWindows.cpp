#include "os/StandardStreams.h"

#include <algorithm>
#include <io.h>
#include <windows.h>

namespace corvane {
bool IsTerminal(int descriptor) noexcept
{
    return _isatty(descriptor) != 0;
}

/// How many bytes can be read at once; nothing while none can. The end of the input can be read: it gives 0 bytes.
static std::optional<DWORD> BytesToRead(HANDLE input, DWORD most) noexcept
{
    if (GetFileType(input) == FILE_TYPE_PIPE) {
        DWORD waiting = 0;
        if (PeekNamedPipe(input, nullptr, 0, nullptr, &waiting, nullptr) == 0)
            return most; // the other end has closed it: the read tells so
        return waiting == 0 ? std::nullopt : std::optional(std::min(waiting, most));
    }
    // A console signals its handle when there is something to read, a file always.
    return WaitForSingleObject(input, 0) == WAIT_OBJECT_0 ? std::optional(most) : std::nullopt;
}

std::optional<std::size_t> ReadWaiting(int descriptor, std::span<char> buffer) noexcept
{
    auto* const input = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); // the type that Windows gives it in
    const auto wanted = BytesToRead(input, static_cast<DWORD>(buffer.size()));
    if (!wanted)
        return std::nullopt;
    const int count = _read(descriptor, buffer.data(), *wanted);
    return count < 0 ? 0 : static_cast<std::size_t>(count);
}
} // namespace corvane
