#include "area/windows/AirportListWindow.h"

#include "area/windows/EntryCombo.h"
#include "core/windows/WindowManners.h"
#include "ui_AirportListWindow.h"

#include <QApplication>
#include <QShortcut>

namespace corvane {
AirportListWindow::AirportListWindow(const AreaModel& area, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::Form9>()), m_area(area), m_boxes(boxes)
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    m_ui->Option2->setChecked(true);
    FillList();
    connect(m_ui->Option1, &QRadioButton::clicked, this, &AirportListWindow::FillList);
    connect(m_ui->Option2, &QRadioButton::clicked, this, &AirportListWindow::FillList);
    connect(m_ui->Command3, &QPushButton::clicked, this, &AirportListWindow::FillList);
    connect(m_ui->Command1, &QPushButton::clicked, this, &AirportListWindow::CenterOnPicked);
    connect(m_ui->Command2, &QPushButton::clicked, this, &AirportListWindow::ShowInfo);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
        QWidget* const offered = QApplication::activePopupWidget(); // the entries that match what was typed
        (offered != nullptr ? offered : this)->close();
    });
}

AirportListWindow::~AirportListWindow() = default;

AirportListMode AirportListWindow::Mode() const
{
    return m_ui->Option1->isChecked() ? AirportListMode::Name : AirportListMode::Identifier;
}

void AirportListWindow::FillList()
{
    m_entries = AirportEntries(m_area.AreaAirports, Mode());
    SetEntries(*m_ui->Combo1, m_entries);
    m_ui->Combo1->repaint();
}

std::vector<const AirportRecord*> AirportListWindow::PickedAirports() const
{
    const auto entry = PickedEntry(*m_ui->Combo1, m_entries);
    return entry ? FindAirports(m_area.AreaAirports, *entry, Mode()) : std::vector<const AirportRecord*>();
}

void AirportListWindow::CenterOnPicked()
{
    const auto airports = PickedAirports();
    for (const AirportRecord* airport : airports)
        emit CenterRequested({airport->Lat, airport->Lon});
    if (!airports.empty())
        close();
}

void AirportListWindow::ShowInfo()
{
    for (const AirportRecord* airport : PickedAirports())
        m_boxes.Inform(AirportInfoText(*airport));
}

void AirportListWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit Closed();
}
} // namespace corvane
