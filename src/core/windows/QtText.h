#pragma once

#include "core/Text.h"

#include <QString>

#include <string>
#include <string_view>

namespace corvane {
/// The program's 8-bit Windows-1252 texts as Qt's.
inline QString ToQString(std::string_view text)
{
    return QString::fromStdString(Windows1252ToUtf8(text));
}

/// Characters without a Windows-1252 code become "?".
inline std::string ToText(const QString& text)
{
    return Utf8ToWindows1252(text.toStdString());
}
} // namespace corvane
