#pragma once

#include "traffic/NearestTraffic.h"
#include "traffic/feeds/FeedPlace.h"

#include <memory>

namespace corvane {
/// The feed at a place, of which the aircraft around a center are let through. That nobody is there is no failure: it
/// tells of that as it tells of everything, and tries for ever.
std::unique_ptr<TrafficFeed> OpenAircraftFeed(const FeedPlace& place, NearestTrafficOptions nearest);
} // namespace corvane
