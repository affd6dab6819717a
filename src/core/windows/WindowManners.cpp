#include "core/windows/WindowManners.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QRubberBand>
#include <QTimer>
#include <QWindow>

namespace corvane {
namespace {
class ReturnKey final : public QObject {
public:
    ReturnKey(QWidget& window, QPushButton* otherwise) : QObject(&window), m_otherwise(otherwise)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        auto* button = qobject_cast<QPushButton*>(static_cast<QWidget*>(watched)->focusWidget());
        if (button == nullptr)
            button = m_otherwise;
        if (button == nullptr)
            return false;
        button->click();
        return true;
    }

private:
    QPointer<QPushButton> m_otherwise;
};
} // namespace

void BelongTo(QWidget& window, QWidget& owner)
{
    window.setWindowFlag(Qt::Dialog); // X11 tells the desktop of the owner of such windows alone
    for (const QWidget* widget : {&window, &owner})
        static_cast<void>(widget->winId()); // which makes the window handle
    window.windowHandle()->setTransientParent(owner.windowHandle());
}

void BringUp(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

void Flash(QWidget& window)
{
    constexpr int ForMs = 500;
    QApplication::alert(&window, ForMs);
    auto* const frame = new QRubberBand(QRubberBand::Rectangle, &window);
    frame->setGeometry(window.rect());
    frame->show();
    QTimer::singleShot(ForMs, frame, &QObject::deleteLater);
}

void PressOnReturn(QWidget& window, QPushButton* otherwise)
{
    new ReturnKey(window, otherwise); // the window's
}
} // namespace corvane
