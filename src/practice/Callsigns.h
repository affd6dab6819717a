#pragma once

#include "practice/AircraftClass.h"
#include "practice/Random.h"

#include <string>

namespace corvane {
/// An invented callsign that suits a kind of aircraft: N123AB for private flying, a name and a flight number for
/// airliners. Letters that are taken for digits (I, O) do not occur in registrations.
std::string InventCallsign(AircraftKind kind, PracticeRandom& random);
/// An invented nickname of somebody who only watches.
std::string InventObserverName(PracticeRandom& random);
} // namespace corvane
