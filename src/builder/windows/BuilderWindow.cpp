#include "builder/windows/BuilderWindow.h"

#include "builder/windows/BuildReportDialog.h"
#include "core/windows/QtText.h"
#include "ui_BuilderWindow.h"

#include <QCloseEvent>

namespace corvane {
static constexpr int PreparationDelayMs = 1000;
static constexpr int ScanIntervalMs = 5;

BuilderWindow::BuilderWindow(const std::filesystem::path& appFolder, SettingsRecord& settings, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::Form4>()),
      m_settings(settings),
      m_boxes(boxes),
      m_driver(
          std::make_unique<BuildDriver>(appFolder, FolderOfSettings(settings.FsPath, appFolder), settings.FsVersion))
{
    m_ui->setupUi(this);
    m_ui->Command2->setEnabled(false);
    m_readSceneriesPaths.setObjectName("Read_Sceneries_Paths");
    m_readSceneriesPaths.setInterval(PreparationDelayMs);
    m_readSceneriesPaths.setSingleShot(true);
    m_readAllAirports.setObjectName("Read_All_Airports");
    m_readAllAirports.setInterval(ScanIntervalMs);
    connect(&m_readSceneriesPaths, &QTimer::timeout, this, &BuilderWindow::Prepare);
    connect(&m_readAllAirports, &QTimer::timeout, this, &BuilderWindow::ScanOneFile);
    connect(m_ui->Command2, &QPushButton::clicked, this, &BuilderWindow::StartScan);
    m_readSceneriesPaths.start();
}

BuilderWindow::~BuilderWindow() = default;

void BuilderWindow::SetStatus(std::string_view status)
{
    m_ui->Text1->setText(ToQString(status));
    m_ui->Text1->repaint();
}

void BuilderWindow::Prepare()
{
    if (const Result<void> prepared = m_driver->Prepare([this](std::string_view status) { SetStatus(status); });
        !prepared) {
        FailPreparation(prepared.error());
        return;
    }
    m_ui->ProgressBar1->setRange(0, static_cast<int>(m_driver->BglFileCount()) + 1);
    m_ui->ProgressBar1->setValue(0);
    m_ui->Command2->setEnabled(true);
    m_ui->Command2->setFocus();
    SetStatus(StatusDone);
}

void BuilderWindow::StartScan()
{
    m_boxes.Inform("Now the create database file process will begin, this can take a few minutes, please wait");
    m_ui->Command2->setEnabled(false);
    m_ui->KeepGoing->setEnabled(false);
    if (m_ui->KeepGoing->isChecked())
        m_driver->KeepGoing([this](const FileProblems& file) { m_problems.push_back(file); });
    m_scanning.start();
    m_readAllAirports.start();
}

void BuilderWindow::ScanOneFile()
{
    const Result<BuildProgress> progress = m_driver->ScanNext();
    if (!progress) {
        m_readAllAirports.stop();
        FailWith(m_driver->FailureText());
    } else if (progress->Done) {
        m_readAllAirports.stop();
        Finish();
    } else {
        SetStatus(progress->Title);
        m_ui->ProgressBar1->setValue(static_cast<int>(progress->FilesDone));
        ShowTimeLeft(progress->FilesDone);
    }
}

void BuilderWindow::ShowTimeLeft(std::int64_t done)
{
    const std::int64_t left = m_driver->BglFileCount() - done;
    const std::int64_t seconds = m_scanning.elapsed() * left / std::max<std::int64_t>(done, 1) / 1000;
    m_ui->Label3->setText(QStringLiteral("%1 of %2 files, %3 s left").arg(done).arg(done + left).arg(seconds));
}

void BuilderWindow::Finish()
{
    SetStatus(StatusUpdatingSettings);
    const Result<SettingsRecord> settings = m_driver->Finish();
    if (!settings) {
        FailWith("Error - while writing the database:  " + BoxText(settings.error()) +
                 "  . Make room for it and start again. The program will shutdown.");
        return;
    }
    m_settings = *settings;
    m_ui->ProgressBar1->setValue(0);
    m_ui->Label3->clear();
    m_ui->Command2->setEnabled(true);
    SetStatus(StatusDone);
    m_boxes.Show(MessageIcon::Information, "Corvane v3.0",
                 "The creation process, of the database files, was completed!");
    m_over = true;
    if (!m_problems.empty())
        BuildReportDialog(std::move(m_problems), m_boxes, this).exec();
    hide();
    emit Finished();
}

void BuilderWindow::FailPreparation(const Error& error)
{
    m_boxes.Warn(BoxText(error) + ". Please select your Flight Simulator's main path again.");
    m_driver->Abandon();
    m_over = true;
    emit SetUpAgainRequested();
}

void BuilderWindow::FailWith(const std::string& text)
{
    m_boxes.Show(MessageIcon::Critical, MessageTitle, text);
    m_driver->Abandon();
    m_over = true;
    emit Ended();
}

void BuilderWindow::closeEvent(QCloseEvent* event)
{
    if (m_over)
        return;
    event->ignore();
    const bool wasScanning = m_readAllAirports.isActive();
    m_readAllAirports.stop();
    if (!m_boxes.Confirm(MessageTitle, "The database files are not complete. Do you want to stop creating them and end "
                                       "the program?")) {
        if (wasScanning)
            m_readAllAirports.start();
        return;
    }
    if (m_over) // the preparation failed behind the question
        return;
    m_readSceneriesPaths.stop();
    m_driver->Abandon();
    m_over = true;
    emit Ended();
}
} // namespace corvane
