#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/NumberList.h"
#include "cli/ScopeDisplay.h"
#include "cli/ScopeJson.h"
#include "cli/ScopePng.h"
#include "core/File.h"
#include "core/Rounding.h"
#include "radar/AirspaceLayer.h"
#include "radar/ColourSchemes.h"
#include "radar/InformationPanel.h"
#include "radar/MapLayers.h"
#include "radar/PlayerTargets.h"
#include "radar/PointerReadout.h"

#include <algorithm>
#include <optional>
#include <ostream>

namespace corvane {
namespace {
struct ScopeOptions {
    AreaOptions Area;
    std::string Size = "1024x768";
    int Zoom = StartUpZoomLevel;
    std::string Center;
    std::vector<std::string> Hide;
    std::string Players;
    std::string Pointer;
    std::string Measure;
    std::string Png;
    bool Primitives = false;
    ScopeDisplayArguments Display;
};

/// Everything that one picture of the scope is made from.
struct ScopePicture {
    AreaModel Area;
    std::unique_ptr<MagVarGrid> Variation;
    DisplayFlags Flags;
    ScopeView View;
    std::vector<PlayerRecord> Players;
    std::string OwnName;
    PointerState Pointer;

    DisplayOptions Display;
    DisplayedScene Displayed; ///< empty in the classic display

    [[nodiscard]] MapScene Scene() const { return {Area, *Variation, View, Flags}; }
    [[nodiscard]] Pilots Members() { return {Players, ScopeOwnId, OwnName}; }
};
} // namespace

/// WIDTHxHEIGHT in pixels, within what a picture may reasonably take.
static CLI::Validator PictureSize()
{
    return {[](std::string& text) {
                constexpr double Largest = 16384;
                const auto size = ParseNumbers(text, 'x', 2);
                const bool fits = size && std::all_of(size->begin(), size->end(), [](double n) {
                                      return n >= 1 && n <= Largest && n == RoundHalfEven(n);
                                  });
                return fits ? std::string() : "must be WIDTHxHEIGHT, each 1 to 16384";
            },
            "WIDTHxHEIGHT"};
}

static CLI::Validator FlagName()
{
    return {[](std::string& name) {
                const bool known = std::any_of(DisplayFlagNames.begin(), DisplayFlagNames.end(),
                                               [&](const DisplayFlagName& flag) { return flag.Name == name; });
                return known ? std::string() : name + " is no display flag";
            },
            "NAME"};
}

static Result<std::vector<PlayerRecord>> ReadPlayers(const std::string& fileName)
{
    if (fileName.empty())
        return std::vector<PlayerRecord>();
    const Result<FileBytes> file = ReadWholeFile(fileName);
    if (!file)
        return file.error();
    return PlayersFromText({reinterpret_cast<const char*>(file->Span().data()), file->Size()}, FullName(fileName));
}

static ScopeView ViewOf(const ScopeOptions& options, const AreaModel& area)
{
    const auto size = *ParseNumbers(options.Size, 'x', 2);
    ScopeView view = StartUpView(RoundTo<std::int32_t>(size[0]), RoundTo<std::int32_t>(size[1]), area.AreaCenter);
    ZoomTo(view, static_cast<std::int16_t>(options.Zoom));
    if (const auto center = ParseNumbers(options.Center, ',', 2))
        RecenterView(view, {(*center)[0], (*center)[1]});
    return view;
}

/// Takes over the display, and plays what came before the picture.
static Result<void> SetUpDisplay(const ScopeOptions& options, ScopePicture& picture)
{
    const auto display = DisplayOptionsOf(options.Display.Display, picture.Area.AreaMode, "classic");
    if (!display)
        return display.error();
    picture.Display = *display;
    if (display->TrueProportions)
        picture.View = WithTrueProportions(picture.View);
    auto displayed =
        PlayScene(options.Display, picture.Scene(), picture.Display, !options.Players.empty(), picture.Players);
    if (!displayed)
        return displayed.error();
    picture.Displayed = *std::move(displayed);
    return {};
}

static Result<ScopePicture> MakePicture(const ScopeOptions& options, std::ostream& notices)
{
    ScopePicture picture;
    auto area = LoadArea(options.Area, notices);
    if (!area)
        return area.error();
    picture.Area = std::move(*area);
    auto variation = LoadMagVarGrid(options.Area.Folders);
    if (!variation)
        return variation.error();
    picture.Variation = std::move(*variation);
    auto players = ReadPlayers(options.Players);
    if (!players)
        return players.error();
    picture.Players = std::move(*players);
    for (const DisplayFlagName& flag : DisplayFlagNames)
        if (std::find(options.Hide.begin(), options.Hide.end(), flag.Name) != options.Hide.end())
            picture.Flags.*flag.Flag = false;
    picture.View = ViewOf(options, picture.Area);
    if (const Result<void> set = SetUpDisplay(options, picture); !set)
        return set.error();
    picture.OwnName = OwnNameAmong(picture.Players);
    return picture;
}

/// Puts pointer and measuring line where the command line wants them, as the pointer's events would.
static void MovePointerAsAsked(const ScopeOptions& options, ScopePicture& picture, MinimumAltitudes& altitudes)
{
    UpdateMinimumAltitudes(picture.Scene(), picture.Members(), altitudes); // by the redraw that reached the view
    if (const auto pixel = ParseNumbers(options.Pointer, ',', 2)) {
        const ScopePoint at{RoundTo<std::int32_t>((*pixel)[0]), RoundTo<std::int32_t>((*pixel)[1])};
        MovePointer(picture.Pointer, DegreesAtPixel(picture.View, at));
        ShowPanel(picture.Pointer, PanelTick(picture.Scene(), picture.Members(), picture.Pointer));
    }
    if (const auto ends = ParseNumbers(options.Measure, ',', 4)) {
        const auto degrees = [&](std::size_t lat) {
            return ScopeDegrees{static_cast<float>((*ends)[lat + 1]), static_cast<float>((*ends)[lat])};
        };
        const PositionRecord selected = picture.Pointer.SelectedAirspace;
        const std::string panel = picture.Pointer.PanelText;
        PressLeftButton(picture.Pointer, degrees(0));
        MovePointer(picture.Pointer, degrees(2));
        picture.Pointer.SelectedAirspace = selected; // a pointer that rests as well keeps what it found
        picture.Pointer.PanelText = panel;
    }
}

/// A panel that the pointer has brought up is in the blocks' way.
static void MakeRoomForPanel(ScopePicture& picture)
{
    if (!picture.Displayed.Targets || picture.Pointer.PanelText.empty())
        return;
    const RecordingSurface metrics;
    const MapScene scene = picture.Scene();
    const TargetFocus focus{std::nullopt, PanelBox(picture.Pointer, picture.View, metrics)};
    picture.Displayed.Targets->Rearrange(
        {scene, picture.Members(), picture.Display, focus, metrics, picture.Displayed.Now}, true);
}

static void DrawPictureTargets(Surface& surface, ScopePicture& picture, TargetMemory& memory)
{
    if (picture.Displayed.Targets)
        picture.Displayed.Targets->Draw(surface, picture.Display.Colours);
    else
        DrawTargets(surface, picture.Scene(), picture.Members(), picture.Pointer.MeasureActive, memory);
}

/// What lies over the map: the highlight, the targets and the measuring line.
static void DrawOverMap(Surface& surface, ScopePicture& picture, TargetMemory& memory)
{
    const bool classic = picture.Display.Colours == ColourScheme::Classic;
    ColouredSurface coloured(surface, picture.Display.Colours);
    Surface& mapColours = classic ? surface : coloured;
    if (AirspacesShown(picture.Scene()))
        DrawAirspaceHighlight(mapColours, picture.Scene(), picture.Pointer.SelectedAirspace);
    DrawPictureTargets(surface, picture, memory);
    DrawMeasurement(mapColours, picture.View, *picture.Variation, picture.Pointer);
}

static void DrawMap(Surface& surface, const ScopePicture& picture)
{
    ColouredSurface coloured(surface, picture.Display.Colours);
    DrawMapLayers(picture.Display.Colours == ColourScheme::Classic ? surface : coloured, picture.Scene());
}

/// Only a display that was asked for adds to what is printed.
static void AddDisplayMembers(Json& object, const ScopeOptions& options, const ScopePicture& picture)
{
    if (options.Display.Display.Display.empty() || !picture.Displayed.Targets)
        return;
    object["Labels"] = LabelsJson(picture.Displayed.Targets->Marks());
    object["Alerts"] = AlertsJson(picture.Displayed.Targets->Monitor());
}

static void AddPanel(Json& object, const ScopeOptions& options, const PointerState& pointer)
{
    if (options.Pointer.empty())
        return;
    object["Label1"] = TextJson(pointer.PanelText);
    object["SelectedAirspace"] = PositionJson(pointer.SelectedAirspace);
}

static Json Primitives(const ScopeOptions& options, ScopePicture& picture, TargetMemory& memory)
{
    RecordingSurface map;
    DrawMap(map, picture);
    RecordingSurface over;
    DrawOverMap(over, picture, memory);
    Json object = {{"View", ViewJson(picture.View)}, {"Map", OperationsJson(map)}, {"Targets", OperationsJson(over)}};
    AddPanel(object, options, picture.Pointer);
    AddDisplayMembers(object, options, picture);
    return object;
}

static Result<void> RunScope(const ScopeOptions& options, const Console& console)
{
    auto made = MakePicture(options, console.Notices);
    if (!made)
        return made.error();
    ScopePicture& picture = *made;
    TargetMemory memory;
    MovePointerAsAsked(options, picture, memory.Altitudes);
    MakeRoomForPanel(picture);
    Json answer;
    if (options.Primitives)
        answer = Primitives(options, picture, memory);
    else
        AddPanel(answer, options, picture.Pointer);
    if (!options.Png.empty()) {
        const auto drawOver = [&](Surface& surface) { DrawOverMap(surface, picture, memory); };
        if (const Result<void> written = WriteScopePng(options.Png, picture.Scene(), picture.Display.Colours, drawOver);
            !written)
            return written.error();
    }
    if (!answer.is_null())
        console.Out << ToLine(answer) << '\n';
    return {};
}

void AddScopeCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command =
        app.add_subcommand("scope", "Draws the radar scope into a picture, or lists what it draws");
    const auto options = std::make_shared<ScopeOptions>();
    AddAreaOptions(*command, options->Area);
    AddFsFolderOption(*command, options->Area.Folders);
    command->add_option("--size", options->Size, "The scope in pixels")->check(PictureSize())->capture_default_str();
    command->add_option("--zoom", options->Zoom, "The zoom level")
        ->check(CLI::Range(static_cast<int>(MinZoomLevel), static_cast<int>(MaxZoomLevel)))
        ->capture_default_str();
    command->add_option("--center", options->Center, "Centre of the view; the area's centre unless given")
        ->check(Numbers(',', 2, "LAT,LON"));
    command->add_option("--hide", options->Hide, "Display flags to switch off: Runways,Tracon,...")
        ->delimiter(',')
        ->check(FlagName());
    command->add_option("--players", options->Players, "A JSON array of players to draw as targets")->type_name("FILE");
    command->add_option("--pointer", options->Pointer, "The pixel at which the pointer rests")
        ->check(Numbers(',', 2, "X,Y"));
    command->add_option("--measure", options->Measure, "The ends of a measuring line")
        ->check(Numbers(',', 4, "LAT,LON,LAT,LON"));
    AddScopeDisplayOptions(*command, options->Display);
    auto* const output = command->add_option_group("output", "What to make: one of these");
    output->add_option("--png", options->Png, "Writes the picture")->type_name("FILE");
    output->add_flag("--primitives", options->Primitives, "Prints the drawing operations");
    output->require_option(1);
    command->callback(
        [options, &console, &work] { work = [options, &console] { return RunScope(*options, console); }; });
}
} // namespace corvane
