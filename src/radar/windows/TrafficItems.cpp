#include "radar/windows/TrafficItems.h"

#include "core/windows/QtText.h"

#include <cassert>
#include <utility>

namespace corvane {
TrafficItems::TrafficItems(PlayerTable& players, QObject* parent) : QAbstractTableModel(parent), m_players(players) {}

static bool SameMember(const TrafficRow& a, const TrafficRow& b)
{
    return a.PlayerId == b.PlayerId && a.Name == b.Name;
}

/// How many rows are among the new ones, in the same order.
static std::size_t CountKept(const std::vector<TrafficRow>& rows, const std::vector<TrafficRow>& next)
{
    std::size_t kept = 0;
    for (const TrafficRow& row : rows)
        if (kept < next.size() && SameMember(row, next[kept]))
            ++kept;
    return kept;
}

void TrafficItems::Take(std::vector<TrafficRow> rows)
{
    constexpr std::size_t ManyGo = 200; // each one by itself would take long
    if (m_rows.size() - CountKept(m_rows, rows) > ManyGo) {
        beginResetModel();
        m_rows = std::move(rows);
        endResetModel();
        return;
    }
    RemoveAllBut(rows);
    const std::size_t kept = m_rows.size();
    for (std::size_t i = 0; i < kept; ++i) {
        const TrafficRow before = std::exchange(m_rows[i], std::move(rows[i]));
        AnnounceChanges(static_cast<int>(i), before);
    }
    if (rows.size() == kept)
        return;
    beginInsertRows({}, static_cast<int>(kept), static_cast<int>(rows.size()) - 1);
    for (std::size_t i = kept; i < rows.size(); ++i)
        m_rows.push_back(std::move(rows[i]));
    endInsertRows();
}

/// Leaves the members that are there still, which then are the first of the new rows.
void TrafficItems::RemoveAllBut(const std::vector<TrafficRow>& rows)
{
    std::size_t at = 0;
    for (std::size_t row = 0; row < m_rows.size();) {
        if (at < rows.size() && SameMember(m_rows[row], rows[at])) {
            ++row;
            ++at;
            continue;
        }
        std::size_t end = row + 1; // those that go together are announced together
        while (end < m_rows.size() && (at == rows.size() || !SameMember(m_rows[end], rows[at])))
            ++end;
        beginRemoveRows({}, static_cast<int>(row), static_cast<int>(end) - 1);
        m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(row),
                     m_rows.begin() + static_cast<std::ptrdiff_t>(end));
        endRemoveRows();
    }
}

/// Announces the cells that changed, neighbours together.
void TrafficItems::AnnounceChanges(int row, const TrafficRow& before)
{
    const TrafficRow& now = m_rows[static_cast<std::size_t>(row)];
    const std::size_t columns = now.Cells.size();
    for (std::size_t first = 0; first < columns; ++first) {
        if (now.Cells[first] == before.Cells[first])
            continue;
        std::size_t last = first;
        while (last + 1 < columns && now.Cells[last + 1] != before.Cells[last + 1])
            ++last;
        emit dataChanged(index(row, static_cast<int>(first)), index(row, static_cast<int>(last)));
        first = last;
    }
}

const TrafficRow& TrafficItems::Row(const QModelIndex& index) const
{
    assert(index.isValid() && static_cast<std::size_t>(index.row()) < m_rows.size());
    return m_rows[static_cast<std::size_t>(index.row())];
}

bool TrafficItems::HasAny(TrafficColumn column) const
{
    for (const TrafficRow& row : m_rows)
        if (!CellText(row.At(column)).empty())
            return true;
    return false;
}

int TrafficItems::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int TrafficItems::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(TrafficColumnNames.size());
}

static QVariant SortValue(const TrafficCell& cell)
{
    if (const auto* const number = std::get_if<std::int32_t>(&cell))
        return *number;
    return ToQString(CellText(cell)).toLower();
}

/// The first cell reads the whole row aloud, the others their column and value.
static QString Spoken(const TrafficRow& row, std::size_t column)
{
    if (column == 0)
        return ToQString(SpokenRow(row));
    return ToQString(std::string(TrafficColumnNames.at(column).Title) + " " + CellText(row.Cells.at(column)));
}

QVariant TrafficItems::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || static_cast<std::size_t>(index.row()) >= m_rows.size())
        return {};
    const TrafficRow& row = Row(index);
    const auto column = static_cast<std::size_t>(index.column());
    const TrafficCell& cell = row.Cells.at(column);
    const bool isNumber = std::holds_alternative<std::int32_t>(cell);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return ToQString(CellText(cell));
    case SortRole: return SortValue(cell);
    case Qt::AccessibleTextRole: return Spoken(row, column);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    default: return {};
    }
}

QVariant TrafficItems::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return ToQString(TrafficColumnNames.at(static_cast<std::size_t>(section)).Title);
}

Qt::ItemFlags TrafficItems::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool editable =
        index.isValid() && IsPlanColumn(static_cast<TrafficColumn>(index.column())) && Row(index).IsPilot;
    return editable ? flags | Qt::ItemIsEditable : flags;
}

bool TrafficItems::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid())
        return false;
    TrafficRow& row = m_rows[static_cast<std::size_t>(index.row())];
    const auto column = static_cast<TrafficColumn>(index.column());
    const auto entry = m_players.FindPlayer(row.PlayerId, row.Name);
    const bool stored = entry && StorePlan(m_players.Players()[*entry], column, ToText(value.toString()));
    if (stored) {
        const TrafficRow before = row;
        ShowPlan(row, m_players.Players()[*entry]);
        AnnounceChanges(index.row(), before);
    }
    emit PlanStored(ToQString(row.Name), stored);
    return stored;
}
} // namespace corvane
