#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <utility>
#include <vector>

namespace corvane {
/// Where windows end. A closed window may still be in the middle of something, a message box of its own included: it
/// waits here, hidden, until the event loop is back where it was when Begin was called.
class ClosedWindows final : public QObject {
public:
    ClosedWindows();
    ClosedWindows(const ClosedWindows&) = delete;
    ClosedWindows& operator=(const ClosedWindows&) = delete;
    ClosedWindows(ClosedWindows&&) = delete;
    ClosedWindows& operator=(ClosedWindows&&) = delete;
    ~ClosedWindows() override { Delete(); }

    /// Nothing of any window is under way in the event loop that runs now.
    void Begin();
    /// Hides a window for good, if there is one; listener hears no more of it.
    template <class Window> void Take(std::unique_ptr<Window>& window, const QObject& listener)
    {
        std::unique_ptr<Window> closed = std::move(window);
        if (!closed)
            return;
        closed->hide();
        closed->disconnect(&listener);
        m_closed.push_back(std::move(closed));
        m_deletion.start();
    }

private:
    void DeleteWhenIdle();
    void Delete();

    std::vector<std::unique_ptr<QWidget>> m_closed;
    QTimer m_deletion;
    int m_outermostLoop = 0;
};
} // namespace corvane
