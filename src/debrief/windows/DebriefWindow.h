#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "core/MessageBoxes.h"
#include "debrief/Debrief.h"

#include <QWidget>

#include <memory>
#include <optional>

namespace Ui {
class DebriefForm;
}

namespace corvane {
/// The debrief of a practice session, as it was when it was asked for: what the page shows, and the page as a file.
class DebriefWindow final : public QWidget {
    Q_OBJECT

public:
    /// grid, boxes  must outlive it
    DebriefWindow(const MagVarGrid& grid, MessageBoxes& boxes);
    ~DebriefWindow() override;

    /// area  over whose map the tracks are drawn
    void Show(Debrief debrief, std::shared_ptr<const AreaModel> area);

signals:
    /// An item's recording is to be played from its moment on.
    void RecordingWanted(const DebriefMoment& moment);

private:
    [[nodiscard]] std::optional<double> PickedTimeS() const;
    void ShowMoment();
    void OpenMoment();
    void ShowTables();
    void ShowPictures();
    void SaveAs(const QString& suffix, const QString& filter);

    std::unique_ptr<Ui::DebriefForm> m_ui;
    const MagVarGrid& m_grid;
    MessageBoxes& m_boxes;
    std::shared_ptr<const Debrief> m_debrief; ///< which the pictures share
    std::shared_ptr<const AreaModel> m_area;
};
} // namespace corvane
