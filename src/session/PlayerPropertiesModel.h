#pragma once

#include "core/Geodesy.h"
#include "core/MessageBoxes.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The fields of the flight plan editor, as shown and as typed. Texts are Windows-1252.
struct FlightPlanFields {
    std::string Name = "-None-";
    std::string AircraftTitle = "-None-";
    std::string AircraftType = "-None-";
    std::string DepartureIcao = "-None-";
    std::string DestinationIcao = "-None-";
    bool Ifr = false; ///< "IFR" is selected, not "VFR"
    std::string CruiseAltitude = "0";
    bool operator==(const FlightPlanFields&) const = default;
};

/// The logic of the window in which the controller keeps the pilots' flight plans.
///
/// The window shows Names, Selected and Fields again whenever the editor says that they changed. It never updates by
/// itself: a pilot that left is noticed when it is picked or a button is pressed; the list is rebuilt then, with
/// nothing selected, and shown before a box reports it. While nothing is selected the buttons do nothing.
class PlayerPropertiesModel {
public:
    PlayerPropertiesModel(const SessionState& session, PlayerTable& players, MessageBoxes& boxes,
                          std::function<void()> changed)
        : m_session(session), m_players(players), m_boxes(boxes), m_changed(std::move(changed))
    {
    }

    void Load();
    /// An item of the list was picked: shows the pilot's fields.
    void Pick(std::size_t index);
    /// Stores the typed flight plan. A cruise altitude that the table cannot hold is refused with a warning: nothing is
    /// stored then, and what was typed stays.
    void Save(const FlightPlanFields& typed);
    /// Forgets what was typed.
    void Discard();
    /// The picked pilot's position, on which the scope is to be centred; nothing when no pilot is picked or it has
    /// left.
    std::optional<LatLon> Center();

    /// The pilots on offer, in table order.
    [[nodiscard]] const std::vector<std::string>& Names() const noexcept { return m_names; }
    [[nodiscard]] const FlightPlanFields& Fields() const noexcept { return m_fields; }
    [[nodiscard]] std::optional<std::size_t> Selected() const noexcept { return m_selected; }

private:
    PlayerRecord* PickedPilot();
    [[nodiscard]] bool SomethingIsPicked() const noexcept { return m_selected && m_players.PlayerCount() > 0; }
    void ResetFields();
    void RebuildNames();
    void PilotNotFound();

    const SessionState& m_session;
    PlayerTable& m_players;
    MessageBoxes& m_boxes;
    std::function<void()> m_changed;
    std::vector<std::string> m_names;
    std::optional<std::size_t> m_selected;
    FlightPlanFields m_fields;
};

/// The cruise altitude in feet that a text begins with; nothing where a flight plan cannot hold it.
std::optional<std::int16_t> CruiseAltitudeOf(std::string_view text);

/// The number at the start of a text: an optional sign, digits, a decimal part. Spaces anywhere in it are skipped, so
/// "12 000 ft" reads 12000; there are no exponents ("3E4" reads 3). 0 where the text starts with no number.
double LeadingNumber(std::string_view text);
} // namespace corvane
