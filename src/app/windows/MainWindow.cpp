#include "app/windows/MainWindow.h"

#include "app/AppState.h"
#include "app/windows/AttentionControls.h"
#include "app/windows/Bookmarks.h"
#include "app/windows/DebriefControls.h"
#include "app/windows/FindControls.h"
#include "app/windows/HealthLine.h"
#include "app/windows/NoticeLine.h"
#include "app/windows/RadarMemory.h"
#include "app/windows/SecondScopeControls.h"
#include "app/windows/TrafficListControls.h"
#include "app/windows/ViewKeys.h"
#include "app/windows/VoiceControls.h"
#include "area/ChooserModel.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "radar/paint/QtRaster.h"
#include "recording/PlaybackClock.h"
#include "session/windows/ChatWindow.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>

#include <algorithm>

namespace corvane {
static constexpr const char* AskKey = "askBeforeLeaving";
static constexpr const char* ForgiveKey = "session/passMalformed";
static constexpr int TargetIntervalMs = 1000;
static constexpr int PanelIntervalMs = 500;

MainWindow::MainWindow(AppState& state, SessionPeerFactory& factory, MessageBoxes& boxes, ChatWindow& chat,
                       const RecordingParts& recording, DeskSettings& desk, const QString& hostedAt)
    : m_ui(std::make_unique<Ui::Form1>()),
      m_state(state),
      m_factory(factory),
      m_boxes(boxes),
      m_chat(chat),
      m_desk(desk),
      m_font(MakeScopeFont(ScopeQFont())),
      m_display({state.Area, state.MagVar, state.Flags, state.Session, state.Players, &state.TrafficDetails}, m_font),
      m_pump(state.Session, state.Players, state.MagVar, *this, boxes)
{
    m_ui->setupUi(this);
    m_recording = std::make_unique<RecordingControls>(recording, boxes, *m_ui->record_session1, *m_ui->playback_op1,
                                                      *m_ui->Label8);
    m_displayControls = std::make_unique<DisplayControls>(state.Display, state.Area, desk, *m_ui->modern_display_op1,
                                                          *m_ui->display_options_op1, *this);
    connect(m_displayControls.get(), &DisplayControls::Changed, this, &MainWindow::TakeDisplay);
    m_appearance = std::make_unique<AppearanceControls>(desk, *m_ui->appearance_op1, *this);
    connect(m_appearance.get(), &AppearanceControls::Changed, this, &MainWindow::TakeAppearance);
    m_voices = std::make_unique<VoiceControls>(state, chat, desk, *m_ui->voices_op1, boxes);
    m_attention = std::make_unique<AttentionControls>(desk, *m_ui->signals_op1, *m_ui->Label13, *this);
    m_traffic = std::make_unique<TrafficControls>(state, boxes, desk, *m_ui->offer_targets1, *m_ui->Label9);
    m_targets = std::make_unique<TargetControls>(m_display, *m_ui->Picture1, *m_ui->Label1, state.Players);
    setWindowTitle(ToQString(ChooserModel::MainWindowCaption(state.Area)));
    state.Flags = {};
    m_health = std::make_unique<HealthLine>(
        HealthLine::Parts{*m_ui->show_health1, *m_ui->HealthBar, *m_ui->Label10, *m_ui->Command7}, desk, state.Players,
        recording, hostedAt);
    m_notices = std::make_unique<NoticeLine>(desk, *m_ui->NoticeBar, *m_ui->Label11, *m_ui->Command8);
    const int firstFreeKey = recording.Playback.IsOpen() ? RecordingControls::SpeedCount + 1 : 1;
    m_bookmarks = std::make_unique<Bookmarks>(desk, state.Area, m_display, *m_ui->bookmarks1, firstFreeKey);
    m_find = std::make_unique<FindControls>(FindControls::Parts{desk, *m_ui->find1, *this, *m_ui->Picture1, m_display},
                                            state.Area, state.Players);
    m_list = std::make_unique<TrafficListControls>(state, m_display, desk, *m_ui->show_traffic1, *this);
    m_second = std::make_unique<SecondScopeControls>(
        SecondScopeControls::Parts{*m_ui->second_scope1, *this, m_display, m_appearance->Look()}, state, desk);
    ConnectControls();
    GatherActions();
    m_display.Load(m_ui->Picture1->width(), m_ui->Picture1->height());
    RestoreRadarView(desk, state.Area, state.Flags, m_display);
    m_ui->Picture1->SetDisplay(&m_display);
    TakeAppearance();
    UpdateScope();
    MakeTimer(m_timer1, "Timer1", PumpIntervalMs, &MainWindow::PumpTick);
    MakeTimer(m_timer2, "Timer2", TargetIntervalMs, &MainWindow::TargetTick);
    MakeTimer(m_timer3, "Timer3", UpkeepIntervalMs, &MainWindow::UpkeepTick);
    MakeTimer(m_timer4, "Timer4", PanelIntervalMs, &MainWindow::PanelTick);
    m_notices->Tell({}, desk.Note());
    TellMissingMaps(*m_notices, state.AppFolder);
    m_chat.RefreshPlayerList();
    m_pump.Start();
}

MainWindow::~MainWindow() = default;

void MainWindow::ConnectControls()
{
    m_ui->ScopeBar->adjustSize();
    connect(m_ui->Command5, &QPushButton::clicked, this, [this] { ZoomBy(1); });
    connect(m_ui->Command6, &QPushButton::clicked, this, [this] { ZoomBy(-1); });
    connect(m_ui->Command2, &QPushButton::clicked, this, [this] {
        m_display.CenterOnArea();
        UpdateScope();
    });
    connect(m_ui->Command3, &QPushButton::clicked, this, &MainWindow::LeaveIfWanted);
    connect(m_health.get(), &HealthLine::LocateRequested, this, [this] {
        emit LocateAgainRequested();
        Leave();
    });
    connect(m_ui->Picture1, &ScopeWidget::WheelTurned, this, &MainWindow::ZoomBy);
    connect(m_targets.get(), &TargetControls::Changed, this, &MainWindow::UpdateScope);
    connect(m_targets.get(), &TargetControls::PropertiesRequested, this, &MainWindow::PropertiesOfRequested);
    connect(m_targets.get(), &TargetControls::WriteRequested, &m_chat, &ChatWindow::WriteTo);
    connect(m_ui->Picture1, &ScopeWidget::LeftPressed, this, [this] {
        if (m_display.Measuring())
            m_timer2.stop(); // other displays measure on while their targets are refreshed
    });
    connect(m_ui->Picture1, &ScopeWidget::LeftReleased, this, &MainWindow::StartRefreshing);
    connect(m_ui->Picture1, &ScopeWidget::Resized, this, [this] {
        m_display.Resize(m_ui->Picture1->width(), m_ui->Picture1->height());
        UpdateScope();
    });
    connect(m_ui->Picture1, &ScopeWidget::DensityChanged, this, [this] {
        const double density = m_ui->Picture1->devicePixelRatioF();
        m_font = MakeScopeFont(m_appearance->Look(), density);
        m_display.SetScale(density);
    });
    connect(m_bookmarks.get(), &Bookmarks::Recalled, this, &MainWindow::UpdateScope);
    connect(m_find.get(), &FindControls::Moved, this, &MainWindow::UpdateScope);
    connect(m_list.get(), &TrafficListControls::CenterRequested, this, &MainWindow::RecenterView);
    connect(m_second.get(), &SecondScopeControls::PropertiesRequested, this, &MainWindow::PropertiesOfRequested);
    connect(m_second.get(), &SecondScopeControls::WriteRequested, &m_chat, &ChatWindow::WriteTo);
    connect(m_ui->load_all_db_files, &QAction::triggered, this, &MainWindow::ChooserRequested);
    connect(m_ui->create_new_db1, &QAction::triggered, this, &MainWindow::NewDatabaseRequested);
    connect(m_ui->edit_players1, &QAction::triggered, this, &MainWindow::PlayerPropertiesRequested);
    connect(m_ui->show_airpts_list1, &QAction::triggered, this, &MainWindow::AirportListRequested);
    connect(m_ui->show_chat_win_op1, &QAction::triggered, this, &MainWindow::ChatRequested);
    connect(m_ui->preferences_op1, &QAction::triggered, this, &MainWindow::PreferencesRequested);
    KeepSwitch(*m_ui->remember_op1, RememberKey);
    KeepSwitch(*m_ui->ask_op1, AskKey);
    KeepSwitch(*m_ui->forgive_op1, ForgiveKey);
    KeepSwitch(*m_ui->debrief_op1, DebriefControls::AtEndKey);
    connect(m_ui->debrief1, &QAction::triggered, this, &MainWindow::DebriefRequested);
    m_pump.PassMalformed(m_ui->forgive_op1->isChecked());
    connect(m_ui->forgive_op1, &QAction::toggled, this, [this](bool on) { m_pump.PassMalformed(on); });
    connect(m_ui->about_program1, &QAction::triggered, this, &MainWindow::AboutRequested);
}

/// A menu entry that is as it was left yesterday; off at first.
void MainWindow::KeepSwitch(QAction& entry, const char* key)
{
    entry.setChecked(m_desk.Flag(key, false));
    connect(&entry, &QAction::toggled, this, [this, key](bool on) { m_desk.Keep(key, on); });
}

/// Collects what the menus do, so that it can be switched off: a desktop that shows menus outside of the window does
/// not see that the window is disabled.
void MainWindow::GatherActions()
{
    m_actions.setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    for (const QMenu* menu : m_ui->MenuBar->findChildren<QMenu*>())
        for (QAction* action : menu->actions())
            if (action->actionGroup() == nullptr)
                m_actions.addAction(action);
}

void MainWindow::MakeTimer(QTimer& timer, const char* name, int intervalMs, void (MainWindow::*tick)()) const
{
    timer.setObjectName(name);
    timer.setInterval(intervalMs);
    connect(&timer, &QTimer::timeout, this, tick);
    timer.start();
}

void MainWindow::PumpTick()
{
    m_pump.PumpTick();
    if (m_left)
        return;
    m_traffic->Refresh();
    m_recording->Refresh(); // which may show a box: this window may have been left when it returns
    if (m_left)
        return;
    m_health->Forgiven(m_pump.MalformedCount());
    m_health->Refresh();
    m_attention->Refresh(m_health->IsQuiet());
}

void MainWindow::TargetTick()
{
    m_display.RefreshTargets(Now());
    m_attention->LookAt(m_display.Targets().Monitor().Alerts());
    if (!m_display.Classic())
        m_targets->ShowPanel();
    UpdateScope();
}

void MainWindow::UpkeepTick()
{
    m_pump.UpkeepTick();
}

void MainWindow::PanelTick()
{
    if (m_display.TickPanel())
        m_targets->ShowPanel();
}

void MainWindow::ZoomBy(int steps)
{
    corvane::ZoomBy(m_display, steps);
    UpdateScope();
}

void MainWindow::UpdateScope()
{
    m_ui->Label7->setText(QStringLiteral("x%1").arg(m_display.View().ZoomLevel));
    if (m_display.IsStale())
        m_ui->Picture1->update();
}

double MainWindow::Now() const
{
    constexpr double MillisecondsPerSecond = 1000;
    return static_cast<double>(m_clock()) / MillisecondsPerSecond;
}

void MainWindow::TakeDisplay()
{
    m_display.SetDisplay(InAppearance(m_state.Display, m_appearance->Look()), Now());
    UpdateScope();
}

void MainWindow::TakeAppearance()
{
    const Appearance& look = m_appearance->Look();
    m_font = MakeScopeFont(look, m_ui->Picture1->devicePixelRatioF());
    m_display.SetLineWidth(look.LineWidth);
    TakeDisplay();
}

void MainWindow::PositionReported(const PlayerRecord& player)
{
    m_display.Report(player, Now());
    m_second->Report(player);
}

/// Lets the targets be refreshed, unless nobody sees them, they would wipe the measuring line, or another window works
/// here.
void MainWindow::StartRefreshing()
{
    if (!m_takenOver && !m_left && !isMinimized() && !(m_display.Classic() && m_display.Measuring()))
        m_timer2.start();
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    const bool forTargets = m_targets->PressKey(*event);
    if (event->key() == Qt::Key_Escape)
        m_ui->Picture1->EndMeasuring();
    else if (!PressViewKey(m_display, *event)) {
        if (!forTargets)
            QMainWindow::keyPressEvent(event);
        return;
    }
    UpdateScope();
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    m_timer2.stop();
    StartRefreshing();
}

bool MainWindow::event(QEvent* event)
{
    // The first events come while the window's parts are made: what they find is not there yet.
    if ((event->type() == QEvent::MouseButtonPress || event->type() == QEvent::WindowActivate) && m_takenOver)
        emit TouchedWhileTaken();
    return QMainWindow::event(event);
}

void MainWindow::SetControlsEnabled(bool enabled)
{
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->Picture1, m_ui->Command2, m_ui->Command3,
                                                            m_ui->Command5, m_ui->Command6, this})
        control->setEnabled(enabled);
    m_actions.setEnabled(enabled);
    m_recording->SetSpeedsEnabled(enabled);
}

void MainWindow::TakeOver()
{
    m_takenOver = true;
    m_find->Close(); // what it finds may be of another area soon
    m_list->Pause();
    m_second->Pause();
    m_ui->Picture1->EndMeasuring(); // the button's release will not be heard
    m_timer2.stop();
    m_timer4.stop();
    SetControlsEnabled(false);
}

void MainWindow::GiveBack()
{
    m_takenOver = false;
    SetControlsEnabled(true);
    m_timer2.start();
    m_timer4.start();
    m_list->Resume();
    m_second->Resume();
    m_ui->Picture1->setFocus();
    activateWindow();
}

void MainWindow::RecenterView(LatLon center)
{
    m_display.Recenter(center);
    UpdateScope();
}

void MainWindow::KeepView()
{
    KeepRadarView(m_desk, m_state.Area, m_state.Flags, m_display.View());
}

void MainWindow::OfferDebrief()
{
    m_ui->debrief1->setVisible(true);
    m_ui->debrief_op1->setVisible(true);
}

void MainWindow::ShowUnread(int lines)
{
    m_ui->Label12->setText(lines == 1 ? tr("Chat: 1 new line") : tr("Chat: %1 new lines").arg(lines));
    m_ui->Label12->setVisible(lines > 0);
    if (lines > 0 && !m_chat.isVisible())
        QApplication::alert(this);
}

void MainWindow::ShowNewArea()
{
    setWindowTitle(ToQString(ChooserModel::MainWindowCaption(m_state.Area)));
    m_display.AreaChanged();
    m_second->ShowNewArea();
    UpdateScope();
}

void MainWindow::RedrawAll()
{
    m_display.RedrawAll();
    UpdateScope();
}

void MainWindow::RefreshPlayerList()
{
    m_chat.RefreshPlayerList();
}

void MainWindow::AddChatLine(std::string_view from, std::string_view text)
{
    m_health->Heard();
    m_attention->Note(AttentionSign::Chat);
    m_chat.AddChatLine(from, text);
}

void MainWindow::PlayerAdded(const PlayerRecord& player)
{
    m_health->Heard();
    m_attention->Note(AttentionSign::Join);
    if (!m_desk.Flag(RememberKey, false))
        return;
    for (PlayerRecord& entry : m_state.Players.Players())
        if (&entry == &player)
            m_state.Plans.Restore(entry);
}

void MainWindow::PlayerUpdated(const PlayerRecord& player)
{
    m_list->Heard(player.PlayerId);
    m_health->Heard();
}

void MainWindow::PlayerRemoved(const PlayerRecord& player)
{
    m_attention->Note(AttentionSign::Leave);
    m_list->Removed(player.PlayerId);
}

/// Leaves the session, unless flight plans would be lost and the user wants to be asked.
void MainWindow::LeaveIfWanted()
{
    const auto players = m_state.Players.Players();
    const bool asks = m_desk.Flag(AskKey, false) && std::any_of(players.begin(), players.end(), HasFlightPlan);
    if (!asks || m_boxes.Confirm(MessageTitle, "Flight plans have been entered. Do you want to leave the session?"))
        Leave();
}

void MainWindow::Leave()
{
    if (m_left)
        return;
    m_left = true;
    m_find->Close();
    m_list->Close();
    m_second->Close();
    m_state.Plans.Keep(m_state.Players.Players());
    m_ui->Command3->setText("PLEASE WAIT...");
    m_ui->Command3->repaint();
    for (QTimer* timer : {&m_timer1, &m_timer2, &m_timer3, &m_timer4})
        timer->stop();
    if (const Result<void> left = LeaveSession(m_factory, m_state.Session, m_state.Players); !left)
        m_boxes.Warn(BoxText(left.error()));
    emit Disconnected();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_takenOver) {
        event->ignore(); // the window that took over is in front
        return;
    }
    LeaveIfWanted();
    if (!m_left)
        event->ignore();
}
} // namespace corvane
