#include "debrief/RadioWatch.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/Addressee.h"
#include "practice/Instruction.h"

#include <algorithm>

namespace corvane {
static constexpr double AnswerWithinS = 30;

static std::string Seconds(double seconds)
{
    return NumberText(RoundTo<std::int32_t>(seconds)) + " s";
}

/// Whether a pilot that says this unasked waits for a word.
static bool WantsAnswer(std::string_view text)
{
    for (const std::string_view wish : {"hello", "request", "ready for departure", "mayday"})
        if (text.find(wish) != std::string_view::npos)
            return true;
    return false;
}

static bool HandsOn(std::string_view rest)
{
    const ParsedLine line = ParseInstructions(rest);
    return line.Understood && std::any_of(line.Instructions.begin(), line.Instructions.end(),
                                          [](const Instruction& one) { return one.Kind == InstructionKind::Contact; });
}

/// What of an altitude given before holds after a line that was accepted.
static std::optional<int> GivenAfter(std::string_view told, std::optional<int> givenFt)
{
    for (const Instruction& one : ParseInstructions(told).Instructions) {
        switch (one.Kind) {
        case InstructionKind::Altitude: givenFt = one.Number; break;
        case InstructionKind::Approach:
        case InstructionKind::Land:
        case InstructionKind::TouchAndGo:
        case InstructionKind::GoAround:
        case InstructionKind::Resume:
        case InstructionKind::Contact: givenFt.reset(); break;
        default: break;
        }
    }
    return givenFt;
}

void RadioWatch::Hear(std::string_view from, std::string_view text, std::span<const std::string> pilots, double nowS)
{
    const std::string name(from);
    if (std::find(pilots.begin(), pilots.end(), name) != pilots.end())
        HearPilot(name, text, nowS);
    else if (!m_bystanders.contains(from))
        HearController(text, pilots, nowS);
}

void RadioWatch::EndWaiting(const std::string& callsign, Contact& contact, double nowS)
{
    if (!contact.WaitsSinceS)
        return;
    const double waitedS = nowS - *contact.WaitsSinceS;
    constexpr double WorthAWordS = 60;
    if (waitedS > m_counts.LongestCallS) {
        m_counts.LongestCallS = waitedS;
        m_counts.LongestCallBy = callsign;
    }
    if (waitedS > WorthAWordS)
        m_counts.Items.push_back({*contact.WaitsSinceS,
                                  DebriefKind::Waited,
                                  {callsign},
                                  "waited " + Seconds(waitedS) + " for an answer",
                                  "called \"" + contact.Call + '"'});
    contact.WaitsSinceS.reset();
}

void RadioWatch::HearController(std::string_view text, std::span<const std::string> pilots, double nowS)
{
    const auto addressee = FindAddressee(text, pilots);
    if (!addressee || addressee->Ambiguous)
        return;
    const std::string& callsign = pilots[addressee->Index];
    Contact& contact = m_contacts[callsign];
    EndWaiting(callsign, contact, nowS);
    contact.Told = addressee->Rest;
    contact.ToldS = nowS;
    contact.Answers = true;
}

void RadioWatch::TakeAnswer(const std::string& callsign, Contact& contact, std::string_view text, double nowS)
{
    contact.Answers = false;
    if (!contact.FirstYoursS)
        contact.FirstYoursS = nowS;
    contact.Yours = !HandsOn(contact.Told);
    ++contact.Instructions;
    ++m_counts.Instructions;
    const std::string told = "told \"" + contact.Told + '"';
    if (text.starts_with("unable")) {
        ++m_counts.Refused;
        m_counts.Items.push_back({nowS, DebriefKind::Refused, {callsign}, std::string(text), told});
    } else if (text.starts_with("say again")) {
        ++m_counts.NotUnderstood;
        m_counts.Items.push_back({nowS, DebriefKind::NotUnderstood, {callsign}, std::string(text), told});
    } else {
        contact.GivenFt = GivenAfter(contact.Told, contact.GivenFt);
    }
}

void RadioWatch::HearPilot(const std::string& callsign, std::string_view text, double nowS)
{
    Contact& contact = m_contacts[callsign];
    if (text.find("going around") != std::string_view::npos) {
        ++m_counts.GoArounds;
        m_counts.Items.push_back(
            {nowS, DebriefKind::GoAround, {callsign}, std::string(text), LastTold(callsign, nowS)});
    }
    if (text.find("out of fuel") != std::string_view::npos)
        m_counts.Items.push_back({nowS, DebriefKind::FuelOut, {callsign}, "came down without fuel", {}});
    if (contact.Answers && nowS - contact.ToldS <= AnswerWithinS && !text.starts_with("hello")) {
        TakeAnswer(callsign, contact, text, nowS);
        return;
    }
    if (WantsAnswer(text) && !contact.WaitsSinceS) {
        contact.WaitsSinceS = nowS;
        contact.Call = text;
        contact.FirstCallS = contact.FirstCallS.value_or(nowS);
    }
}

void RadioWatch::Refresh(double nowS)
{
    for (auto& [callsign, contact] : m_contacts) {
        if (!contact.Answers || nowS - contact.ToldS <= AnswerWithinS)
            continue;
        contact.Answers = false;
        ++m_counts.Unanswered;
        m_counts.Items.push_back(
            {contact.ToldS, DebriefKind::Unanswered, {callsign}, "did not answer", "told \"" + contact.Told + '"'});
    }
}

void RadioWatch::Forget(const std::string& callsign)
{
    if (const auto contact = m_contacts.find(callsign); contact != m_contacts.end()) {
        contact->second.WaitsSinceS.reset();
        contact->second.Answers = false;
        contact->second.Yours = false;
    }
}

bool RadioWatch::IsYours(const std::string& callsign) const
{
    const auto contact = m_contacts.find(callsign);
    return contact != m_contacts.end() && contact->second.Yours;
}

std::optional<double> RadioWatch::YoursSince(const std::string& callsign) const
{
    const auto contact = m_contacts.find(callsign);
    return contact == m_contacts.end() ? std::nullopt : contact->second.FirstYoursS;
}

std::optional<int> RadioWatch::GivenFt(const std::string& callsign) const
{
    const auto contact = m_contacts.find(callsign);
    return contact == m_contacts.end() ? std::nullopt : contact->second.GivenFt;
}

std::optional<double> RadioWatch::FirstCallS(const std::string& callsign) const
{
    const auto contact = m_contacts.find(callsign);
    return contact == m_contacts.end() ? std::nullopt : contact->second.FirstCallS;
}

int RadioWatch::InstructionsTo(const std::string& callsign) const
{
    const auto contact = m_contacts.find(callsign);
    return contact == m_contacts.end() ? 0 : contact->second.Instructions;
}

std::string RadioWatch::LastTold(const std::string& callsign, double nowS) const
{
    constexpr double LongAgoS = 300;
    const auto contact = m_contacts.find(callsign);
    if (contact == m_contacts.end() || contact->second.Told.empty() || nowS - contact->second.ToldS > LongAgoS)
        return {};
    return callsign + " was told \"" + contact->second.Told + "\" " + Seconds(nowS - contact->second.ToldS) + " before";
}

void RadioWatch::Fill(Debrief& debrief, double nowS)
{
    Refresh(nowS + AnswerWithinS + 1);
    for (auto& [callsign, contact] : m_contacts)
        EndWaiting(callsign, contact, nowS);
    debrief.Instructions = m_counts.Instructions;
    debrief.Refused = m_counts.Refused;
    debrief.NotUnderstood = m_counts.NotUnderstood;
    debrief.Unanswered = m_counts.Unanswered;
    debrief.GoArounds = m_counts.GoArounds;
    debrief.LongestCallS = m_counts.LongestCallS;
    debrief.LongestCallBy = m_counts.LongestCallBy;
    debrief.Items.insert(debrief.Items.end(), m_counts.Items.begin(), m_counts.Items.end());
}
} // namespace corvane
