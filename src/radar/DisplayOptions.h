#pragma once

#include "area/AreaModel.h"
#include "core/Result.h"
#include "tracks/TrackOptions.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {
/// What a target's data block says: the scope's two long lines; callsign, altitude, trend and speed; or these with
/// type, destination and cruise altitude.
enum class BlockContent : std::uint8_t { Classic, Compact, Full };
/// Blocks stand where their leader points, or make room for one another.
enum class BlockPlacement : std::uint8_t { Fixed, Automatic };
/// What is left of the blocks of aircraft on the ground.
enum class GroundBlockContent : std::uint8_t { Full, Callsign, None };
enum class ColourScheme : std::uint8_t { Classic, Contrast, Safe, Dim };

/// How the scope shows its targets. A new one holds the classic display: the scope as it has always been drawn.
struct DisplayOptions {
    BlockContent Blocks = BlockContent::Classic;
    BlockPlacement Placement = BlockPlacement::Fixed;
    std::int32_t LeaderDirection = 9; ///< as on a key pad: 8 is up, 6 right; never 5
    std::int32_t LeaderLengthPx = 30;
    GroundBlockContent GroundBlocks = GroundBlockContent::Full;
    std::int32_t HistoryDots = 0;
    std::int32_t HistorySeconds = 5; ///< from one dot to the next
    std::int32_t PredictionMinutes = 0;
    std::int32_t StaleSeconds = 0; ///< 0: nothing grows stale
    bool ConflictAlert = false;
    bool LowAltitudeAlert = false;
    double ConflictNm = 3;
    std::int32_t ConflictFt = 900;
    std::int32_t ConflictSeconds = 120;
    std::int32_t FloorFt = -2000; ///< targets below are small dots
    std::int32_t CeilingFt = 100000;
    bool TrueProportions = false;
    ColourScheme Colours = ColourScheme::Classic;
    bool operator==(const DisplayOptions&) const = default;
};

constexpr DisplayOptions ClassicDisplay() noexcept
{
    return {};
}
/// The ready set for a crowded sky. A sector's controllers keep aircraft 5 nm apart, those of an airport 3.
DisplayOptions ModernDisplay(ControlMode mode = ControlMode::Airport) noexcept;
/// What of the options concerns the tracks, and what the alerts.
TrackOptions TracksOf(const DisplayOptions& options) noexcept;
AlertOptions AlertsOf(const DisplayOptions& options) noexcept;

/// The ready set of a name, "classic" or "modern"; nothing for any other.
std::optional<DisplayOptions> DisplayByName(std::string_view name, ControlMode mode) noexcept;

/// One of the options: its name, what people read about it, and the values that it takes. Values pass as numbers,
/// choices by their place in the list.
struct DisplayOption {
    std::string_view Name;
    std::string_view Help;                       ///< a clause for windows and help texts, with the unit
    std::span<const std::string_view> Choices{}; ///< where the values have names; the limits are their places then
    double Lowest = 0;
    double Highest = 1;
    bool Whole = true;
    std::optional<double> Except{}; ///< a value within the limits that it does not take
    double (*Get)(const DisplayOptions&) = nullptr;
    void (*Set)(DisplayOptions&, double) = nullptr; ///< for a value that Takes allows

    [[nodiscard]] bool Takes(double value) const noexcept;
    /// "classic, compact or full", "0.5 to 20".
    [[nodiscard]] std::string Range() const;
};

/// All options, in the order of the struct, which is that of windows and help texts.
std::span<const DisplayOption> AllDisplayOptions() noexcept;
/// The option of a name; null where there is none.
const DisplayOption* FindDisplayOption(std::string_view name) noexcept;

/// Changes one value as "NAME=VALUE" asks. Fails, with the options untouched, where there is no such option (the error
/// lists those there are) or the value is out of its range.
Result<void> SetDisplayOption(DisplayOptions& options, std::string_view assignment);
} // namespace corvane
