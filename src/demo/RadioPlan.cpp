#include "demo/RadioPlan.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace corvane {
std::int32_t TextHash(std::string_view text) noexcept
{
    constexpr std::int32_t Modulus = 1000003;
    std::int32_t hash = 0;
    for (const char c : text)
        hash = (31 * hash + static_cast<unsigned char>(c)) % Modulus;
    return hash;
}

IlsEnds IlsEndsOf(const AirportSource& airport, std::size_t runway)
{
    const int lengthFt = airport.Runways[runway].LengthFt;
    if (airport.Large)
        return {lengthFt >= 5000, lengthFt >= 7000};
    const bool longest = std::none_of(airport.Runways.begin(), airport.Runways.end(),
                                      [&](const RunwayData& other) { return other.LengthFt > lengthFt; });
    return {airport.Scheduled && longest && lengthFt >= 6500, false};
}

namespace {
/// The channels of one service and who uses them.
class Band {
public:
    Band(std::int32_t lowestKhz, std::int32_t stepKhz, std::int32_t channels)
        : m_lowest(lowestKhz), m_step(stepKhz), m_channels(channels)
    {
    }

    std::int32_t Take(LatLon at, std::int32_t hash)
    {
        std::vector<bool> used(static_cast<std::size_t>(m_channels));
        for (const User& user : m_users) {
            if (IsNear(user.At, at))
                used[static_cast<std::size_t>(user.Channel)] = true;
        }
        std::int32_t channel = hash % m_channels;
        for (std::int32_t i = 0; i < m_channels; ++i) {
            const std::int32_t candidate = (hash + i) % m_channels;
            if (!used[static_cast<std::size_t>(candidate)]) {
                channel = candidate;
                break;
            }
        }
        m_users.push_back({at, channel});
        return m_lowest + channel * m_step;
    }

private:
    struct User {
        LatLon At;
        std::int32_t Channel;
    };

    /// Within a degree of latitude and as many miles of longitude.
    static bool IsNear(LatLon a, LatLon b) noexcept
    {
        if (std::abs(a.Lat - b.Lat) > 1)
            return false;
        const double lon = std::abs(NormalizeLongitude(a.Lon - b.Lon));
        return lon * std::cos(a.Lat * RadiansPerDegree) <= 1;
    }

    std::int32_t m_lowest;
    std::int32_t m_step;
    std::int32_t m_channels;
    std::vector<User> m_users;
};

struct Bands {
    Band Tower{118100, 25, 96};
    Band Clearance{120500, 25, 40};
    Band Ground{121600, 25, 16};
    Band Approach{124000, 25, 120};
    Band Departure{127000, 25, 120};
    Band Localizer{0, 1, 40}; ///< channel numbers: two to an odd tenth
};
} // namespace

static std::int32_t LocalizerKhz(std::int32_t channel)
{
    return 108100 + channel / 2 * 200 + channel % 2 * 50;
}

static std::int32_t KnownOr(const std::optional<double>& megahertz, std::int32_t planned)
{
    return megahertz ? RoundTo<std::int32_t>(*megahertz * 1000) : planned;
}

static void PlanLocalizers(const AirportSource& airport, std::int32_t hash, Band& band, AirportRadio& radio)
{
    for (std::size_t i = 0; i < airport.Runways.size(); ++i) {
        const IlsEnds ends = IlsEndsOf(airport, i);
        radio.FirstEndIls.push_back(ends.First ? LocalizerKhz(band.Take(airport.Runways[i].Center, hash)) : 0);
        radio.FarEndIls.push_back(ends.Far ? LocalizerKhz(band.Take(airport.Runways[i].Center, hash)) : 0);
    }
}

static AirportRadio PlanAirport(const AirportSource& airport, Bands& bands)
{
    const std::int32_t hash = TextHash(airport.Icao);
    const LatLon at = airport.Position;
    AirportRadio radio;
    radio.Tower = KnownOr(airport.TowerMhz, bands.Tower.Take(at, hash));
    radio.Ground = KnownOr(airport.GroundMhz, bands.Ground.Take(at, hash));
    radio.Clearance = KnownOr(airport.ClearanceMhz, airport.Large ? bands.Clearance.Take(at, hash) : 0);
    radio.Approach = KnownOr(airport.ApproachMhz, airport.Large ? bands.Approach.Take(at, hash) : 0);
    radio.Departure = KnownOr(airport.DepartureMhz, airport.Large ? bands.Departure.Take(at, hash) : 0);
    PlanLocalizers(airport, hash, bands.Localizer, radio);
    return radio;
}

std::vector<AirportRadio> PlanRadio(std::span<const AirportSource> airports)
{
    Bands bands;
    std::vector<AirportRadio> plans;
    plans.reserve(airports.size());
    for (const AirportSource& airport : airports)
        plans.push_back(PlanAirport(airport, bands));
    return plans;
}
} // namespace corvane
