#include "session/PlayerPropertiesModel.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <charconv>
#include <limits>

namespace corvane {
static bool IsEligible(const PlayerRecord& player, const SessionState& session, const Result<std::string>& ownName)
{
    // Where the session cannot tell the own name any more, the id alone has to do.
    return ownName ? EligiblePilot(player, session.OwnPlayerId, *ownName)
                   : player.Role == PilotRole && player.PlayerId != session.OwnPlayerId;
}

void PlayerPropertiesModel::Load()
{
    RebuildNames();
    ResetFields();
}

void PlayerPropertiesModel::ResetFields()
{
    m_fields = {};
    m_changed();
}

void PlayerPropertiesModel::RebuildNames()
{
    m_selected.reset();
    m_names.clear();
    const auto ownName = OwnFriendlyName(m_session);
    for (const PlayerRecord& player : m_players.Players()) {
        if (IsEligible(player, m_session, ownName))
            m_names.push_back(player.Name);
    }
}

/// The last of the pilots that bear the selected name; null when there is none.
PlayerRecord* PlayerPropertiesModel::PickedPilot()
{
    PlayerRecord* pilot = nullptr;
    const auto ownName = OwnFriendlyName(m_session);
    for (PlayerRecord& player : m_players.Players()) {
        if (player.Name == m_names[*m_selected] && IsEligible(player, m_session, ownName))
            pilot = &player;
    }
    return pilot;
}

void PlayerPropertiesModel::PilotNotFound()
{
    RebuildNames();
    ResetFields();
    m_boxes.Inform("The player you had selected is not currently in the session, select another player.");
}

void PlayerPropertiesModel::Pick(std::size_t index)
{
    if (index >= m_names.size() || m_players.PlayerCount() == 0)
        return;
    m_selected = index;
    const PlayerRecord* pilot = PickedPilot();
    if (pilot == nullptr)
        return PilotNotFound();
    m_fields.Name = pilot->Name;
    m_fields.AircraftTitle = pilot->AircraftTitle;
    m_fields.AircraftType = pilot->AircraftType;
    m_fields.DepartureIcao = pilot->DepartureIcao;
    m_fields.DestinationIcao = pilot->DestinationIcao;
    m_fields.Ifr = pilot->FlightRules != 0;
    m_fields.CruiseAltitude = NumberText(std::int32_t{pilot->CruiseAltitude});
    m_changed();
}

void PlayerPropertiesModel::Save(const FlightPlanFields& typed)
{
    if (!SomethingIsPicked())
        return;
    m_fields = typed;
    PlayerRecord* pilot = PickedPilot();
    if (pilot == nullptr)
        return PilotNotFound();
    const auto altitude = CruiseAltitudeOf(typed.CruiseAltitude);
    if (!altitude)
        return m_boxes.Warn("The cruise altitude must be a number of feet from -32768 to 32767.");
    pilot->FlightRules = typed.Ifr ? 1 : 0;
    pilot->DepartureIcao = TrimSpaces(typed.DepartureIcao);
    pilot->DestinationIcao = TrimSpaces(typed.DestinationIcao);
    pilot->CruiseAltitude = *altitude;
    ResetFields();
}

void PlayerPropertiesModel::Discard()
{
    if (!SomethingIsPicked())
        return;
    if (PickedPilot() == nullptr)
        return PilotNotFound();
    ResetFields();
}

std::optional<LatLon> PlayerPropertiesModel::Center()
{
    if (!SomethingIsPicked())
        return std::nullopt;
    const PlayerRecord* pilot = PickedPilot();
    if (pilot == nullptr) {
        PilotNotFound();
        return std::nullopt;
    }
    return LatLon{pilot->Latitude, pilot->Longitude};
}

std::optional<std::int16_t> CruiseAltitudeOf(std::string_view text)
{
    return RoundChecked<std::int16_t>(LeadingNumber(TrimSpaces(text)));
}

double LeadingNumber(std::string_view text)
{
    std::string number;
    bool inDecimals = false;
    bool isLarge = false; // has a whole part, for numbers too long to be a double
    for (const char c : text) {
        if (c == ' ')
            continue;
        const bool digit = c >= '0' && c <= '9';
        const bool sign = number.empty() && (c == '-' || c == '+');
        if (!digit && !sign && (c != '.' || inDecimals))
            break;
        inDecimals = inDecimals || c == '.';
        isLarge = isLarge || (digit && c != '0' && !inDecimals);
        number += c;
    }
    const bool positive = number.starts_with('+');
    double value = 0;
    const auto end = std::from_chars(number.data() + (positive ? 1 : 0), number.data() + number.size(), value,
                                     std::chars_format::fixed);
    if (end.ec == std::errc::result_out_of_range && isLarge)
        value = std::numeric_limits<double>::infinity();
    return value;
}
} // namespace corvane
