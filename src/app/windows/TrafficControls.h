#pragma once

#include "core/MessageBoxes.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class QAction;
class QLabel;

namespace corvane {
struct AppState;
class DeskSettings;
class FeedOut;

/// The radar's controls for traffic from outside and to it: the menu entry that offers the targets to other programs,
/// and the line of text that tells how the link of the traffic is and who reads along. Refresh, called some ten times
/// a second, brings both up to date and sends what is due.
class TrafficControls final : public QObject {
    Q_OBJECT

public:
    /// The widgets are the radar's.
    TrafficControls(const AppState& state, MessageBoxes& boxes, DeskSettings& desk, QAction& offer, QLabel& status);
    ~TrafficControls() override;

    void Refresh();

private:
    void OfferTriggered(bool on);
    void ShowState();

    const AppState& m_state;
    MessageBoxes& m_boxes;
    DeskSettings& m_desk;
    QAction& m_offer;
    QLabel& m_status;
    std::unique_ptr<FeedOut> m_out; ///< null: the targets are not offered
    QElapsedTimer m_clock;
};
} // namespace corvane
