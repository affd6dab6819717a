#include "app/windows/RadarMemory.h"

#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"

namespace corvane {
static QString FlagKey(const DisplayFlagName& flag)
{
    return "flags/" + ToQString(flag.Name);
}

void KeepRadarView(DeskSettings& desk, const AreaModel& area, const DisplayFlags& flags, const ScopeView& view)
{
    for (const DisplayFlagName& flag : DisplayFlagNames)
        desk.Keep(FlagKey(flag), flags.*flag.Flag);
    desk.Keep("view/area", ToQString(area.AreaName));
    desk.Keep("view/zoom", view.ZoomLevel);
    desk.Keep("view/lat", view.ViewCenter.Lat);
    desk.Keep("view/lon", view.ViewCenter.Lon);
}

void RestoreRadarView(const DeskSettings& desk, const AreaModel& area, DisplayFlags& flags, RadarDisplay& display)
{
    if (!desk.Flag(RememberKey, false))
        return;
    for (const DisplayFlagName& flag : DisplayFlagNames)
        flags.*flag.Flag = desk.Flag(FlagKey(flag), true);
    if (desk.Text("view/area") == ToQString(area.AreaName))
        display.Show({desk.Number("view/lat", area.AreaCenter.Lat), desk.Number("view/lon", area.AreaCenter.Lon)},
                     desk.Number("view/zoom", display.View().ZoomLevel));
}
} // namespace corvane
