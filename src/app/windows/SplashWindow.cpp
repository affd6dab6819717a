#include "app/windows/SplashWindow.h"

#include "app/AppState.h"
#include "app/windows/RadarEmblem.h"
#include "ui_SplashWindow.h"

#include <QPainter>

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

bool SplashWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Paint)
        return QWidget::eventFilter(watched, event);
    QPainter painter(m_ui->Picture1);
    PaintRadarEmblem(painter, m_ui->Picture1->rect());
    return true;
}
} // namespace corvane
