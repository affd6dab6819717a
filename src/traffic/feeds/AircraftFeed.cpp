#include "traffic/feeds/AircraftFeed.h"

#include "traffic/feeds/AircraftJsonFeed.h"
#include "traffic/feeds/BaseStationFeed.h"

#include <utility>

namespace corvane {
std::unique_ptr<TrafficFeed> OpenAircraftFeed(const FeedPlace& place, NearestTrafficOptions nearest)
{
    std::unique_ptr<TrafficFeed> feed;
    if (place.Kind == FeedKind::BaseStation)
        feed = std::make_unique<BaseStationFeed>(place);
    else
        feed = std::make_unique<AircraftJsonFeed>(place);
    return std::make_unique<NearestTraffic>(std::move(feed), std::move(nearest));
}
} // namespace corvane
