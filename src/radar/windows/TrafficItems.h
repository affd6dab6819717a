#pragma once

#include "radar/TrafficTable.h"

#include <QAbstractTableModel>

#include <vector>

namespace corvane {
/// The members as a table. A member keeps its row for as long as it is there and only what changed is announced, so
/// what is selected or being typed stays.
class TrafficItems final : public QAbstractTableModel {
    Q_OBJECT

public:
    TrafficItems(PlayerTable& players, QObject* parent);

    /// The rows anew, in the order of the player table: members go, and others come after the last.
    void Take(std::vector<TrafficRow> rows);
    [[nodiscard]] const TrafficRow& Row(const QModelIndex& index) const;
    /// Whether any member has something in a column.
    [[nodiscard]] bool HasAny(TrafficColumn column) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Stores a part of a flight plan.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    static constexpr int SortRole = Qt::UserRole;

signals:
    /// A part of a member's flight plan has been stored, or could not be.
    void PlanStored(const QString& callsign, bool stored);

private:
    void RemoveAllBut(const std::vector<TrafficRow>& rows);
    void AnnounceChanges(int row, const TrafficRow& before);

    PlayerTable& m_players;
    std::vector<TrafficRow> m_rows;
};
} // namespace corvane
