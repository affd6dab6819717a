#include "core/windows/DeskSettings.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QStringView>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace corvane {
QString DeskSettings::DefaultFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/corvane/desk.ini";
}

/// Whether a line is empty, a comment, names a section or gives a key its value.
static bool IsSettingsLine(QStringView line)
{
    const QStringView text = line.trimmed(); // a carriage return may end it
    const bool isText = std::none_of(text.begin(), text.end(), [](QChar c) { return c < ' ' || c == QChar(0x7F); });
    return isText && (text.isEmpty() || text.startsWith(';') || (text.startsWith('[') && text.endsWith(']')) ||
                      text.indexOf('=') > 0);
}

/// QSettings makes keys of whatever it reads; what it writes is lines of UTF-8 with the ASCII controls escaped.
static bool IsSettingsText(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless); // half a character is an error
    const QString text = decoder(bytes);
    const QList<QStringView> lines = QStringView(text).split('\n');
    return !decoder.hasError() && std::all_of(lines.begin(), lines.end(), IsSettingsLine);
}

/// Whether a file can be read as settings. What is too large was not written here.
static bool IsReadable(const QString& file)
{
    constexpr qint64 SizeLimit = 1 << 20;
    if (!QFileInfo::exists(file))
        return true;
    QFile content(file);
    if (content.size() > SizeLimit || !content.open(QIODevice::ReadOnly))
        return false;
    return IsSettingsText(content.read(SizeLimit)) &&
           QSettings(file, QSettings::IniFormat).status() == QSettings::NoError;
}

DeskSettings::DeskSettings(const QString& file)
{
    if (file.isEmpty())
        return;
    if (!IsReadable(file))
        SetAside(file);
    m_file = std::make_unique<QSettings>(file, QSettings::IniFormat);
    for (const QString& key : m_file->allKeys())
        m_values[key] = m_file->value(key);
}

DeskSettings::~DeskSettings() = default;

void DeskSettings::SetAside(const QString& file)
{
    const QString aside = file + ".damaged";
    QFile::remove(aside);
    m_note = QFile::rename(file, aside)
                 ? QStringLiteral("What was remembered of the desk could not be read; the file is now %1.").arg(aside)
                 : QStringLiteral("What was remembered of the desk could not be read: %1.").arg(file);
}

bool DeskSettings::Flag(const QString& key, bool otherwise) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? otherwise : found->second.toBool();
}

double DeskSettings::Number(const QString& key, double otherwise) const
{
    const auto found = m_values.find(key);
    bool isNumber = false;
    const double number = found == m_values.end() ? 0 : found->second.toDouble(&isNumber);
    return isNumber && std::isfinite(number) ? number : otherwise;
}

QString DeskSettings::Text(const QString& key, const QString& otherwise) const
{
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return otherwise;
    QString text = found->second.toString().left(TextLimit);
    for (QChar& c : text)
        if (c.category() == QChar::Other_Control)
            c = ' ';
    return text;
}

void DeskSettings::Keep(const QString& key, const QVariant& value)
{
    m_values[key] = value;
    if (!m_file)
        return;
    m_file->setValue(key, value);
    m_file->sync();
}

void DeskSettings::KeepPlace(const QString& key, const QWidget& window)
{
    Keep(key, window.saveGeometry());
}

bool DeskSettings::RestorePlace(const QString& key, QWidget& window) const
{
    const auto found = m_values.find(key);
    return found != m_values.end() && window.restoreGeometry(found->second.toByteArray());
}
} // namespace corvane
