#pragma once

#include "core/Text.h"

#include <QString>

#include <filesystem>
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

/// A path as the person typed or chose it, with whatever letters it has.
inline std::filesystem::path ToPath(const QString& path)
{
    const QByteArray utf8 = path.toUtf8();
    return std::u8string(utf8.begin(), utf8.end());
}
} // namespace corvane
