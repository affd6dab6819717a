#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace corvane {
/// Qt's messages on standard error, but for those about the system's run-time folder (XDG_RUNTIME_DIR): where a session
/// sets none, Qt takes another, and nobody needs to know.
inline void ShowQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("QStandardPaths: ")))
        return;
    std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}
} // namespace corvane
