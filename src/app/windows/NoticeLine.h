#pragma once

#include <QObject>
#include <QString>

#include <filesystem>
#include <vector>

class QFrame;
class QLabel;
class QPushButton;

namespace corvane {
class DeskSettings;

/// The line at the radar's edge that tells what is missing, one thing after another, until each is dismissed.
class NoticeLine final : public QObject {
    Q_OBJECT

public:
    /// The radar's widgets.
    NoticeLine(DeskSettings& desk, QFrame& bar, QLabel& text, QPushButton& dismiss);

    /// Adds a notice, unless it has been dismissed for good before.
    /// key  under which dismissing it is remembered; empty: it is not
    void Tell(const QString& key, const QString& text);

private:
    struct Notice {
        QString Key;
        QString Text;
    };

    void Dismiss();
    void ShowFirst();

    DeskSettings& m_desk;
    QFrame& m_bar;
    QLabel& m_text;
    std::vector<Notice> m_notices;
};
/// Tells which map files a folder lacks, and where the guide tells how to get them.
void TellMissingMaps(NoticeLine& notices, const std::filesystem::path& folder);
} // namespace corvane
