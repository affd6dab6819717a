#pragma once

#include "app/FeedConnection.h"
#include "app/FlightGearConnection.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Ui {
class TrafficPrompt;
}

namespace corvane {
class DeskSettings;

/// The question where traffic from outside comes from, and how much of it is wanted. It closes on answers that can be
/// used, and tells what is wrong with others.
class TrafficPrompt final : public QDialog {
    Q_OBJECT

public:
    enum class About : std::uint8_t { Feed, FlightGear };
    explicit TrafficPrompt(About about, QWidget* parent = nullptr);
    ~TrafficPrompt() override;

    [[nodiscard]] Ui::TrafficPrompt& Controls() noexcept { return *m_ui; }
    /// What is wrong with the answers; an empty text where nothing is.
    std::function<std::string()> Fault;

    void accept() override;

private:
    std::unique_ptr<Ui::TrafficPrompt> m_ui;
};

// What was answered is offered again the next time. Nothing when the user leaves the question.

/// Asks for a feed of real aircraft: this machine with the usual port is offered at first.
std::optional<FeedWish> AskFeed(DeskSettings& desk);
/// Asks where FlightGear's traffic is found, and for the callsign under which the controller of an area takes part.
std::optional<FlightGearWish> AskFlightGear(DeskSettings& desk, const AreaModel& area);
/// Asks at which port, or address and port, the targets are offered to other programs.
std::optional<std::string> AskFeedOutPort(DeskSettings& desk);
} // namespace corvane
