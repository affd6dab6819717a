#include "app/windows/TrafficPrompts.h"

#include "core/MessageBoxes.h"
#include "core/Rounding.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "traffic/flightgear/AreaStation.h"
#include "ui_TrafficPrompt.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>

namespace corvane {
static constexpr const char* FeedKey = "traffic/feed";
static constexpr const char* RadiusKey = "traffic/radiusNm";
static constexpr const char* MostKey = "traffic/most";
static constexpr const char* RelayKey = "traffic/relay";
static constexpr const char* CallsignKey = "traffic/callsign";
static constexpr const char* ListenKey = "traffic/listenPort";
static constexpr const char* FeedOutKey = "traffic/feedOut";

TrafficPrompt::TrafficPrompt(About about, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TrafficPrompt>())
{
    m_ui->setupUi(this);
    setWindowTitle(ToQString(MessageTitle));
    const bool flightGear = about == About::FlightGear;
    m_ui->Label1->setText(flightGear ? tr("&Relay server, or machine that runs FlightGear:")
                                     : tr("&Receiver, or aircraft.json (a file or http://...):"));
    for (QWidget* const row : std::initializer_list<QWidget*>{m_ui->Text2, m_ui->Spin1})
        m_ui->Fields->setRowVisible(row, flightGear);
    m_ui->Fields->setRowVisible(m_ui->Spin2, !flightGear);
    m_ui->Label6->hide();
    adjustSize();
}

TrafficPrompt::~TrafficPrompt() = default;

void TrafficPrompt::accept()
{
    const std::string fault = Fault ? Fault() : std::string();
    if (fault.empty()) {
        QDialog::accept();
        return;
    }
    m_ui->Label6->setText(QString::fromStdString(fault));
    m_ui->Label6->show();
    adjustSize();
}

static std::string Utf8(const QLineEdit& line)
{
    return line.text().trimmed().toStdString();
}

/// What is kept is held to what the control takes.
static void Recall(const DeskSettings& desk, const char* key, QSpinBox& control, int otherwise)
{
    control.setValue(RoundTo<std::int32_t>(desk.Number(key, otherwise)));
}

static int DefaultMost()
{
    return static_cast<int>(DefaultMostTraffic);
}

std::optional<FeedWish> AskFeed(DeskSettings& desk)
{
    TrafficPrompt prompt(TrafficPrompt::About::Feed, QApplication::activeWindow());
    Ui::TrafficPrompt& ui = prompt.Controls();
    ui.Text1->setText(desk.Text(FeedKey, "127.0.0.1:30003"));
    Recall(desk, RadiusKey, *ui.Spin2, RoundTo<std::int32_t>(DefaultTrafficRadiusNm));
    Recall(desk, MostKey, *ui.Spin3, DefaultMost());
    prompt.Fault = [&ui] {
        const auto place = ParseTypedFeedPlace(Utf8(*ui.Text1));
        return place ? std::string() : place.error().Text();
    };
    if (prompt.exec() != QDialog::Accepted)
        return std::nullopt;
    desk.Keep(FeedKey, ui.Text1->text().trimmed());
    desk.Keep(RadiusKey, ui.Spin2->value());
    desk.Keep(MostKey, ui.Spin3->value());
    return FeedWish{*ParseTypedFeedPlace(Utf8(*ui.Text1)), static_cast<double>(ui.Spin2->value()),
                    static_cast<std::size_t>(ui.Spin3->value())};
}

static std::string StationFault(const Ui::TrafficPrompt& ui)
{
    if (const auto place = ParseHostAndPort(Utf8(*ui.Text1), FlightGearPort); !place)
        return place.error().Text();
    return IsStationCallsign(Utf8(*ui.Text2))
               ? std::string()
               : "A callsign has 1 to 7 letters, digits, - and _, and does not begin with obs.";
}

std::optional<FlightGearWish> AskFlightGear(DeskSettings& desk, const AreaModel& area)
{
    TrafficPrompt prompt(TrafficPrompt::About::FlightGear, QApplication::activeWindow());
    Ui::TrafficPrompt& ui = prompt.Controls();
    const QString suggested = ToQString(SuggestedCallsign(area));
    ui.Text1->setText(desk.Text(RelayKey, "mpserver01.flightgear.org:5000"));
    ui.Text2->setText(desk.Text(CallsignKey, suggested));
    Recall(desk, ListenKey, *ui.Spin1, 0);
    Recall(desk, MostKey, *ui.Spin3, DefaultMost());
    prompt.Fault = [&ui] { return StationFault(ui); };
    if (prompt.exec() != QDialog::Accepted)
        return std::nullopt;
    desk.Keep(RelayKey, ui.Text1->text().trimmed());
    if (const QString callsign = ui.Text2->text().trimmed(); callsign != suggested)
        desk.Keep(CallsignKey, callsign); // the area's own is suggested anew for the next one
    desk.Keep(ListenKey, ui.Spin1->value());
    desk.Keep(MostKey, ui.Spin3->value());
    const FeedPlace host = *ParseHostAndPort(Utf8(*ui.Text1), FlightGearPort);
    FlightGearWish wish;
    wish.Link.PartnerHost = host.Host;
    wish.Link.PartnerPort = host.Port;
    wish.Link.ListenPort = static_cast<std::uint16_t>(ui.Spin1->value());
    wish.Link.Station = StationAt(area, Utf8(*ui.Text2));
    wish.Most = static_cast<std::size_t>(ui.Spin3->value());
    return wish;
}

std::optional<std::string> AskFeedOutPort(DeskSettings& desk)
{
    bool accepted = false;
    const QString answer =
        QInputDialog::getText(QApplication::activeWindow(), ToQString(MessageTitle),
                              QObject::tr("Port at which programs of this machine can read the targets as "
                                          "BaseStation text\n(ADDRESS:PORT for other machines):"),
                              QLineEdit::Normal, desk.Text(FeedOutKey, "30003"), &accepted)
            .trimmed();
    if (!accepted)
        return std::nullopt;
    desk.Keep(FeedOutKey, answer);
    return answer.toStdString();
}
} // namespace corvane
