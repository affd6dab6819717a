#include "cli/AreaOptions.h"
#include "cli/Commands.h"
#include "cli/NumberList.h"
#include "cli/RecordJson.h"
#include "cli/ScopePng.h"
#include "core/File.h"
#include "core/Rounding.h"
#include "radar/AirspaceLayer.h"
#include "radar/InformationPanel.h"
#include "radar/MapLayers.h"
#include "radar/PlayerTargets.h"
#include "radar/PointerReadout.h"
#include "radar/RecordingSurface.h"

#include <algorithm>
#include <array>
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

    [[nodiscard]] MapScene Scene() const { return {Area, *Variation, View, Flags}; }
    [[nodiscard]] Pilots Members() { return {Players, OwnId, OwnName}; }

    static constexpr std::int32_t OwnId = 1; ///< the id by which a players file names the controller's own entry
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

/// The controller's own entry has OwnId; without one no name is the controller's.
static std::string OwnNameAmong(const std::vector<PlayerRecord>& players)
{
    constexpr std::string_view Nobody("\0", 1); // no member can bear it
    const auto own = std::find_if(players.begin(), players.end(),
                                  [](const PlayerRecord& p) { return p.PlayerId == ScopePicture::OwnId; });
    return own == players.end() ? std::string(Nobody) : own->Name;
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
    ScopeView view = StartUpView(RoundTo<std::int32_t>(size[0]), RoundTo<std::int32_t>(size[1]), area.AreaCenterLon,
                                 area.AreaCenterLat);
    ZoomTo(view, static_cast<std::int16_t>(options.Zoom));
    if (const auto center = ParseNumbers(options.Center, ',', 2))
        RecenterView(view, (*center)[1], (*center)[0]);
    return view;
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
    picture.OwnName = OwnNameAmong(picture.Players);
    for (const DisplayFlagName& flag : DisplayFlagNames)
        if (std::find(options.Hide.begin(), options.Hide.end(), flag.Name) != options.Hide.end())
            picture.Flags.*flag.Flag = false;
    picture.View = ViewOf(options, picture.Area);
    return picture;
}

static Json ColorJson(Color color)
{
    return Json::array({color.R, color.G, color.B});
}

static Json PenJson(const DrawState& state)
{
    constexpr std::array<const char*, 3> Styles = {"solid", "dash", "dot"};
    return Json::array({state.PenColor.R, state.PenColor.G, state.PenColor.B, state.PenWidth,
                        Styles.at(static_cast<std::size_t>(state.Style))});
}

static Json OperationJson(const RecordingSurface& recorder, const ScopeOperation& operation)
{
    const auto& [p1, p2, p3, p4] = operation.Points;
    switch (operation.Type) {
    case ScopeOperation::Primitive::Line:
        return {{"op", "line"}, {"x1", p1.X}, {"y1", p1.Y},
                {"x2", p2.X},   {"y2", p2.Y}, {"pen", PenJson(operation.State)}};
    case ScopeOperation::Primitive::Ellipse:
        return {{"op", "ellipse"},
                {"x1", p1.X},
                {"y1", p1.Y},
                {"x2", p2.X},
                {"y2", p2.Y},
                {"pen", PenJson(operation.State)},
                {"fill", operation.State.FillSolid ? ColorJson(operation.State.FillColor) : Json(nullptr)}};
    case ScopeOperation::Primitive::Arc:
        return {{"op", "arc"}, {"x1", p1.X}, {"y1", p1.Y}, {"x2", p2.X}, {"y2", p2.Y},
                {"xs", p3.X},  {"ys", p3.Y}, {"xe", p4.X}, {"ye", p4.Y}, {"pen", PenJson(operation.State)}};
    case ScopeOperation::Primitive::Pixel:
        return {{"op", "pixel"}, {"x", p1.X}, {"y", p1.Y}, {"color", ColorJson(operation.Ink)}};
    case ScopeOperation::Primitive::Text: break;
    }
    return {{"op", "text"},
            {"x", p1.X},
            {"y", p1.Y},
            {"text", TextJson(recorder.TextOf(operation))},
            {"color", ColorJson(operation.Ink)}};
}

static Json OperationsJson(const RecordingSurface& recorder)
{
    Json operations = Json::array();
    for (const ScopeOperation& operation : recorder.Operations())
        operations.push_back(OperationJson(recorder, operation));
    return operations;
}

static Json ViewJson(const ScopeView& view)
{
    return {{"ViewWest", view.ViewWest},      {"ViewNorth", view.ViewNorth},   {"ViewEast", view.ViewEast},
            {"ViewSouth", view.ViewSouth},    {"SavedWest", view.SavedWest},   {"SavedNorth", view.SavedNorth},
            {"SavedEast", view.SavedEast},    {"SavedSouth", view.SavedSouth}, {"ZoomLevel", view.ZoomLevel},
            {"OutlineStep", view.OutlineStep}};
}

static Json PositionJson(const PositionRecord& position)
{
    return {{"Name", TextJson(position.Name)},
            {"Kind", TextJson(position.Kind)},
            {"Lat", position.Lat},
            {"Lon", position.Lon}};
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

/// What lies over the map: the highlight, the targets and the measuring line.
static void DrawOverMap(Surface& surface, ScopePicture& picture, TargetMemory& memory)
{
    if (AirspacesShown(picture.Scene()))
        DrawAirspaceHighlight(surface, picture.Scene(), picture.Pointer.SelectedAirspace);
    DrawTargets(surface, picture.Scene(), picture.Members(), picture.Pointer.MeasureActive, memory);
    DrawMeasurement(surface, picture.View, *picture.Variation, picture.Pointer);
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
    DrawMapLayers(map, picture.Scene());
    RecordingSurface over;
    DrawOverMap(over, picture, memory);
    Json object = {{"View", ViewJson(picture.View)}, {"Map", OperationsJson(map)}, {"Targets", OperationsJson(over)}};
    AddPanel(object, options, picture.Pointer);
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
    Json answer;
    if (options.Primitives)
        answer = Primitives(options, picture, memory);
    else
        AddPanel(answer, options, picture.Pointer);
    if (!options.Png.empty()) {
        const auto drawOver = [&](Surface& surface) { DrawOverMap(surface, picture, memory); };
        if (const Result<void> written = WriteScopePng(options.Png, picture.Scene(), drawOver); !written)
            return written.error();
    }
    if (!answer.is_null())
        console.Out << answer.dump() << '\n';
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
    auto* const output = command->add_option_group("output", "What to make: one of these");
    output->add_option("--png", options->Png, "Writes the picture")->type_name("FILE");
    output->add_flag("--primitives", options->Primitives, "Prints the drawing operations");
    output->require_option(1);
    command->callback(
        [options, &console, &work] { work = [options, &console] { return RunScope(*options, console); }; });
}
} // namespace corvane
