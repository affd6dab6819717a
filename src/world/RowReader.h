#pragma once

#include "core/Geodesy.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// The number that the whole text is, with or without a sign; nothing for anything else, infinities among it.
std::optional<double> NumberOf(std::string_view text) noexcept;

/// A name as the database keeps it, of a part of a line: the line is UTF-8 where all of it is, else Windows-1252; the
/// result is Windows-1252 with "?" for what that lacks. Control characters become blanks, blanks at the ends go, runs
/// of blanks become one.
std::string NameText(std::string_view text, std::string_view line);

/// A short excerpt of a file for a message: in UTF-8, without control characters.
std::string Excerpt(std::string_view text);

/// Reads the fields of a row, which stand between blanks, one after another.
///
/// The first field that is missing or not what it should be makes the reader fail: later fields read as 0 or empty, so
/// that a row is read whole and Failed asked once.
class RowReader {
public:
    explicit RowReader(std::string_view line) noexcept : m_line(line), m_rest(line) {}

    /// The next field as it stands, in the line's own encoding.
    std::string_view Field();
    void Skip(int fields);
    /// The next field as a name is kept.
    std::string Text() { return NameText(Field(), m_line); }
    double Number();
    /// A number from lowest to highest; what says in a message what it is: "a latitude".
    double NumberWithin(double lowest, double highest, const char* what);
    LatLon Position();
    /// The number of a thing: whole, of any sign.
    std::int64_t Whole();

    /// Whether another field stands in the line.
    [[nodiscard]] bool HasMore() const noexcept;
    /// All that is left of the line, as a name is kept; may be empty.
    std::string Rest();

    [[nodiscard]] bool Failed() const noexcept { return m_expected != nullptr; }
    /// Why it failed: "field 3 is \"abc\", not a latitude".
    [[nodiscard]] std::string Why() const;
    /// Makes the row a failed one for a reason of the caller's; the first reason stays.
    void Refuse(const char* why) noexcept;

private:
    void FailAt(std::string_view text, const char* expected) noexcept;

    std::string_view m_line;
    std::string_view m_rest;
    int m_field = 0;                  ///< the field read last, from 1
    const char* m_expected = nullptr; ///< what the failed field should have been
    std::string_view m_found;         ///< the failed field; empty where the line has ended
    int m_failedField = 0;            ///< 0 where the caller refused the row
};
} // namespace corvane
