#include "app/windows/HostAddressPrompt.h"

#include "core/MessageBoxes.h"
#include "core/windows/QtText.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>

namespace corvane {
std::optional<std::string> AskHostAddress()
{
    constexpr const char* LastAnswer = "hostAddress"; // kept by the application for as long as it runs
    bool accepted = false;
    const QString address =
        QInputDialog::getText(QApplication::activeWindow(), ToQString(MessageTitle),
                              QObject::tr("Name or address of the host (leave it empty to search the local network):"),
                              QLineEdit::Normal, qApp->property(LastAnswer).toString(), &accepted);
    if (!accepted)
        return std::nullopt;
    qApp->setProperty(LastAnswer, address.trimmed());
    return address.trimmed().toStdString();
}
} // namespace corvane
