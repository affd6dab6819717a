#include "os/InterruptWatch.h"

#include <atomic>
#include <windows.h>

namespace corvane {
/// How many interrupts the watches have kept. Windows calls the handler on a thread of its own and hands it no context.
static std::atomic<int> interrupts = 0; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): see above

static BOOL WINAPI KeepInterrupt(DWORD /*kind*/)
{
    ++interrupts;
    return TRUE;
}

InterruptWatch::InterruptWatch()
{
    interrupts = 0;
    SetConsoleCtrlHandler(KeepInterrupt, TRUE);
}

InterruptWatch::~InterruptWatch()
{
    SetConsoleCtrlHandler(KeepInterrupt, FALSE);
}

bool InterruptWatch::Interrupted() const noexcept
{
    return interrupts > 0;
}
} // namespace corvane
