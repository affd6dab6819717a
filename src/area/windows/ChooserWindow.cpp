#include "area/windows/ChooserWindow.h"

#include "area/windows/EntryCombo.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_ChooserWindow.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QLineEdit>

#include <thread>

namespace corvane {
static constexpr const char* LastAirport = "area/airport";
static constexpr const char* LastSector = "area/sector";

static void KeepRoomFor(QWidget& hidden)
{
    QSizePolicy policy = hidden.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    hidden.setSizePolicy(policy);
}

ChooserWindow::ChooserWindow(const ChooserState& state, MessageBoxes& boxes, DeskSettings& desk)
    : m_ui(std::make_unique<Ui::Form5>()), m_boxes(boxes), m_desk(desk), m_model(state, *this)
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    for (QLabel* notice : {m_ui->NoMatch1, m_ui->NoMatch2})
        KeepRoomFor(*notice); // what is below it, and lists that hang there, stay where they are
    ShowPlaceholder(*m_ui->Combo1);
    ShowPlaceholder(*m_ui->Combo2);
    TakeTypedEntry(*m_ui->Combo1, m_model.AirportEntries(), *m_ui->NoMatch1, [this] { m_ui->Command3->click(); });
    TakeTypedEntry(*m_ui->Combo2, m_model.SectorEntries(), *m_ui->NoMatch2, [this] { m_ui->Command3->click(); });
    m_timer1.setObjectName("Timer1");
    m_timer1.setInterval(ChooserModel::OpeningDelayMs);
    m_timer1.setSingleShot(true);
    connect(&m_timer1, &QTimer::timeout, this, &ChooserWindow::OpenLists);
    connect(m_ui->Option1, &QRadioButton::clicked, this, &ChooserWindow::OptionChosen);
    connect(m_ui->Option2, &QRadioButton::clicked, this, &ChooserWindow::OptionChosen);
    connect(m_ui->Command3, &QPushButton::clicked, this, &ChooserWindow::LoadChosenArea);
    connect(m_ui->Command2, &QPushButton::clicked, this, [this] { Leave(m_model.Exit()); });
    m_timer1.start();
}

ChooserWindow::~ChooserWindow() = default;

void ChooserWindow::OpenLists()
{
    m_busy = true;
    const Result<void> opened = m_model.Open();
    SetEntries(*m_ui->Combo1, m_model.AirportEntries());
    SetEntries(*m_ui->Combo2, m_model.SectorEntries());
    m_busy = false;
    if (m_abandoned) {
        Leave(m_model.Close());
        return;
    }
    m_ui->Option1->setChecked(true);
    OptionChosen();
    WarnOfDatabase();
    if (!opened && LeavesForSetUp(opened.error(), "Put the file right and open this window again"))
        return;
    OfferLastArea();
    m_ui->Combo1->setFocus();
    m_ui->Combo1->lineEdit()->selectAll(); // what is typed takes the place of what is offered
    emit Ready();
}

void ChooserWindow::OfferLastArea()
{
    if (const QString airport = m_desk.Text(LastAirport); !airport.isEmpty())
        PickEntryThatBegins(*m_ui->Combo1, m_model.AirportEntries(), ToText(airport));
    if (const QString sector = m_desk.Text(LastSector); !sector.isEmpty())
        PickEntryThatBegins(*m_ui->Combo2, m_model.SectorEntries(), ToText(sector));
}

bool ChooserWindow::LeavesForSetUp(const Error& failure, const std::string& advice)
{
    const std::string text = BoxText(failure) + ". " + advice;
    switch (m_model.RemedyFor(failure)) {
    case Remedy::PutRight: m_boxes.Warn(text + "."); return false;
    case Remedy::NewFromMenu: m_boxes.Warn(text + ", or create the database files again."); return false;
    case Remedy::SetUpAgain: break;
    }
    if (!m_boxes.Confirm(MessageTitle, text + ". Or do you want to create the database files again now?"))
        return false;
    Leave(ChooserNext::SetUpAgain);
    return true;
}

void ChooserWindow::WarnOfDatabase()
{
    if (const std::string warning = m_model.TakeWarning(); !warning.empty())
        m_boxes.Warn(warning);
}

void ChooserWindow::OptionChosen()
{
    m_ui->Combo1->setEnabled(m_ui->Option1->isChecked());
    m_ui->Combo2->setEnabled(m_ui->Option2->isChecked());
}

void ChooserWindow::LoadChosenArea()
{
    const bool airport = m_ui->Option1->isChecked();
    const auto entry = airport ? PickedEntry(*m_ui->Combo1, m_model.AirportEntries())
                               : PickedEntry(*m_ui->Combo2, m_model.SectorEntries());
    m_busy = true;
    const Result<ChooserNext> next = m_model.Load(airport ? ControlMode::Airport : ControlMode::Sector, entry);
    m_busy = false;
    if (m_abandoned) {
        Leave(m_model.Close());
        return;
    }
    WarnOfDatabase();
    if (!next)
        LeavesForSetUp(next.error(), "The area was not loaded. Put the file right and try again");
    else if (*next != ChooserNext::Stay) {
        m_desk.Keep(airport ? LastAirport : LastSector, ToQString(*entry));
        Leave(*next);
    }
}

bool ChooserWindow::ChooseAirport(const std::string& icao)
{
    if (!PickEntryThatBegins(*m_ui->Combo1, m_model.AirportEntries(), icao + " - "))
        return false;
    m_ui->Command3->click();
    return true;
}

void ChooserWindow::Leave(ChooserNext next)
{
    m_left = true;
    m_timer1.stop(); // the window may be left before its lists were read
    hide();
    emit Finished(next);
}

void ChooserWindow::closeEvent(QCloseEvent* event)
{
    if (m_busy) {
        event->ignore();
        Abandon();
        SetStatus("Please wait...");
    } else if (!m_left) {
        Leave(m_model.Close());
    }
}

void ChooserWindow::SetStatus(std::string_view status)
{
    m_ui->Text2->setText(ToQString(status));
    m_ui->Text2->repaint();
}

void ChooserWindow::RunLongWork(const std::function<void()>& work)
{
    QEventLoop waiting;
    std::thread worker([&] {
        work();
        QCoreApplication::postEvent(&waiting, new QEvent(QEvent::Quit)); // which Qt deletes
    });
    waiting.exec();
    worker.join(); // the loop also ends with the program
}

void ChooserWindow::SetProgress(int value, int maximum)
{
    m_ui->ProgressBar1->setRange(0, maximum);
    m_ui->ProgressBar1->setValue(value);
    m_ui->ProgressBar1->repaint();
}

void ChooserWindow::SetControlsEnabled(bool enabled)
{
    for (QWidget* control : std::initializer_list<QWidget*>{m_ui->Command2, m_ui->Command3, m_ui->Combo1, m_ui->Combo2,
                                                            m_ui->Option1, m_ui->Option2})
        control->setEnabled(enabled);
    if (enabled)
        OptionChosen();
}
} // namespace corvane
