#include "radar/windows/TrafficWindow.h"

#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "ui_TrafficWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QShortcut>

#include <algorithm>

namespace corvane {
TrafficWindow::TrafficWindow(PlayerTable& players) : m_ui(std::make_unique<Ui::TrafficForm>()), m_items(players, this)
{
    m_ui->setupUi(this);
    m_sorted.setSourceModel(&m_items);
    m_sorted.setSortRole(TrafficItems::SortRole);
    m_sorted.setFilterKeyColumn(-1); // any
    m_sorted.setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_ui->Members->setModel(&m_sorted);
    m_ui->Members->sortByColumn(0, Qt::AscendingOrder);
    PressOnReturn(*this);
    connect(m_ui->Filter, &QLineEdit::textChanged, &m_sorted, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_ui->Copy, &QPushButton::clicked, this, &TrafficWindow::CopyAsCsv);
    connect(m_ui->Members, &QTableView::activated, this, &TrafficWindow::CenterOn);
    connect(&m_items, &TrafficItems::PlanStored, this, [this](const QString& callsign, bool stored) {
        m_ui->Status->setText((stored ? tr("%1: saved") : tr("%1: not saved")).arg(callsign));
    });
    connect(new QShortcut(Qt::Key_F2, m_ui->Members, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this,
            &TrafficWindow::EditPlan);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    ShowOnlyUsedColumns();
    m_ui->Members->setFocus();
}

TrafficWindow::~TrafficWindow() = default;

void TrafficWindow::Show(std::vector<TrafficRow> rows)
{
    const bool first = !m_ui->Members->currentIndex().isValid();
    m_items.Take(std::move(rows));
    ShowOnlyUsedColumns();
    if (!first || m_sorted.rowCount() == 0)
        return;
    m_ui->Members->setCurrentIndex(m_sorted.index(0, 0)); // where the keyboard begins
    SizeColumns();
}

/// Gives columns the width of their texts, and room for those that come later.
void TrafficWindow::SizeColumns()
{
    constexpr int RowGapPx = 8;
    m_ui->Members->resizeColumnsToContents();
    const QFontMetrics font = m_ui->Members->fontMetrics();
    const auto leaveRoom = [&](TrafficColumn column, const char* text) {
        const int at = static_cast<int>(column);
        m_ui->Members->setColumnWidth(at, std::max(m_ui->Members->columnWidth(at), font.horizontalAdvance(text)));
    };
    leaveRoom(TrafficColumn::Callsign, "Marigold1000");
    leaveRoom(TrafficColumn::Type, "Piston Plane  ");
    leaveRoom(TrafficColumn::Departure, "KMMM  ");
    leaveRoom(TrafficColumn::Destination, "KMMM  ");
    m_ui->Members->verticalHeader()->setDefaultSectionSize(font.height() + RowGapPx);
}

/// Edits the part of the flight plan that is current; from any other column, the destination.
void TrafficWindow::EditPlan()
{
    QModelIndex part = m_ui->Members->currentIndex();
    if (part.isValid() && !IsPlanColumn(static_cast<TrafficColumn>(part.column())))
        part = part.siblingAtColumn(static_cast<int>(TrafficColumn::Destination));
    if (!part.flags().testFlag(Qt::ItemIsEditable))
        return; // an observer has none
    m_ui->Members->setCurrentIndex(part);
    m_ui->Members->edit(part);
}

/// Code and frequency have their columns only where a source of traffic sends them.
void TrafficWindow::ShowOnlyUsedColumns()
{
    for (const TrafficColumn column : {TrafficColumn::Code, TrafficColumn::Radio})
        m_ui->Members->setColumnHidden(static_cast<int>(column), !m_items.HasAny(column));
}

void TrafficWindow::CenterOn(const QModelIndex& index)
{
    const QModelIndex source = m_sorted.mapToSource(index);
    if (!source.isValid())
        return;
    if (const auto& position = m_items.Row(source).Position)
        emit CenterRequested(*position);
}

void TrafficWindow::CopyAsCsv()
{
    std::vector<TrafficRow> shown;
    for (int row = 0; row < m_sorted.rowCount(); ++row)
        shown.push_back(m_items.Row(m_sorted.mapToSource(m_sorted.index(row, 0))));
    QApplication::clipboard()->setText(ToQString(TrafficCsv(shown)));
    m_ui->Status->setText(tr("Copied: %1 members").arg(shown.size()));
}
} // namespace corvane
