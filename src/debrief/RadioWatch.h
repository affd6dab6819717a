#pragma once

#include "debrief/Debrief.h"

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Listens to the chat of a session: who is told what and answers how, who waits, and from when on an aircraft is the
/// controller's.
class RadioWatch {
public:
    /// Names whose words count for nothing, such as that of a host who gives hints.
    void Ignore(std::string name) { m_bystanders.insert(std::move(name)); }

    /// pilots  the callsigns that are there
    void Hear(std::string_view from, std::string_view text, std::span<const std::string> pilots, double nowS);
    /// Calls that nobody answers in time become items.
    void Refresh(double nowS);
    /// A pilot that is gone waits no more.
    void Forget(const std::string& callsign);

    /// Whether it has been spoken to, has answered, and was not handed on since.
    [[nodiscard]] bool IsYours(const std::string& callsign) const;
    [[nodiscard]] std::optional<double> YoursSince(const std::string& callsign) const;
    /// The altitude in feet that it was given and accepted last; nothing where it has been cleared for an approach, has
    /// resumed its own navigation or has been handed on since.
    [[nodiscard]] std::optional<int> GivenFt(const std::string& callsign) const;
    /// When it first called.
    [[nodiscard]] std::optional<double> FirstCallS(const std::string& callsign) const;
    /// How many instructions it answered.
    [[nodiscard]] int InstructionsTo(const std::string& callsign) const;
    /// What it was last told, and when: "told \"descend 4000\" 35 s before"; empty where that is long ago.
    [[nodiscard]] std::string LastTold(const std::string& callsign, double nowS) const;

    /// Adds what was counted, and the items. A call that still waits counts up to now.
    void Fill(Debrief& debrief, double nowS);

private:
    struct Contact {
        std::optional<double> FirstYoursS;
        bool Yours = false;
        int Instructions = 0;
        std::string Told; ///< the last line to it
        double ToldS = 0;
        bool Answers = false;              ///< still owes an answer to Told
        std::optional<double> WaitsSinceS; ///< for the controller
        std::string Call;
        std::optional<double> FirstCallS;
        std::optional<int> GivenFt;
    };

    void HearPilot(const std::string& callsign, std::string_view text, double nowS);
    void HearController(std::string_view text, std::span<const std::string> pilots, double nowS);
    void TakeAnswer(const std::string& callsign, Contact& contact, std::string_view text, double nowS);
    void EndWaiting(const std::string& callsign, Contact& contact, double nowS);

    std::set<std::string, std::less<>> m_bystanders;
    std::map<std::string, Contact, std::less<>> m_contacts;
    Debrief m_counts;
};
} // namespace corvane
