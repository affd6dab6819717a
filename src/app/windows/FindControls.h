#pragma once

#include <QObject>

#include <memory>

class QAction;
class QWidget;

namespace corvane {
class DeskSettings;
class FindWindow;
class PlayerTable;
class RadarDisplay;
struct AreaModel;
struct FoundPlace;

/// The radar's search: its menu entry opens the window, and what is picked there is centred and flashed.
class FindControls final : public QObject {
    Q_OBJECT

public:
    /// The radar's parts.
    struct Parts {
        DeskSettings& Desk;
        QAction& Open;
        QWidget& Radar;
        QWidget& Scope;
        RadarDisplay& Display;
    };
    FindControls(const Parts& parts, const AreaModel& area, const PlayerTable& players);
    ~FindControls() override;

    /// Closes the window: the area may be another one soon.
    void Close();

signals:
    /// The view is another one.
    void Moved();

private:
    void OpenWindow();
    void CenterOn(const FoundPlace& found);

    Parts m_parts;
    const AreaModel& m_area;
    const PlayerTable& m_players;
    std::unique_ptr<FindWindow> m_window;
};
} // namespace corvane
