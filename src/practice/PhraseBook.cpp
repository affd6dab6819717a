#include "practice/PhraseBook.h"

#include "practice/PhraseMatch.h"

#include <algorithm>
#include <array>
#include <optional>

namespace corvane {
static constexpr std::array<std::string_view, 10> TopicNames{
    "Headings", "Altitudes", "Speeds", "Places and holds", "Approach and landing", "On the ground",
    "Radio",    "Reports",   "Talk",   "Moments"};

static constexpr std::string_view Opening =
    "# What practice pilots understand\n"
    "\n"
    "Begin with the callsign, or a part of it that only one pilot has: `Lantern412`, `Lantern 412`, `412`; `N348UC`,\n"
    "`8UC`, `N8UC`, `Cessna 8UC`. One wrong character is forgiven where only one pilot can be meant. Then say up to "
    "eight\n"
    "things, with commas, `and`, `then` and `please` as you like. Letter case does not matter.\n"
    "\n"
    "In the tables, words in brackets may be left out, a stroke parts words of which one is said, and words in "
    "capitals\n"
    "stand for what you put there. Numbers may be written (`5000`, `5,000`, `FL180`, `7k`) or spoken (`one zero "
    "thousand`,\n"
    "`two seven zero`, `niner`), letters too (`alpha`); `hdg`, `rwy`, `tlh 270` and their like are understood.\n"
    "\n"
    "A pilot reads back what it will do, or says `unable` and why; then it does nothing of the line. It answers\n"
    "`say again` where any part of the line makes no sense. A phrase of \"Moments\" stands before or after another:\n"
    "`when passing 4000 turn left heading 270`, `speed 180 until 5 mile final`. `correction` takes the words before "
    "it\n"
    "back: `turn left heading 270, correction, 280`.\n";

static std::string Capitals(std::string_view text)
{
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return capitals;
}

static std::string SlotName(std::string_view slot)
{
    constexpr std::array<std::array<std::string_view, 2>, 4> Plain{
        {{"turn", "left/right"}, {"circle", "360"}, {"details", "..."}, {"course", "090"}}};
    for (const auto& [name, shown] : Plain)
        if (slot == name)
            return std::string(shown);
    return Capitals(slot);
}

/// An element of a wording as the book shows it: [to/onto], HEADING, go around.
static std::string ElementText(std::string_view element)
{
    const bool optional = element.starts_with('?');
    if (optional)
        element.remove_prefix(1);
    std::string text =
        element.starts_with('{') ? SlotName(element.substr(1, element.size() - 2)) : std::string(element);
    std::replace(text.begin(), text.end(), '|', '/');
    std::replace(text.begin(), text.end(), '~', ' ');
    return optional ? "[" + text + "]" : text;
}

static std::string WordingsText(std::string_view wordings)
{
    std::string text;
    while (!wordings.empty()) {
        std::string line;
        for (std::string_view wording = TakeWording(wordings); !wording.empty();)
            line += (line.empty() ? "" : " ") + ElementText(TakeElement(wording));
        text += (text.empty() ? "`" : "<br>`") + line + '`';
    }
    return text;
}

std::string PhraseBook()
{
    std::string book(Opening);
    std::optional<PhraseTopic> topic;
    for (const Phrase& phrase : PhraseTable()) {
        if (phrase.Topic != topic) {
            topic = phrase.Topic;
            book += "\n## " + std::string(TopicNames[static_cast<std::size_t>(phrase.Topic)]) +
                    "\n\n| say | the pilot |\n|---|---|\n";
        }
        book += "| " + WordingsText(phrase.Wordings) + " | " + std::string(phrase.Does) + " |\n";
    }
    return book;
}
} // namespace corvane
