#include "radar/windows/ScopeWidget.h"

#include "core/Rounding.h"
#include "radar/RadarDisplay.h"
#include "radar/paint/QtRaster.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

namespace corvane {
ScopeWidget::ScopeWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

void ScopeWidget::SetDisplay(RadarDisplay* display)
{
    m_display = display;
    update();
}

/// The widget's pixel under the pointer.
static ScopePoint PixelAt(const QPointF& position)
{
    return {RoundTo<std::int32_t>(position.x()), RoundTo<std::int32_t>(position.y())};
}

void ScopeWidget::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (m_display == nullptr) {
        painter.fillRect(rect(), Qt::black);
        return;
    }
    if (m_density != devicePixelRatioF()) {
        m_density = devicePixelRatioF();
        emit DensityChanged();
    }
    m_display->Draw();
    QImage picture = BorrowAsQImage(m_display->Picture());
    picture.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(QPoint(0, 0), picture);
}

void ScopeWidget::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    emit Resized();
}

void ScopeWidget::mousePressEvent(QMouseEvent* event)
{
    if (m_display == nullptr)
        return;
    const ScopePoint at = PixelAt(event->position());
    if (event->button() == Qt::LeftButton) {
        m_display->PressLeft(at);
        emit LeftPressed();
    } else if (event->button() == Qt::RightButton) {
        if (m_display->MemberAt(at))
            emit TargetMenuRequested(event->position().toPoint());
        else
            m_display->PressRight(at);
    }
    update();
}

void ScopeWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_display == nullptr || event->button() != Qt::LeftButton)
        return;
    const bool measured = m_display->Measuring();
    m_display->ReleaseLeft(PixelAt(event->position()));
    if (m_display->IsStale())
        update();
    if (measured)
        emit LeftReleased();
}

void ScopeWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event); // as any second click
    if (m_display != nullptr && event->button() == Qt::LeftButton)
        m_display->DoubleClick(PixelAt(event->position()));
}

void ScopeWidget::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    if (m_display == nullptr)
        return;
    m_display->PointerLeaves();
    emit PointerMoved();
}

/// Where targets can be selected, the Tab key goes from one to the next. It is caught before it can move the focus,
/// which moves for other reasons as well.
bool ScopeWidget::TakeTab(const QKeyEvent& event)
{
    if (event.key() != Qt::Key_Tab || event.modifiers() != Qt::NoModifier || m_display == nullptr ||
        m_display->Classic())
        return false;
    m_display->SelectNext();
    update();
    return true;
}

void ScopeWidget::EndMeasuring()
{
    if (m_display == nullptr)
        return;
    const bool measured = m_display->Measuring();
    m_display->CancelLeft();
    if (measured)
        emit LeftReleased();
}

/// The release of a button may never be heard: a message box has come between, or the window has gone.
bool ScopeWidget::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (TakeTab(*static_cast<QKeyEvent*>(event)))
            return true;
        break;
    case QEvent::WindowBlocked:
    case QEvent::Hide: EndMeasuring(); break;
    default: break;
    }
    return QWidget::event(event);
}

void ScopeWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (m_display == nullptr)
        return;
    if (!event->buttons().testFlag(Qt::LeftButton))
        EndMeasuring();
    m_display->MovePointerTo(PixelAt(event->position()));
    if (m_display->IsStale())
        update();
    emit PointerMoved();
}

void ScopeWidget::wheelEvent(QWheelEvent* event)
{
    constexpr int Notch = 120; // eighths of a degree, fifteen degrees to the notch
    m_wheelDelta += event->angleDelta().y();
    const int notches = m_wheelDelta / Notch;
    m_wheelDelta -= notches * Notch;
    if (notches != 0)
        emit WheelTurned(notches);
    event->accept();
}
} // namespace corvane
