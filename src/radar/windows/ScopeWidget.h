#pragma once

#include "radar/Surface.h"

#include <QWidget>

class QImage;

namespace corvane {
class RadarDisplay;

/// The scope in a window: shows a radar display's picture pixel by pixel, whatever the density of the screen, and hands
/// it the pointer. Before it has a display it is black.
class ScopeWidget final : public QWidget {
    Q_OBJECT

public:
    explicit ScopeWidget(QWidget* parent = nullptr);

    /// Borrowed; null for none.
    void SetDisplay(RadarDisplay* display);
    /// The widget's size in pixels of the screen.
    [[nodiscard]] ScopePoint SizePx() const;
    /// The place in the widget of a pixel of the scope.
    [[nodiscard]] QPoint WidgetPosition(ScopePoint at) const;

signals:
    void PointerMoved();
    void LeftReleased();
    void LeftPressed();
    /// The wheel turned: notches away from the user are positive.
    void WheelTurned(int notches);
    void Resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] ScopePoint PixelAt(const QPointF& position) const;

    RadarDisplay* m_display = nullptr;
    int m_wheelDelta = 0; ///< turned so far towards the next notch
};
} // namespace corvane
