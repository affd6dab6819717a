#include "builder/windows/BuildReportDialog.h"

#include "core/AtomicFile.h"
#include "core/windows/QtText.h"
#include "ui_BuildReportDialog.h"

#include <QFileDialog>

namespace corvane {
BuildReportDialog::BuildReportDialog(std::vector<FileProblems> files, MessageBoxes& boxes, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::BuildReportForm>()), m_files(std::move(files)), m_boxes(boxes)
{
    m_ui->setupUi(this);
    FillTable();
    connect(m_ui->SaveButton, &QPushButton::clicked, this, &BuildReportDialog::Save);
    connect(m_ui->CloseButton, &QPushButton::clicked, this, &QDialog::accept);
}

BuildReportDialog::~BuildReportDialog() = default;

void BuildReportDialog::FillTable()
{
    std::int64_t problems = 0;
    int row = 0;
    for (const FileProblems& file : m_files) {
        problems += file.Problems.Count;
        const RecordCounts& found = file.Records;
        const QStringList start{ToQString(file.Area), ToQString(file.File),
                                QString::number(found.Airports + found.Vors + found.Ndbs + found.Airspaces)};
        m_ui->Problems->setRowCount(row + static_cast<int>(file.Problems.First.size()));
        for (const ScanProblem& problem : file.Problems.First) {
            const QStringList cells = start + QStringList{QString::number(problem.Offset), ToQString(problem.Why)};
            for (int column = 0; column < cells.size(); ++column) {
                auto* const cell = new QTableWidgetItem(cells[column]);           // the table's
                cell->setToolTip("<p>" + cells[column].toHtmlEscaped() + "</p>"); // long reasons are cut off
                m_ui->Problems->setItem(row, column, cell);
            }
            ++row;
        }
    }
    m_ui->Problems->resizeColumnsToContents();
    m_ui->Summary->setText(tr("Problems that the build has gone past: %1, in scenery files: %2. The database has what "
                              "could be read of them.")
                               .arg(problems)
                               .arg(m_files.size()));
}

void BuildReportDialog::Save()
{
    const QString file =
        QFileDialog::getSaveFileName(this, tr("Save the report"), "build-report.jsonl", tr("JSON lines (*.jsonl)"));
    if (file.isEmpty())
        return;
    const std::string lines = BuildReportLines(m_files);
    const ByteSpan content(reinterpret_cast<const std::uint8_t*>(lines.data()), lines.size());
    if (const Result<void> written = WriteFileAtomically(ToPath(file), content); !written)
        m_boxes.Warn(BoxText(written.error()));
}
} // namespace corvane
