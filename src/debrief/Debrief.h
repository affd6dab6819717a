#pragma once

#include "core/LatLon.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
enum class DebriefKind : std::uint8_t {
    Separation,
    LowAltitude,
    Wake,
    GoAround,
    Refused,
    NotUnderstood,
    Unanswered, ///< the controller's call, by a pilot
    Waited,     ///< a pilot's call, for the controller
    FuelOut,
};
/// "separation", "low altitude", ...: as the files of a debrief name it.
const char* NameOf(DebriefKind kind) noexcept;

/// One thing that is worth a word after the session.
struct DebriefItem {
    double TimeS = 0; ///< since the session began; a recording of it stands there at the same time
    DebriefKind Kind = DebriefKind::Separation;
    std::vector<std::string> Who; ///< callsigns
    std::string What;
    std::string Why; ///< what was said before; empty where nothing was
};

/// Where an aircraft was at a time.
struct DebriefPlace {
    double TimeS = 0;
    LatLon Position;
    std::int32_t AltitudeFt = 0;
};

struct DebriefFlight {
    std::string Callsign;
    std::string AircraftTitle;
    std::optional<double> YoursS;   ///< the controller's first word to it that it answered
    std::optional<double> TookOffS; ///< first
    std::optional<double> LandedS;
    std::string LandedAt;              ///< ICAO code
    std::optional<double> ReadyS;      ///< of a departure: its first call, or when it first moved
    std::optional<double> UnhinderedS; ///< that its way to the landing, or from there to the take-off, takes by itself
    int Instructions = 0;
    std::vector<DebriefPlace> Track;

    /// Seconds more than the unhindered flight, or for a departure more than it takes to the first take-off; nothing
    /// where that is not known.
    [[nodiscard]] std::optional<double> DelayS() const;
};

/// A file to which a stretch of the session was recorded.
struct DebriefRecording {
    std::filesystem::path File;
    double BeginS = 0; ///< since the session began
    double EndS = 0;
};

/// A moment of the session in its recording.
struct DebriefMoment {
    std::filesystem::path File;
    double AtS = 0; ///< since the recording began, not below 0
};

/// What a session of controlling came to. Texts are Windows-1252.
struct Debrief {
    std::string Session;
    double LengthS = 0;
    int Instructions = 0; ///< that were answered, refused and not understood ones included
    int Refused = 0;
    int NotUnderstood = 0;
    int Unanswered = 0;
    int GoArounds = 0;
    int Landings = 0; ///< of aircraft that were yours; so the rest
    int TakeOffs = 0;
    double LongestCallS = 0; ///< that a pilot waited for an answer
    std::string LongestCallBy;
    double DelayS = 0;              ///< of all that landed or took off
    std::vector<DebriefItem> Items; ///< by time
    std::vector<DebriefFlight> Flights;
    std::vector<int> Handled; ///< aircraft that were yours, at the end of each minute
    std::vector<DebriefRecording> Recordings;

    /// Where a time of the session is recorded; nothing where it is not.
    [[nodiscard]] std::optional<DebriefMoment> MomentOf(double timeS) const;
};
} // namespace corvane
