#pragma once

#include <QString>
#include <QVariant>

#include <map>
#include <memory>

class QSettings;
class QWidget;

namespace corvane {
/// What the desk remembers from one day to the next: where windows stood, and what the user chose beside the settings
/// that the program's data files hold. A file of its own in the user's configuration folder; it is written at once.
///
/// Nothing in it is trusted: who reads a value checks it, and a missing one has the reader's default.
class DeskSettings {
public:
    /// Without a file everything is remembered for as long as the program runs. A file that is damaged or no settings
    /// file at all is kept under another name, and Note says so.
    explicit DeskSettings(const QString& file);
    DeskSettings(const DeskSettings&) = delete;
    DeskSettings& operator=(const DeskSettings&) = delete;
    DeskSettings(DeskSettings&&) = delete;
    DeskSettings& operator=(DeskSettings&&) = delete;
    ~DeskSettings();

    /// In the user's configuration folder.
    [[nodiscard]] static QString DefaultFile();

    /// What is wrong with the file, for the user; empty where nothing is.
    [[nodiscard]] const QString& Note() const { return m_note; }

    [[nodiscard]] bool Flag(const QString& key, bool otherwise) const;
    [[nodiscard]] double Number(const QString& key, double otherwise) const;
    /// At most TextLimit characters of one line.
    [[nodiscard]] QString Text(const QString& key, const QString& otherwise = {}) const;
    void Keep(const QString& key, const QVariant& value);

    void KeepPlace(const QString& key, const QWidget& window);
    /// Puts a window where it stood, or, where that is no longer on a screen, as near as it gets. Returns whether a
    /// place is known.
    [[nodiscard]] bool RestorePlace(const QString& key, QWidget& window) const;

    static constexpr int TextLimit = 400;

private:
    void SetAside(const QString& file);

    std::unique_ptr<QSettings> m_file;
    std::map<QString, QVariant> m_values;
    QString m_note;
};
} // namespace corvane
