#include "practice/PhraseTable.h"

#include <array>

namespace corvane {
using enum PhraseTopic;
using Kind = InstructionKind;

static constexpr int Of(SayWhat what) noexcept
{
    return static_cast<int>(what);
}
static constexpr int Of(CancelWhat what) noexcept
{
    return static_cast<int>(what);
}
static constexpr int Of(Moment::Kind moment) noexcept
{
    return static_cast<int>(moment);
}
static constexpr int OnTheIls = 1;

static constexpr std::array Phrases{
    // Headings
    Phrase{Headings, Kind::Heading, 0, "?turn|fly|vector ?to heading {heading} ?degrees; stop turn heading {heading}",
           "heading {heading}", "turns the shorter way to a magnetic heading"},
    Phrase{Headings, Kind::Heading, 0,
           "?turn {turn} ?turn ?to|onto heading {heading} ?degrees; ?turn {turn} ?turn ?to|onto {course}",
           "turning {turn} heading {heading}", "turns that way to it; without the word, three figures"},
    Phrase{Headings, Kind::TurnBy, 0,
           "turn {turn} ?by {degrees} degrees; turn {turn} by {degrees}; turn {degrees} degrees {turn}; "
           "{degrees} degrees {turn}; {degrees} degrees to the {turn}",
           "turning {turn} {degrees} degrees", "turns by so much from the present heading"},
    Phrase{Headings, Kind::TurnBy, 360, "orbit {turn}; make ?a|one {turn} orbit; make ?a {turn} {circle}",
           "turning {turn} 360 degrees", "flies a full circle"},
    Phrase{Headings, Kind::PresentHeading, 0, "?fly|continue|maintain present heading; stop turn", "present heading",
           "keeps it"},
    Phrase{Headings, Kind::RunwayHeading, 0, "?fly|continue|maintain runway heading", "runway heading",
           "goes straight on after the take-off, or flies that heading"},
    // Altitudes
    Phrase{Altitudes, Kind::Altitude, 1,
           "climb ?now|immediately ?and ?maintain ?to ?altitude {altitude}; expedite climb ?to {altitude}; "
           "continue climb ?to {altitude}; go up to {altitude}",
           "{change} {altitude}", "climbs; feet or a flight level"},
    Phrase{Altitudes, Kind::Altitude, -1,
           "descend ?now|immediately ?and ?maintain ?to ?altitude {altitude}; expedite descent ?to {altitude}; "
           "continue descent ?to {altitude}; go down to {altitude}; "
           "descend ?at pilots discretion ?and ?maintain ?to {altitude}; descend via own discretion ?to {altitude}",
           "{change} {altitude}", "descends"},
    Phrase{Altitudes, Kind::Altitude, 0,
           "maintain ?altitude {altitude}; altitude {altitude}; stop climb|descent ?at {altitude}; "
           "recleared ?to {altitude}; amend altitude ?maintain {altitude}; level off at {altitude}",
           "{change} {altitude}", "climbs or descends, whichever it takes, and stays there"},
    // Speeds
    Phrase{Speeds, Kind::Speed, 0,
           "speed {speed} ?knots; reduce|increase|slow ?down ?speed ?to {speed} ?knots; "
           "maintain ?speed {speed} knots; maintain speed {speed}; do not exceed {speed} knots; "
           "?speed {speed} ?knots or less|greater|more",
           "speed {speed}", "flies that speed"},
    Phrase{Speeds, Kind::OwnSpeed, 0,
           "resume ?normal|own speed; no speed restriction|restrictions; "
           "cancel speed restriction|restrictions; speed is yours; speed at your|own discretion",
           "normal speed", "flies as fast as it wants to"},
    Phrase{Speeds, Kind::SlowestSpeed, 0, "reduce ?speed ?to minimum|final ?approach speed; minimum ?approach speed",
           "minimum speed", "flies as slowly as it can"},
    // Places
    Phrase{Places, Kind::Direct, 0,
           "direct ?to ?the {place} ?vor|ndb|airport; proceed|cleared|fly|go direct ?to ?the {place} ?vor|ndb|airport; "
           "proceed ?to {place}; when able ?proceed direct ?to {place}; resume own navigation direct ?to {place}",
           "direct {place}", "flies to a VOR, an NDB or an airport"},
    Phrase{
        Places, Kind::Resume, 0,
        "resume ?own ?navigation|nav; own navigation; continue taxi|taxiing; continue as planned; cancel hold|holding",
        "own navigation", "goes on as it planned, in the air or on the ground"},
    Phrase{Places, Kind::Hold, 0,
           "hold ?present ?position; stop; stop immediately; hold ?present position {turn} turns ?{minutes} ?minutes "
           "?legs",
           "holding {where}, {turn} turns", "holds where it is, right turns unless told; on the ground it stops"},
    Phrase{Places, Kind::Hold, 0,
           "?enter ?the hold ?at|over ?the {place} ?vor|ndb ?{turn} ?turns ?{minutes} ?minutes ?legs; "
           "hold {side} of ?the {place} ?vor|ndb ?{turn} ?turns ?{minutes} ?minutes ?legs",
           "holding {where}, {turn} turns", "flies there and holds, on the side that was said"},
    // Landing
    Phrase{Landing, Kind::Approach, OnTheIls,
           "cleared ?for ?the|an ils ?approach ?runway ?{runway} ?approach; join|intercept the ils ?runway {runway}",
           "cleared ILS {ident}", "flies the ILS and lands"},
    Phrase{Landing, Kind::Approach, 0,
           "cleared ?for ?the|a visual ?approach ?runway ?{runway} ?approach; "
           "cleared ?for ?the approach ?runway ?{runway}",
           "cleared approach {runway}", "lands there by eye"},
    Phrase{Landing, Kind::Localizer, 0, "?to join|intercept ?the localizer ?runway ?{runway}",
           "joining the localizer {runway}",
           "turns onto the final course and stays level until it is cleared for the approach"},
    Phrase{Landing, Kind::Land, 0, "cleared to land ?on ?runway ?{runway}; runway {runway} cleared to land",
           "cleared to land {runway}", "lands; a pilot without an approach clearance takes it for one"},
    Phrase{Landing, Kind::TouchAndGo, 0,
           "cleared ?for ?a ?the touch and go ?runway ?{runway}; cleared ?for ?the option ?runway ?{runway}", "",
           "says that it wants a full stop"},
    Phrase{Landing, Kind::TouchAndGo, 1, "cleared ?for ?a low approach ?runway ?{runway}", "",
           "says that it wants a full stop"},
    Phrase{Landing, Kind::GoAround, 0, "go~around; ?execute missed approach; i say again go~around", "going around",
           "breaks off the approach"},
    Phrase{Landing, Kind::Cancel, Of(CancelWhat::Approach), "cancel approach ?clearance",
           "approach clearance cancelled", "stays on its heading and at its altitude"},
    Phrase{Landing, Kind::Cancel, Of(CancelWhat::Landing), "cancel landing ?clearance", "landing clearance cancelled",
           "goes around unless it is cleared again before the runway"},
    // Ground
    Phrase{Ground, Kind::Pushback, 0,
           "?cleared ?for push~back ?approved; push and start ?approved; start~up and push~back ?approved; "
           "start~up approved",
           "pushback approved", "gets ready to taxi at once"},
    Phrase{Ground, Kind::Taxi, 0,
           "taxi ?to ?holding~point ?runway {runway} ?via ?{taxiways}; taxi via {taxiways}; "
           "runway {runway} taxi via {taxiways}",
           "taxi {runway} {via}", "taxies to the runway, by those taxiways"},
    Phrase{Ground, Kind::TaxiIn, 0, "taxi ?to ?the parking|gate|ramp|stand|apron ?via ?{taxiways}",
           "taxi to parking {via}", "taxies to its stand after landing"},
    Phrase{Ground, Kind::HoldShort, 0, "hold short ?of ?runway ?{runway}", "holding short {runway}",
           "stops before the runway until it is told to go on"},
    Phrase{Ground, Kind::Cross, 0, "cross ?runway {runway}", "crossing {runway}", "goes on over it"},
    Phrase{Ground, Kind::LineUp, 0,
           "line~up ?runway ?{runway} and wait ?runway ?{runway}; line~up ?runway ?{runway}; "
           "runway {runway} line~up ?and ?wait; position and hold ?runway ?{runway}",
           "lining up {runway}", "enters the runway and waits there"},
    Phrase{Ground, Kind::TakeOff, 0, "cleared ?for take~off ?runway ?{runway}; runway {runway} cleared ?for take~off",
           "cleared for take-off {runway}", "takes off; at its stand it taxies there first"},
    Phrase{Ground, Kind::Cancel, Of(CancelWhat::TakeOff), "cancel|abort|abandon take~off ?clearance", "stopping",
           "stops, unless it is too fast to"},
    Phrase{Ground, Kind::Vacate, 0,
           "vacate|exit ?runway ?next|first|the {turn} ?when ?able; turn {turn} at|on ?taxiway {taxiways}; "
           "vacate|exit ?runway ?{turn} ?at|via ?taxiway {taxiways}",
           "vacating {turn} {via}", "leaves the runway on that side after landing"},
    // Radio
    Phrase{Radio, Kind::Squawk, 0, "squawk {code}", "squawking {code}", "sets its transponder"},
    Phrase{Radio, Kind::Ident, 0, "?squawk ident", "ident", "presses the button"},
    Phrase{Radio, Kind::Contact, 0,
           "contact|monitor ?{station} ?on {frequency}; switch|handoff|change ?to ?{station} ?on {frequency}; "
           "contact {station}; frequency change approved; ?change to advisory frequency approved",
           "{frequency}", "leaves you and flies on as it planned"},
    // Reports
    Phrase{Reports, Kind::Report, Of(Moment::Kind::Established),
           "report ?when established ?on ?the ?ils|localizer|final; call ?me ?when established",
           "will report established", "tells you when it is on the final course"},
    Phrase{Reports, Kind::Report, Of(Moment::Kind::Altitude),
           "report ?when passing|leaving|reaching|through {altitude}", "will report {altitude}",
           "tells you when it is there"},
    Phrase{Reports, Kind::Report, Of(Moment::Kind::FinalMiles), "report ?on ?a {miles} miles ?final|out",
           "will report {miles} miles", "tells you when it is so far from the runway"},
    Phrase{Reports, Kind::Report, Of(Moment::Kind::FieldInSight), "report ?the field|runway|airport in sight",
           "will report the field in sight", "tells you when it sees the field"},
    Phrase{Reports, Kind::Report, Of(Moment::Kind::Ready), "report ?when ready ?for ?departure|taxi",
           "will report ready", "tells you when it could take off"},
    Phrase{Reports, Kind::Report, Of(Moment::Kind::Fix), "report ?over|passing|abeam {place}", "will report {place}",
           "tells you when it is there"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Altitude),
           "say|verify|confirm|report ?your|present altitude|level; what is your altitude; whats your altitude", "",
           "tells you its altitude"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Heading),
           "say|verify|confirm|report ?your|present heading; what is your heading; whats your heading", "",
           "tells you its heading"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Speed),
           "say|verify|confirm|report ?your|present speed|airspeed; what is your speed; whats your speed", "",
           "tells you its speed"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Position),
           "say|verify|confirm|report ?your|present position; where are you; what is your position", "",
           "tells you where it is"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Intentions),
           "say|state|confirm ?your intentions|request|destination; what are your intentions", "",
           "tells you where it goes"},
    Phrase{Reports, Kind::Say, Of(SayWhat::AircraftType), "say|confirm ?your ?aircraft type ?of ?aircraft", "",
           "tells you what it flies"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Transponder), "say|confirm ?your squawk|transponder", "",
           "tells you its code"},
    Phrase{Reports, Kind::Say, Of(SayWhat::Fuel), "say|confirm ?your fuel ?remaining|endurance; say endurance", "",
           "tells you for how many minutes it has fuel, or that it has enough"},
    // Talk
    Phrase{Talk, Kind::Repeat, 0, "say again ?your ?last ?request|transmission; repeat ?your ?last", "",
           "says its last words again"},
    Phrase{Talk, Kind::Disregard, 0, "disregard ?that|my ?last ?transmission|instruction|clearance", "disregarding",
           "forgets the instruction before; in a line, those before the word"},
    Phrase{Talk, Kind::Expect, OnTheIls,
           "expect ?radar ?vectors ?for|to ?the ils ?approach ?runway {runway}; vectors ?for|to ?the ils ?approach "
           "?runway {runway}",
           "expecting ILS {ident}", "knows what comes"},
    Phrase{Talk, Kind::Expect, 0,
           "expect ?radar ?vectors ?for|to ?the ?visual ?approach ?to|for ?runway {runway}; vectors ?for|to ?the "
           "?visual ?approach ?runway {runway}",
           "expecting {runway}", "knows what comes"},
    Phrase{Talk, Kind::Advice, 0, "altimeter|qnh {number}; altimeter|qnh {frequency}", "altimeter set",
           "sets its altimeter"},
    Phrase{Talk, Kind::Advice, 0, "traffic {details}", "looking", "looks out"},
    Phrase{Talk, Kind::Advice, 0, "?you ?are|youre number {number} ?for|to ?landing|land ?follow|behind ?{details}",
           "number {number}", "knows it"},
    Phrase{Talk, Kind::Advice, 0, "cleared to {place} ?airport as|via filed", "cleared as filed", "has its route"},
    Phrase{Talk, Kind::Advice, 0, "continue ?approach", "continuing approach", "goes on"},
    Phrase{
        Talk, Kind::Advice, 0,
        "roger; copied; affirm; affirmative; wilco; negative; unable; stand~by; ?ident radar contact ?{details}; "
        "ident observed; identified; read~back ?is correct; radar service terminated; "
        "wind {number} ?degrees ?at {number} ?knots ?gusting ?{number}; ?this ?is information {letter} ?is ?current; "
        "caution wake turbulence ?{details}; {miles} miles from|to ?the {place}; for "
        "spacing|traffic|sequence|sequencing; "
        "until advised|further|notified ?advised",
        "roger", "has heard it"},
    Phrase{
        Talk, Kind::Greeting, 0,
        "good morning|day|afternoon|evening|night ?all|everybody|everyone|sir; hello ?all|everybody|everyone; hi ?all; "
        "bye; ?so goodbye; thanks; thank you; see you; cheers",
        "", "is polite too"},
    // Moments
    Phrase{Moments, Kind::When, Of(Moment::Kind::Altitude), "?when passing|leaving|reaching|through {altitude}",
           "passing {altitude}", "does the instruction beside it then"},
    Phrase{Moments, Kind::When, Of(Moment::Kind::Fix), "after|when ?passing|over|at {place}", "after {place}",
           "does the instruction beside it then"},
    Phrase{Moments, Kind::When, Of(Moment::Kind::Established),
           "when|once|after established ?on ?the ?localizer|ils|final", "when established",
           "does the instruction beside it then"},
    Phrase{Moments, Kind::When, Of(Moment::Kind::Airborne), "after departure|take~off|airborne; when|once airborne",
           "after departure", "does the instruction beside it then"},
    Phrase{Moments, Kind::Until, Of(Moment::Kind::Altitude), "until ?passing|leaving|reaching {altitude}",
           "until {altitude}", "does the instruction before it until then"},
    Phrase{Moments, Kind::Until, Of(Moment::Kind::FinalMiles), "until ?a {miles} miles|dme ?final",
           "until {miles} miles", "does the instruction before it until then"},
    Phrase{Moments, Kind::Until, Of(Moment::Kind::Established), "until established ?on ?the ?localizer|ils|final",
           "until established", "does the instruction before it until then"},
    Phrase{Moments, Kind::Until, Of(Moment::Kind::Fix), "until ?passing|over|reaching {place}", "until {place}",
           "does the instruction before it until then"},
};

std::span<const Phrase> PhraseTable() noexcept
{
    return Phrases;
}
} // namespace corvane
