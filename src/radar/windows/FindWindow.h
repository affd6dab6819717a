#pragma once

#include "radar/AreaSearch.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace Ui {
class FindForm;
}

namespace corvane {
/// Finds a place of the area or a pilot while one types. The radar goes on beside it.
class FindWindow final : public QWidget {
    Q_OBJECT

public:
    FindWindow(const AreaModel& area, const PlayerTable& players);
    ~FindWindow() override;

    /// The keyboard is in the field again, whose text the next key replaces.
    void StartAgain();

signals:
    void Picked(const FoundPlace& found);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowFound();
    void Pick();

    std::unique_ptr<Ui::FindForm> m_ui;
    AreaSearch m_search;
    const PlayerTable& m_players;
    std::vector<FoundPlace> m_found;
};
} // namespace corvane
