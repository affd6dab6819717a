#include "app/windows/SecondScopeWindow.h"

#include "app/AppState.h"
#include "app/windows/TargetControls.h"
#include "app/windows/ViewKeys.h"
#include "radar/paint/QtRaster.h"
#include "ui_SecondScopeWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>

namespace corvane {
SecondScopeWindow::SecondScopeWindow(const AppState& state, const ScopeView& view, const Appearance& look)
    : m_ui(std::make_unique<Ui::SecondScopeForm>()),
      m_state(state),
      m_players(state.Players),
      m_flags(state.Flags),
      m_look(look),
      m_shownLook(look),
      m_font(MakeScopeFont(look, 1)),
      m_display({state.Area, state.MagVar, m_flags, state.Session, m_players, &state.TrafficDetails}, m_font)
{
    constexpr int RefreshMs = 1000;
    constexpr int PanelMs = 500;
    m_ui->setupUi(this);
    m_targets = std::make_unique<TargetControls>(m_display, *m_ui->Picture2, *m_ui->Panel2, m_players);
    m_ui->ScopeBar2->adjustSize();
    m_display.Load(m_ui->Picture2->width(), m_ui->Picture2->height());
    m_display.Show(view.ViewCenter, view.ZoomLevel);
    TakeLook();
    m_ui->Picture2->SetDisplay(&m_display);
    ConnectControls();
    m_refresh.setObjectName("SecondTimer");
    m_refresh.setInterval(RefreshMs);
    m_panel.setInterval(PanelMs);
    Resume();
    UpdateScope();
}

SecondScopeWindow::~SecondScopeWindow() = default;

void SecondScopeWindow::ConnectControls()
{
    const auto changesView = [this](QPushButton* button, auto change) {
        connect(button, &QPushButton::clicked, this, [this, change] {
            change();
            UpdateScope();
        });
    };
    changesView(m_ui->ZoomIn2, [this] { m_display.ZoomIn(); });
    changesView(m_ui->ZoomOut2, [this] { m_display.ZoomOut(); });
    changesView(m_ui->Center2, [this] { m_display.CenterOnArea(); });
    connect(m_ui->Picture2, &ScopeWidget::WheelTurned, this, [this](int notches) {
        ZoomBy(m_display, notches);
        UpdateScope();
    });
    connect(m_ui->Picture2, &ScopeWidget::Resized, this, [this] {
        m_display.Resize(m_ui->Picture2->width(), m_ui->Picture2->height());
        UpdateScope();
    });
    connect(m_ui->Picture2, &ScopeWidget::DensityChanged, this, [this] {
        const double density = m_ui->Picture2->devicePixelRatioF();
        m_font = MakeScopeFont(m_shownLook, density);
        m_display.SetScale(density);
    });
    connect(m_targets.get(), &TargetControls::Changed, this, &SecondScopeWindow::UpdateScope);
    connect(m_targets.get(), &TargetControls::PropertiesRequested, this, &SecondScopeWindow::PropertiesRequested);
    connect(m_targets.get(), &TargetControls::WriteRequested, this, &SecondScopeWindow::WriteRequested);
    connect(&m_refresh, &QTimer::timeout, this, &SecondScopeWindow::Refresh);
    connect(&m_panel, &QTimer::timeout, this, [this] {
        if (m_display.TickPanel())
            m_targets->ShowPanel();
    });
}

double SecondScopeWindow::Now() const
{
    constexpr double MillisecondsPerSecond = 1000;
    return static_cast<double>(m_clock()) / MillisecondsPerSecond;
}

void SecondScopeWindow::Refresh()
{
    m_players = m_state.Players;
    FollowSettings();
    m_display.RefreshTargets(Now());
    if (!m_display.Classic())
        m_targets->ShowPanel();
    UpdateScope();
}

void SecondScopeWindow::TakeLook()
{
    m_shownLook = m_look;
    m_font = MakeScopeFont(m_shownLook, m_ui->Picture2->devicePixelRatioF());
    m_display.SetLineWidth(m_shownLook.LineWidth);
    m_display.SetDisplay(InAppearance(m_state.Display, m_shownLook), Now());
}

/// Preferences, display options and appearance are the radar's.
void SecondScopeWindow::FollowSettings()
{
    if (m_shownLook != m_look)
        TakeLook();
    const DisplayOptions options = InAppearance(m_state.Display, m_look);
    if (m_display.Display() != options)
        m_display.SetDisplay(options, Now());
    if (m_flags == m_state.Flags)
        return;
    m_flags = m_state.Flags;
    m_display.RedrawAll();
}

void SecondScopeWindow::UpdateScope()
{
    m_ui->Zoom2->setText(QStringLiteral("x%1").arg(m_display.View().ZoomLevel));
    if (m_display.IsStale())
        m_ui->Picture2->update();
}

void SecondScopeWindow::Report(const PlayerRecord& member)
{
    m_display.Report(member, Now());
}

void SecondScopeWindow::ShowNewArea()
{
    m_display.AreaChanged();
    UpdateScope();
}

void SecondScopeWindow::Pause()
{
    m_ui->Picture2->EndMeasuring();
    m_refresh.stop();
    m_panel.stop();
    setEnabled(false);
}

void SecondScopeWindow::Resume()
{
    setEnabled(true);
    m_refresh.start();
    m_panel.start();
}

void SecondScopeWindow::keyPressEvent(QKeyEvent* event)
{
    const bool forTargets = m_targets->PressKey(*event);
    if (event->key() == Qt::Key_Escape)
        m_ui->Picture2->EndMeasuring();
    else if (!PressViewKey(m_display, *event) && !forTargets)
        QWidget::keyPressEvent(event);
    UpdateScope();
}

void SecondScopeWindow::closeEvent(QCloseEvent* event)
{
    m_refresh.stop();
    m_panel.stop();
    QWidget::closeEvent(event);
}
} // namespace corvane
