#pragma once

#include "builder/BuildDriver.h"
#include "core/MessageBoxes.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class Form4;
}

namespace corvane {
/// Builds the scenery database, one scenery file a timer tick.
class BuilderWindow final : public QWidget {
    Q_OBJECT

public:
    /// settings  of the set-up; those of the finished database take their place
    BuilderWindow(const std::filesystem::path& appFolder, SettingsRecord& settings, MessageBoxes& boxes);
    ~BuilderWindow() override;

signals:
    /// The database is complete; the area chooser is next.
    void Finished();
    /// The simulator's folder no longer holds what the build needs; nothing is left, and it must be chosen again.
    void SetUpAgainRequested();
    /// The build failed or was given up; nothing incomplete is left, and the program ends.
    void Ended();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Prepare();
    void StartScan();
    void ScanOneFile();
    void Finish();
    void FailPreparation(const Error& error);
    void FailWith(const std::string& text);
    void SetStatus(std::string_view status);
    void ShowTimeLeft(std::int64_t done);

    std::unique_ptr<Ui::Form4> m_ui;
    SettingsRecord& m_settings;
    MessageBoxes& m_boxes;
    std::unique_ptr<BuildDriver> m_driver;
    QTimer m_readSceneriesPaths{this};
    QTimer m_readAllAirports{this};
    QElapsedTimer m_scanning;
    std::vector<FileProblems> m_problems; ///< of a build that keeps going
    bool m_over = false;
};
} // namespace corvane
