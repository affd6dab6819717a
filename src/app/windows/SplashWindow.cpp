#include "app/windows/SplashWindow.h"

#include "app/AppState.h"
#include "ui_SplashWindow.h"

#include <QPainter>

#include <algorithm>

namespace corvane {
SplashWindow::SplashWindow(AppState& state) : QWidget(nullptr, Qt::SplashScreen), m_ui(std::make_unique<Ui::Form8>())
{
    m_ui->setupUi(this);
    m_ui->Picture1->installEventFilter(this);
    QFont title = m_ui->Label2->font();
    title.setFamilies({title.family(), QStringLiteral("DejaVu Sans")}); // not whatever script hand the system offers
    m_ui->Label2->setFont(title);
    state.Session.SessionJoined = false;
    state.Session.RadarOpen = false;
    m_timer1.setObjectName("Timer1");
    m_timer1.setInterval(StartupDelayMs);
    m_timer1.setSingleShot(true);
    connect(&m_timer1, &QTimer::timeout, this, [this, &state] { emit Checked(RunStartupChecks(state)); });
    m_timer1.start();
}

SplashWindow::~SplashWindow() = default;

static void PaintRadar(QPainter& painter, const QRect& area)
{
    painter.fillRect(area, Qt::black);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPoint center = area.center();
    const int radius = std::min(area.width(), area.height()) / 2 - 8;
    constexpr int SweepDegrees = 50;
    QConicalGradient sweep(center, SweepDegrees);
    sweep.setColorAt(0, QColor(0, 192, 0, 170));
    sweep.setColorAt(0.15, QColor(0, 192, 0, 0));
    sweep.setColorAt(1, QColor(0, 192, 0, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sweep);
    painter.drawEllipse(center, radius, radius);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QColor(0, 128, 0));
    for (int ring = 1; ring <= 3; ++ring)
        painter.drawEllipse(center, radius * ring / 3, radius * ring / 3);
    painter.drawLine(center - QPoint(radius, 0), center + QPoint(radius, 0));
    painter.drawLine(center - QPoint(0, radius), center + QPoint(0, radius));
}

bool SplashWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return QWidget::eventFilter(watched, event);
    QPainter painter(m_ui->Picture1);
    PaintRadar(painter, m_ui->Picture1->rect());
    return true;
}
} // namespace corvane
