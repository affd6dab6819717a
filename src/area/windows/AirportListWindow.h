#pragma once

#include "area/AirportListModel.h"
#include "area/AreaModel.h"
#include "core/MessageBoxes.h"

#include <QWidget>

#include <memory>

namespace Ui {
class Form9;
}

namespace corvane {
/// The airports of the area: read about one, or centre the scope on it.
class AirportListWindow final : public QWidget {
    Q_OBJECT

public:
    AirportListWindow(const AreaModel& area, MessageBoxes& boxes);
    ~AirportListWindow() override;

signals:
    void CenterRequested(corvane::LatLon center);
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    [[nodiscard]] AirportListMode Mode() const;
    void FillList();
    [[nodiscard]] std::vector<const AirportRecord*> PickedAirports() const;
    void CenterOnPicked();
    void ShowInfo();

    std::unique_ptr<Ui::Form9> m_ui;
    const AreaModel& m_area;
    MessageBoxes& m_boxes;
    std::vector<std::string> m_entries;
};
} // namespace corvane
