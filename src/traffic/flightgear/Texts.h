#pragma once

#include <string>
#include <string_view>

namespace corvane::flightgear {
/// A callsign as the program shows it, in Windows-1252: without control characters, and without the spaces around it,
/// by which nobody can tell two apart. Empty where nothing is left.
std::string ShownCallsign(std::string_view sent);
/// A line of chat as the program shows it, in Windows-1252: control characters and line ends are blanks, and those
/// around it are gone.
std::string ShownLine(std::string_view sent);

/// The aircraft that a path of a model names: "c172p" for "Aircraft/c172p/Models/c172p.xml". In Windows-1252, and empty
/// where nothing is left.
std::string AircraftOfModel(std::string_view path);
/// Whether a model is a controller's.
bool IsControllersModel(std::string_view path) noexcept;

/// What may stand in a packet as a callsign: letters, digits, - and _ of a name in Windows-1252, seven at most.
std::string SentCallsign(std::string_view name);
} // namespace corvane::flightgear
