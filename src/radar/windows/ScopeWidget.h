#pragma once

#include "radar/Surface.h"

#include <QWidget>

class QImage;

namespace corvane {
class RadarDisplay;

/// The scope in a window: shows a radar display's picture, which has the screen's own pixels however dense they are,
/// and hands it the pointer in pixels of the widget. Before it has a display it is black.
class ScopeWidget final : public QWidget {
    Q_OBJECT

public:
    explicit ScopeWidget(QWidget* parent = nullptr);

    /// Borrowed; null for none.
    void SetDisplay(RadarDisplay* display);
    /// Ends measuring, and whatever else the left button holds, where its release will not be heard.
    void EndMeasuring();

signals:
    void PointerMoved();
    void LeftReleased();
    void LeftPressed();
    /// The wheel turned: notches away from the user are positive.
    void WheelTurned(int notches);
    /// The right button went down on a target; never in the classic display.
    void TargetMenuRequested(QPoint place);
    void Resized();
    /// The widget has come to a screen of another density.
    void DensityChanged();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    bool TakeTab(const QKeyEvent& event);

    RadarDisplay* m_display = nullptr;
    double m_density = 1;
    int m_wheelDelta = 0; ///< turned so far towards the next notch
};
} // namespace corvane
