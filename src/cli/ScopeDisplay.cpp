#include "cli/ScopeDisplay.h"

#include "cli/AlertJson.h"
#include "cli/HistoryFile.h"
#include "cli/NumberList.h"
#include "core/File.h"
#include "core/NumberText.h"
#include "radar/PlayerTargets.h"
#include "radar/RecordingSurface.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace corvane {
void AddScopeDisplayOptions(CLI::App& command, ScopeDisplayArguments& arguments)
{
    AddDisplayOptions(command, arguments.Display);
    command
        .add_option("--history", arguments.History,
                    R"(Lines of {"Time", "Players"} as JSON, times ascending, played before the drawing)")
        ->type_name("FILE");
    command.add_option("--now", arguments.Now, "The time of the drawing, not before the history's last line")
        ->check([](const std::string& text) {
            const auto seconds = ParseNumbers(text, ',', 1);
            const bool valid = seconds && std::abs(seconds->front()) <= LatestHistoryTime;
            return valid ? std::string() : "must be a number of seconds";
        })
        ->type_name("SECONDS");
}

std::string OwnNameAmong(const std::vector<PlayerRecord>& players)
{
    constexpr std::string_view Nobody("\0", 1); // no member can bear it
    const auto own = std::ranges::find(players, ScopeOwnId, &PlayerRecord::PlayerId);
    return own == players.end() ? std::string(Nobody) : own->Name;
}

namespace {
/// Plays the lines of a history through a display, a refresh each.
class ScenePlayer {
public:
    /// drawn  the members of the picture, where they are known beforehand: these are remembered however long they are
    ///        silent, all others until nothing about them changes any more
    ScenePlayer(const MapScene& scene, const DisplayOptions& options, const std::vector<PlayerRecord>& drawn,
                TargetDisplay& display)
        : m_scene(scene), m_options(options), m_display(display)
    {
        for (const PlayerRecord& player : drawn)
            m_drawn.insert({player.PlayerId, player.Name});
    }

    /// A line that is not the last: members that it does not hold are still there, but silent.
    void Play(HistoryLine line)
    {
        if (TooLong())
            return;
        Forget(line.Time);
        Report(line.Players, line.Time);
        for (PlayerRecord& player : line.Players) {
            const auto [place, added] = m_places.try_emplace({player.PlayerId, player.Name}, m_members.size());
            if (added) {
                m_members.emplace_back();
                m_reported.emplace_back();
            }
            m_members[place->second] = std::move(player);
            m_reported[place->second] = line.Time;
        }
        Refresh(m_members, line.Time);
    }

    void Report(const std::vector<PlayerRecord>& players, double now)
    {
        for (const PlayerRecord& player : players)
            m_display.Report(player, now);
    }

    void Refresh(std::vector<PlayerRecord>& players, double now) { Show(players, now, true); }
    /// Draws others at the same time, without another look for alerts.
    void Rearrange(std::vector<PlayerRecord>& players, double now) { Show(players, now, false); }

    [[nodiscard]] bool TooLong() const noexcept { return m_shown > MostShown; }
    static constexpr std::size_t MostShown = 20'000'000;

private:
    void Show(std::vector<PlayerRecord>& players, double now, bool refresh)
    {
        const std::string ownName = OwnNameAmong(players);
        const Pilots members{players, ScopeOwnId, ownName};
        const TargetFocus focus;
        const TargetDisplay::Frame frame{m_scene, members, m_options, focus, m_metrics, now};
        if (!refresh)
            UpdateMinimumAltitudes(m_scene, members, m_altitudes);
        refresh ? m_display.Refresh(frame) : m_display.Rearrange(frame, true);
        m_shown += players.size();
    }

    /// Lets go of members whose trails and marks have come to an end.
    void Forget(double now)
    {
        const double longest = std::max(m_options.StaleSeconds, m_options.HistoryDots * m_options.HistorySeconds) + 15;
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_members.size(); ++i) {
            if (now - m_reported[i] > longest && !m_drawn.contains({m_members[i].PlayerId, m_members[i].Name}))
                continue;
            if (kept != i) {
                m_members[kept] = std::move(m_members[i]);
                m_reported[kept] = m_reported[i];
            }
            ++kept;
        }
        if (kept == m_members.size())
            return;
        m_members.resize(kept);
        m_reported.resize(kept);
        m_places.clear();
        for (std::size_t i = 0; i < kept; ++i)
            m_places.emplace(MemberKey{m_members[i].PlayerId, m_members[i].Name}, i);
    }

    const MapScene& m_scene;
    const DisplayOptions& m_options;
    TargetDisplay& m_display;
    RecordingSurface m_metrics;
    MinimumAltitudes m_altitudes;
    std::set<MemberKey> m_drawn;
    std::map<MemberKey, std::size_t> m_places; ///< in m_members
    std::vector<PlayerRecord> m_members;
    std::vector<double> m_reported;
    std::size_t m_shown = 0;
};
} // namespace

/// Reads the lines, of which all but the last go to a taker.
static Result<std::optional<HistoryLine>> ReadToLastLine(const std::string& fileName,
                                                         const std::function<void(HistoryLine)>& take)
{
    std::optional<HistoryLine> waiting;
    if (fileName.empty())
        return waiting;
    const Result<void> read = ReadHistoryFile(fileName, [&](HistoryLine line) {
        if (waiting)
            take(std::move(*waiting));
        waiting = std::move(line);
    });
    if (!read)
        return read.error();
    return waiting;
}

static std::optional<Error> WrongTime(const ScopeDisplayArguments& arguments, const std::optional<HistoryLine>& last)
{
    if (!last || !arguments.Now || *arguments.Now >= last->Time)
        return std::nullopt;
    return Fail("--now", "lies before " + FullName(arguments.History) + "'s last line, " + NumberText(last->Time));
}

/// Without a history everybody has reported at the time of the drawing.
static void PlayEnd(ScenePlayer& player, std::optional<HistoryLine> last, double now, bool hasPlayersFile,
                    std::vector<PlayerRecord>& players)
{
    if (!last) {
        player.Report(players, now);
        player.Refresh(players, now);
        return;
    }
    const double lastTime = last->Time;
    if (hasPlayersFile) {
        player.Play(std::move(*last));
    } else {
        players = std::move(last->Players);
        player.Report(players, lastTime);
        player.Refresh(players, lastTime);
    }
    if (now > lastTime)
        player.Refresh(players, now);
    else if (hasPlayersFile)
        player.Rearrange(players, now);
}

Result<DisplayedScene> PlayScene(const ScopeDisplayArguments& arguments, const MapScene& scene,
                                 const DisplayOptions& options, bool hasPlayersFile, std::vector<PlayerRecord>& players)
{
    DisplayedScene displayed;
    auto targets = std::make_unique<TargetDisplay>(scene.Variation);
    targets->SetArea(scene.Area);
    ScenePlayer player(scene, options, players, *targets);
    const bool classic = options == ClassicDisplay();
    auto last = ReadToLastLine(arguments.History, [&](HistoryLine line) {
        if (!classic)
            player.Play(std::move(line));
    });
    if (!last)
        return last.error();
    if (auto wrong = WrongTime(arguments, *last))
        return *std::move(wrong);
    if (player.TooLong())
        return Fail(FullName(arguments.History),
                    "asks for more than " + std::to_string(ScenePlayer::MostShown) + " targets to be drawn");
    if (classic) {
        if (*last && !hasPlayersFile)
            players = std::move((*last)->Players);
        return displayed;
    }
    displayed.Now = arguments.Now.value_or(*last ? (*last)->Time : 0);
    PlayEnd(player, *std::move(last), displayed.Now, hasPlayersFile, players);
    displayed.Targets = std::move(targets);
    return displayed;
}

Json LabelsJson(const TargetMarks& marks)
{
    Json labels = Json::array();
    for (const TargetMark& mark : marks.Targets) {
        const PixelBox& box = mark.Place.Box;
        if (!box.Empty())
            labels.push_back({{"PlayerId", mark.PlayerId},
                              {"X", box.Left},
                              {"Y", box.Top},
                              {"Width", box.Width()},
                              {"Height", box.Height()},
                              {"Direction", mark.Place.Direction}});
    }
    return labels;
}

Json AlertsJson(const TrafficMonitor& monitor)
{
    Json alerts = Json::array();
    for (const Alert& alert : monitor.Alerts())
        alerts.push_back(ToJson(AlertEvent{alert.Began, true, alert}));
    return alerts;
}
} // namespace corvane
