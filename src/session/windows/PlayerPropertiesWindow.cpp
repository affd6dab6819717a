#include "session/windows/PlayerPropertiesWindow.h"

#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_PlayerPropertiesWindow.h"

#include <QShortcut>

#include <algorithm>

namespace corvane {
PlayerPropertiesWindow::PlayerPropertiesWindow(const SessionState& session, PlayerTable& players, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::Form11>()), m_editor(session, players, boxes, [this] { ShowEditor(); })
{
    m_ui->setupUi(this);
    PressOnReturn(*this);
    m_ui->Combo2->addItems({QStringLiteral("VFR"), QStringLiteral("IFR")});
    m_editor.Load();
    connect(m_ui->Combo1, &QComboBox::activated, this, &PlayerPropertiesWindow::Pick);
    connect(m_ui->Command1, &QPushButton::clicked, this, &PlayerPropertiesWindow::Save);
    connect(m_ui->Command2, &QPushButton::clicked, this, [this] { m_editor.Discard(); });
    connect(m_ui->Command3, &QPushButton::clicked, this, &PlayerPropertiesWindow::Center);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

PlayerPropertiesWindow::~PlayerPropertiesWindow() = default;

void PlayerPropertiesWindow::ShowEditor()
{
    m_ui->Combo1->clear();
    for (const std::string& name : m_editor.Names())
        m_ui->Combo1->addItem(ToQString(name));
    m_ui->Combo1->setCurrentIndex(m_editor.Selected() ? static_cast<int>(*m_editor.Selected()) : -1);
    const FlightPlanFields& fields = m_editor.Fields();
    m_ui->Text1->setText(ToQString(fields.Name));
    m_ui->Text2->setText(ToQString(fields.AircraftTitle));
    m_ui->Text3->setText(ToQString(fields.AircraftType));
    m_ui->Text4->setText(ToQString(fields.DepartureIcao));
    m_ui->Text5->setText(ToQString(fields.DestinationIcao));
    m_ui->Combo2->setCurrentIndex(fields.Ifr ? 1 : 0);
    m_ui->Text6->setText(ToQString(fields.CruiseAltitude));
}

void PlayerPropertiesWindow::PickName(const QString& name)
{
    const auto& names = m_editor.Names();
    const auto found = std::ranges::find(names, ToText(name));
    if (found != names.end())
        m_editor.Pick(static_cast<std::size_t>(found - names.begin()));
}

void PlayerPropertiesWindow::Pick(int index)
{
    m_editor.Pick(static_cast<std::size_t>(index));
}

void PlayerPropertiesWindow::Save()
{
    FlightPlanFields typed = m_editor.Fields();
    typed.DepartureIcao = ToText(m_ui->Text4->text());
    typed.DestinationIcao = ToText(m_ui->Text5->text());
    typed.Ifr = m_ui->Combo2->currentIndex() == 1;
    typed.CruiseAltitude = ToText(m_ui->Text6->text());
    m_editor.Save(typed);
}

void PlayerPropertiesWindow::Center()
{
    const std::optional<LatLon> position = m_editor.Center();
    if (position) {
        emit CenterRequested(*position);
        close();
    }
}

void PlayerPropertiesWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit Closed();
}
} // namespace corvane
