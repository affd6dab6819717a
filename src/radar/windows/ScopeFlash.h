#pragma once

#include <QTimer>
#include <QWidget>

namespace corvane {
/// A ring that blinks around a point of the scope for a moment, and then deletes itself. It draws over the picture and
/// is no part of it.
class ScopeFlash final : public QWidget {
    Q_OBJECT

public:
    ScopeFlash(QWidget& scope, QPoint center);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer m_blink{this};
    int m_changes = 0;
};
} // namespace corvane
