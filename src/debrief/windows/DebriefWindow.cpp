#include "debrief/windows/DebriefWindow.h"

#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "debrief/DebriefFile.h"
#include "debrief/DebriefTables.h"
#include "debrief/TracksPicture.h"
#include "ui_DebriefWindow.h"

#include <QDateTime>
#include <QFileDialog>
#include <QHeaderView>
#include <QPointer>
#include <QShortcut>

#include <utility>

namespace corvane {
DebriefWindow::DebriefWindow(const MagVarGrid& grid, MessageBoxes& boxes)
    : m_ui(std::make_unique<Ui::DebriefForm>()), m_grid(grid), m_boxes(boxes)
{
    m_ui->setupUi(this);
    m_ui->Timeline->setAccessibleName(TimelineLabel);
    m_ui->Tracks->setAccessibleName(TracksLabel);
    PressOnReturn(*this);
    connect(m_ui->Items, &QTableWidget::itemSelectionChanged, this, &DebriefWindow::ShowMoment);
    connect(m_ui->Items, &QTableWidget::cellActivated, m_ui->OpenRecording, &QPushButton::click);
    connect(m_ui->OpenRecording, &QPushButton::clicked, this, &DebriefWindow::OpenMoment);
    connect(m_ui->SaveHtml, &QPushButton::clicked, this, [this] { SaveAs("html", tr("Pages (*.html)")); });
    connect(m_ui->SaveJson, &QPushButton::clicked, this, [this] { SaveAs("json", tr("JSON (*.json)")); });
    connect(m_ui->CloseButton, &QPushButton::clicked, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
}

DebriefWindow::~DebriefWindow() = default;

void DebriefWindow::Show(Debrief debrief, std::shared_ptr<const AreaModel> area)
{
    m_debrief = std::make_shared<const Debrief>(std::move(debrief));
    m_area = std::move(area);
    m_ui->Status->clear();
    ShowTables();
    ShowPictures();
}

static void Fill(QTableWidget& widget, const DebriefTable& table)
{
    widget.clear();
    widget.setRowCount(static_cast<int>(table.Rows.size()));
    widget.setColumnCount(table.Rows.empty() ? static_cast<int>(table.Heads.size())
                                             : static_cast<int>(table.Rows.front().size()));
    QStringList heads;
    for (const std::string& head : table.Heads)
        heads << ToQString(head);
    widget.setHorizontalHeaderLabels(heads);
    for (int row = 0; row < widget.rowCount(); ++row)
        for (int column = 0; column < widget.columnCount(); ++column)
            widget.setItem(row, column,
                           new QTableWidgetItem(
                               ToQString(table.Rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)])));
    widget.horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    widget.resizeColumnsToContents();
    widget.resizeRowsToContents();
    if (widget.rowCount() > 0)
        widget.setCurrentCell(0, 0); // where the keyboard begins
}

void DebriefWindow::ShowTables()
{
    setWindowTitle(tr("Debrief: %1").arg(ToQString(m_debrief->Session)));
    Fill(*m_ui->Summary, SummaryTable(*m_debrief));
    Fill(*m_ui->Items, ItemTable(*m_debrief));
    ShowMoment();
    Fill(*m_ui->Flights, FlightTable(*m_debrief));
    m_ui->Pages->setTabText(1, tr("What &happened (%1)").arg(m_debrief->Items.size()));
}

/// The time of the item that is picked, if any is.
std::optional<double> DebriefWindow::PickedTimeS() const
{
    const int row = m_ui->Items->currentRow();
    if (!m_debrief || row < 0 || static_cast<std::size_t>(row) >= m_debrief->Items.size())
        return std::nullopt;
    return m_debrief->Items[static_cast<std::size_t>(row)].TimeS;
}

void DebriefWindow::ShowMoment()
{
    const auto timeS = PickedTimeS();
    m_ui->Moment->setText(timeS ? ToQString(RecordingText(*m_debrief, *timeS)) : QString());
    m_ui->OpenRecording->setEnabled(timeS && m_debrief->MomentOf(*timeS));
}

void DebriefWindow::OpenMoment()
{
    if (const auto timeS = PickedTimeS())
        if (const auto moment = m_debrief->MomentOf(*timeS))
            emit RecordingWanted(*moment);
}

void DebriefWindow::ShowPictures()
{
    m_ui->Timeline->Show(
        [debrief = m_debrief](Surface& surface, PictureSize size) { DrawTimeline(surface, *debrief, size); });
    m_ui->Tracks->Show([debrief = m_debrief, area = m_area, &grid = m_grid](Surface& surface, PictureSize size) {
        DrawTracksPicture(surface, *debrief, *area, grid, size);
    });
}

void DebriefWindow::SaveAs(const QString& suffix, const QString& filter)
{
    const QPointer<QFileDialog> dialog(new QFileDialog(this, tr("Save the debrief")));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(filter);
    dialog->setDefaultSuffix(suffix);
    dialog->selectFile(QDateTime::currentDateTime().toString("'debrief' yyyy-MM-dd HHmm'.'") + suffix);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return; // the window has gone meanwhile
    const QStringList files = dialog->selectedFiles();
    dialog->deleteLater();
    if (!accepted || files.isEmpty())
        return;
    const Result<void> written = WriteDebrief(ToPath(files.first()), *m_debrief, *m_area, m_grid);
    m_ui->Status->setText(written ? tr("Saved: %1").arg(files.first()) : QString());
    if (!written)
        m_boxes.Warn(BoxText(written.error()));
}
} // namespace corvane
