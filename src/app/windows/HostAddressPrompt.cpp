#include "app/windows/HostAddressPrompt.h"

#include "core/MessageBoxes.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"

#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>

namespace corvane {
std::optional<std::string> AskHostAddress(DeskSettings& desk)
{
    constexpr const char* LastAnswer = "connection/host";
    bool accepted = false;
    const QString address =
        QInputDialog::getText(QApplication::activeWindow(), ToQString(MessageTitle),
                              QObject::tr("Name or address of the host (leave it empty to search the local network):"),
                              QLineEdit::Normal, desk.Text(LastAnswer), &accepted);
    if (!accepted)
        return std::nullopt;
    desk.Keep(LastAnswer, address.trimmed());
    return address.trimmed().toStdString();
}
} // namespace corvane
