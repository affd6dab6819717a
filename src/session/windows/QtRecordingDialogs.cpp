#include "session/windows/QtRecordingDialogs.h"

#include "recording/RecordingFormat.h"

#include <QApplication>
#include <QDateTime>
#include <QFileDialog>
#include <QPointer>

namespace corvane {
static QString FileFilter()
{
    const auto extension = QString::fromUtf8(RecordingExtension.data(), static_cast<int>(RecordingExtension.size()));
    return QStringLiteral("Recorded sessions (*%1);;All files (*)").arg(extension);
}

static std::optional<std::filesystem::path> Ask(const QPointer<QFileDialog>& dialog)
{
    dialog->setNameFilter(FileFilter());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return std::nullopt; // its window has gone meanwhile, and it with it
    const QStringList files = dialog->selectedFiles();
    dialog->deleteLater();
    if (!accepted || files.isEmpty())
        return std::nullopt;
    return std::filesystem::path(files.first().toStdString());
}

std::optional<std::filesystem::path> QtRecordingDialogs::AskWhereToRecord()
{
    const QPointer<QFileDialog> dialog(new QFileDialog(QApplication::activeWindow(), "Record session"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix("cvr");
    dialog->selectFile(QDateTime::currentDateTime().toString("'session' yyyy-MM-dd HHmm'.cvr'"));
    return Ask(dialog);
}

std::optional<std::filesystem::path> QtRecordingDialogs::AskWhatToPlay()
{
    const QPointer<QFileDialog> dialog(new QFileDialog(QApplication::activeWindow(), "Recorded session"));
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    return Ask(dialog);
}
} // namespace corvane
