#pragma once

#include "area/AreaModel.h"
#include "area/EarlyEnds.h"
#include "core/MagVarGrid.h"
#include "core/Result.h"
#include "core/Settings.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// What the area chooser reads and fills of the program's state; all of it is borrowed.
struct ChooserState {
    const std::filesystem::path& AppFolder;
    const SettingsRecord& Settings;
    const bool& RadarOpen; ///< a session is joined
    MagVarGrid& MagVar;
    std::vector<AirspaceRecord>& AllAirspaces; ///< the whole airspaces file, while the chooser is open
    AreaModel& Area;
};

/// What the area chooser's logic asks of its window. Each call shows at once: long work may follow.
class ChooserView {
public:
    ChooserView() = default;
    ChooserView(const ChooserView&) = delete;
    ChooserView& operator=(const ChooserView&) = delete;
    ChooserView(ChooserView&&) = delete;
    ChooserView& operator=(ChooserView&&) = delete;
    virtual ~ChooserView() = default;

    virtual void SetStatus(std::string_view status) = 0;
    /// The progress bar, whose minimum is always 0.
    virtual void SetProgress(int value, int maximum) = 0;
    /// Both buttons, both lists and both options. Enabling leaves the list of the mode that is not chosen disabled.
    virtual void SetControlsEnabled(bool enabled) = 0;
    /// Runs work that touches nothing of the window's thread, and returns once it has ended. A window runs it on
    /// another thread, so that everything else goes on meanwhile.
    virtual void RunLongWork(const std::function<void()>& work) { work(); }
    /// The user has left in the middle of long work: what it is part of is to end as soon as it can.
    [[nodiscard]] virtual bool Abandoned() const { return false; }
};

/// What the window does next.
enum class ChooserNext : std::uint8_t {
    Stay,
    ReturnToRadar,  ///< give the main window back, unchanged, and close
    ShowNewArea,    ///< give it back, set its caption, centre it on the area, and close
    OpenConnection, ///< open the connection window and close
    SetUpAgain,     ///< delete the database files, close, and begin with the set-up
    EndProgram,
};

/// What may help where a file cannot be read.
enum class Remedy : std::uint8_t {
    PutRight,    ///< nothing but the file itself: no build makes it
    NewFromMenu, ///< a build makes it; the radar's menu begins one, after the session
    SetUpAgain,  ///< a build makes it, and nothing is open that it would end
};

/// The logic of the area chooser: its opening reads, the loads, and what follows them.
class ChooserModel {
public:
    static constexpr int OpeningDelayMs = 1000;
    static constexpr int OpeningSteps = 4; ///< the bar's maximum, one more than the steps taken
    static constexpr int LoadProgressMaximum = 9;

    ChooserModel(const ChooserState& state, ChooserView& view) noexcept : m_state(state), m_view(view) {}

    /// Reads the magnetic grid, the airports and the airspaces. Fails with the first file that could not be read; the
    /// others are read all the same, and the window can be used. An abandoned opening ends before the next file.
    Result<void> Open();

    /// The lists' entries, 8-bit text.
    [[nodiscard]] const std::vector<std::string>& AirportEntries() const noexcept { return m_airportEntries; }
    [[nodiscard]] const std::vector<std::string>& SectorEntries() const noexcept { return m_sectorEntries; }

    /// "GET AIRPORT OR ARTCC/FIR": loads the chosen entry's area; Stay without one. A failure leaves the previous area,
    /// and the user may choose again; so does a load that was abandoned, which answers Stay.
    Result<ChooserNext> Load(ControlMode mode, std::optional<std::string_view> entry);

    /// What may help against a failure, besides putting the file right.
    [[nodiscard]] Remedy RemedyFor(const Error& failure) const;

    /// The warning of database files found to end too early since the last call, each named once in the model's life;
    /// 8-bit text, empty where there is nothing to say.
    std::string TakeWarning();

    /// "EXIT".
    ChooserNext Exit();
    /// The window is closed by its frame. After a completed load, which closes the window itself, nothing more happens.
    ChooserNext Close();

    /// The main window's caption for an area.
    static std::string MainWindowCaption(const AreaModel& area);

private:
    Result<void> ReadGrid();
    Result<void> ReadAirports();
    Result<void> ReadAirspaces();
    Result<void> RunLoad(ControlMode mode, std::string_view entry);

    ChooserState m_state;
    ChooserView& m_view;
    std::vector<std::string> m_airportEntries;
    std::vector<std::string> m_sectorEntries;
    EarlyEnds m_earlyEnds;
    EarlyEnds m_warned;
    bool m_areaLoaded = false;
};
} // namespace corvane
