#pragma once

#include "builder/BuildReport.h"
#include "core/MessageBoxes.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class BuildReportForm;
}

namespace corvane {
/// What a build that kept going has passed over: a row for each problem, and the same as a JSON file.
class BuildReportDialog final : public QDialog {
    Q_OBJECT

public:
    BuildReportDialog(std::vector<FileProblems> files, MessageBoxes& boxes, QWidget* parent);
    ~BuildReportDialog() override;

private:
    void FillTable();
    void Save();

    std::unique_ptr<Ui::BuildReportForm> m_ui;
    std::vector<FileProblems> m_files;
    MessageBoxes& m_boxes;
};
} // namespace corvane
