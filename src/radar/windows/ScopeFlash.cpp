#include "radar/windows/ScopeFlash.h"

#include <QPainter>

namespace corvane {
static constexpr int RingPx = 48;

ScopeFlash::ScopeFlash(QWidget& scope, QPoint center) : QWidget(&scope)
{
    constexpr int BlinkMs = 200;
    constexpr int Changes = 8;
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(center.x() - RingPx / 2, center.y() - RingPx / 2, RingPx, RingPx);
    connect(&m_blink, &QTimer::timeout, this, [this] {
        setVisible(!isVisible());
        if (++m_changes == Changes)
            deleteLater();
    });
    m_blink.start(BlinkMs);
    show();
}

void ScopeFlash::paintEvent(QPaintEvent* /*event*/)
{
    constexpr int LinePx = 3;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, LinePx));
    painter.drawEllipse(rect().adjusted(LinePx, LinePx, -LinePx, -LinePx));
}
} // namespace corvane
