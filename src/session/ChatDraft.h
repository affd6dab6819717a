#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// What makes writing a chat line quick: lines sent before, and callsigns completed. Texts are Windows-1252.
class ChatDraft {
public:
    static constexpr std::size_t LinesKept = 50;

    /// A line has been sent; an empty one and the same again are not kept.
    void Sent(std::string_view line);
    /// The line before the one recalled last, or the newest; the oldest again at the end.
    /// typed  what stands in the field, which Newer gives back in the end
    std::string Older(std::string_view typed);
    std::string Newer(std::string_view typed);

private:
    std::vector<std::string> m_sent; ///< the newest last
    std::size_t m_back = 0;          ///< so many lines back from what is being typed
    std::string m_typed;
};

/// A name as it is written in a line: without the stars of a controller.
std::string_view CallsignIn(std::string_view name);

/// Completes the word that a text ends with to the name that begins so, in any letter case and with or without the
/// stars of a controller, and adds a space. Where several names do, as far as they agree. The text itself where none
/// does, or where it ends with no word.
std::string CompleteCallsign(std::string_view text, std::span<const std::string> names);

/// A ready-made text with a pilot's callsign in the places of "%c"; "%%" stands for a percent sign.
std::string ReadyText(std::string_view text, std::string_view callsign);
} // namespace corvane
