#include "app/windows/ClosedWindows.h"

#include <QThread>

namespace corvane {
static constexpr int DeletionIntervalMs = 50;

ClosedWindows::ClosedWindows()
{
    m_deletion.setInterval(DeletionIntervalMs);
    connect(&m_deletion, &QTimer::timeout, this, &ClosedWindows::DeleteWhenIdle);
}

void ClosedWindows::Begin()
{
    m_outermostLoop = thread()->loopLevel();
}

void ClosedWindows::DeleteWhenIdle()
{
    if (thread()->loopLevel() > m_outermostLoop)
        return;
    m_deletion.stop();
    Delete();
}

/// In the order of their closing: the radar writes to the chat.
void ClosedWindows::Delete()
{
    for (std::unique_ptr<QWidget>& closed : std::exchange(m_closed, {}))
        closed.reset();
}
} // namespace corvane
