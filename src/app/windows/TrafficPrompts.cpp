#include "app/windows/TrafficPrompts.h"

#include "core/MessageBoxes.h"
#include "core/windows/QtText.h"
#include "traffic/feeds/FeedPlace.h"
#include "traffic/flightgear/AreaStation.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>

namespace corvane {
/// property  under which the application keeps the last answer for as long as it runs
static std::optional<std::string> AskAgain(const char* property, const QString& prompt, const QString& usual)
{
    const QVariant last = qApp->property(property);
    bool accepted = false;
    const QString answer = QInputDialog::getText(QApplication::activeWindow(), ToQString(MessageTitle), prompt,
                                                 QLineEdit::Normal, last.isValid() ? last.toString() : usual, &accepted)
                               .trimmed();
    if (!accepted)
        return std::nullopt;
    qApp->setProperty(property, answer);
    return answer.toStdString();
}

std::optional<std::string> AskFeedAddress()
{
    return AskAgain("feedAddress",
                    QObject::tr("Address of the receiver (HOST:PORT), or of an aircraft.json (a file or http://...):"),
                    "127.0.0.1:30003");
}

std::optional<std::string> AskFeedOutPort()
{
    return AskAgain("feedOutPort",
                    QObject::tr("Port at which programs of this machine can read the targets as BaseStation text\n"
                                "(ADDRESS:PORT for other machines):"),
                    "30003");
}

std::optional<FlightGearLink> AskFlightGear(const AreaModel& area)
{
    FlightGearLink link;
    for (bool found = false; !found;) {
        const auto host =
            AskAgain("flightGearHost", QObject::tr("Relay server, or machine that runs FlightGear (HOST:PORT):"),
                     "mpserver01.flightgear.org:5000");
        if (!host)
            return std::nullopt;
        if (const auto place = ParseHostAndPort(*host, FlightGearPort)) {
            found = true;
            link.PartnerHost = place->Host;
            link.PartnerPort = place->Port;
        }
    }
    std::optional<std::string> callsign;
    do {
        callsign =
            AskAgain("flightGearCallsign",
                     QObject::tr("Your callsign there (1 to 7 letters, digits, - and _; not beginning with obs):"),
                     ToQString(SuggestedCallsign(area)));
        if (!callsign)
            return std::nullopt;
    } while (!IsStationCallsign(*callsign));
    link.Station = StationAt(area, *std::move(callsign));
    return link;
}
} // namespace corvane
