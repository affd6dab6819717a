#pragma once

#include "radar/windows/TrafficItems.h"

#include <QSortFilterProxyModel>
#include <QWidget>

#include <memory>

namespace Ui {
class TrafficForm;
}

namespace corvane {
/// The list of all members, sorted and filtered as one likes: the scope in words. The keyboard alone suffices.
class TrafficWindow final : public QWidget {
    Q_OBJECT

public:
    explicit TrafficWindow(PlayerTable& players);
    ~TrafficWindow() override;

    void Show(std::vector<TrafficRow> rows);

signals:
    void CenterRequested(LatLon center);

private:
    void CenterOn(const QModelIndex& index);
    void CopyAsCsv();
    void EditPlan();
    void ShowOnlyUsedColumns();
    void SizeColumns();

    std::unique_ptr<Ui::TrafficForm> m_ui;
    TrafficItems m_items;
    QSortFilterProxyModel m_sorted;
};
} // namespace corvane
