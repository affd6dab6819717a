#pragma once

#include <QObject>

#include <memory>

class QAction;
class QWidget;

namespace corvane {
class DeskSettings;
class RadarDisplay;
class SecondScopeWindow;
struct AppState;
struct Appearance;
struct PlayerRecord;

/// The radar's second scope: its menu entry opens the window, which closes with the radar.
class SecondScopeControls final : public QObject {
    Q_OBJECT

public:
    /// The radar's parts. The second scope begins where the display looks, and looks as the radar does.
    struct Parts {
        QAction& Open;
        QWidget& Radar;
        const RadarDisplay& Display;
        const Appearance& Look;
    };
    SecondScopeControls(const Parts& parts, const AppState& state, DeskSettings& desk);
    ~SecondScopeControls() override;

    // What the radar hears; nothing while the window is closed.
    void Report(const PlayerRecord& member);
    void ShowNewArea();
    void Pause();
    void Resume();
    void Close();

signals:
    void PropertiesRequested(QString name);
    void WriteRequested(QString name);

private:
    void OpenWindow();
    [[nodiscard]] bool IsOpen() const;

    Parts m_parts;
    const AppState& m_state;
    DeskSettings& m_desk;
    std::unique_ptr<SecondScopeWindow> m_window;
};
} // namespace corvane
