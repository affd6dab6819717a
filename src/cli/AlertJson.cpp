#include "cli/AlertJson.h"

namespace corvane {
Json ToJson(const AlertEvent& event)
{
    const Alert& alert = event.What;
    Json object = {{"time", event.Time}, {"event", event.Begins ? "begin" : "end"}};
    if (alert.Kind == AlertKind::LowAltitude) {
        object["kind"] = "low-altitude";
        object["Player"] = alert.FirstId;
        object["AltitudeFt"] = alert.AltitudeFt;
        object["MinimumAltitudeFt"] = alert.MinimumAltitudeFt;
        return object;
    }
    object["kind"] = "conflict";
    object["Players"] = Json::array({alert.FirstId, alert.SecondId});
    object["violated"] = alert.Violated;
    object["SecondsToClosest"] = alert.SecondsToClosest;
    object["ClosestNm"] = alert.ClosestNm;
    object["ClosestFt"] = alert.ClosestFt;
    return object;
}
} // namespace corvane
