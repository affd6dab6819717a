// The alerts beside what geometry says of each encounter, worked out another way than the search does it: from the
// closest point of the relative way and the length of its chord through the protected circle.

#include "core/GreatCircle.h"
#include "tracks/AlertMonitor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace corvane {
namespace {
constexpr int Refreshes = 12;

/// Two aircraft whose midpoint flies along a parallel, so that the plane at it stays the same.
struct Encounter {
    LatLon Midpoint;
    double MidpointKt = 0; ///< eastward
    double MissNm = 0;     ///< the least distance, to the left of the relative way
    double ClosestAt = 0;  ///< seconds
    double RelativeKt = 0;
    double RelativeCourse = 0;
    double AltitudeFt = 0; ///< of the midpoint
    double ApartFt = 0;    ///< how much higher the second is at ClosestAt
    double ClimbFtPerMin = 0;

    [[nodiscard]] double EastKt(double side) const
    {
        return MidpointKt + side * RelativeKt / 2 * std::sin(RelativeCourse * RadiansPerDegree);
    }
    [[nodiscard]] double NorthKt(double side) const
    {
        return side * RelativeKt / 2 * std::cos(RelativeCourse * RadiansPerDegree);
    }
    [[nodiscard]] double SpeedKt(double side) const { return std::hypot(EastKt(side), NorthKt(side)); }
};

/// When the two are closer than nm and ft at once, as a span of seconds; empty where To is not after From.
struct Span {
    double From = 0;
    double To = -1;
};

Span CloseTimes(const Encounter& e, double nm, double ft)
{
    constexpr double Forever = 1e6;
    if (std::abs(e.MissNm) >= nm)
        return {};
    Span close{-Forever, Forever};
    if (const double perSecond = e.RelativeKt / 3600; perSecond > 0) {
        const double halfChord = nm * std::sin(std::acos(e.MissNm / nm));
        close = {e.ClosestAt - halfChord / perSecond, e.ClosestAt + halfChord / perSecond};
    }
    if (e.ClimbFtPerMin == 0)
        return std::abs(e.ApartFt) < ft ? close : Span();
    const double level = e.ClosestAt - e.ApartFt / (e.ClimbFtPerMin / 60); // when both are at one altitude
    const double halfTime = ft / std::abs(e.ClimbFtPerMin / 60);
    return {std::max(close.From, level - halfTime), std::min(close.To, level + halfTime)};
}

bool WillBeClose(const Span& span, double now, double ahead)
{
    return span.From < span.To && span.To > now && span.From < now + ahead;
}

/// side  -1 the first, 1 the second
AlertTarget TargetAt(const Encounter& e, double side, std::int32_t id, double now)
{
    const double radians = e.RelativeCourse * RadiansPerDegree;
    const double along = e.RelativeKt * (now - e.ClosestAt) / 3600;
    const double eastNm = along * std::sin(radians) - e.MissNm * std::cos(radians);
    const double northNm = along * std::cos(radians) + e.MissNm * std::sin(radians);
    const double perDegree = 60 * std::cos(e.Midpoint.Lat * RadiansPerDegree);
    const double lon = e.Midpoint.Lon + (e.MidpointKt * now / 3600 + side * eastNm / 2) / perDegree;
    const double apartFt = e.ApartFt + e.ClimbFtPerMin * (now - e.ClosestAt) / 60;
    AlertTarget target;
    target.PlayerId = id;
    target.Track.Id = static_cast<TrackId>(id);
    target.Track.Last.Position = {e.Midpoint.Lat + side * northNm / 2 / 60, NormalizeLongitude(lon)};
    target.Track.Last.AltitudeFt = static_cast<std::int32_t>(std::nearbyint(e.AltitudeFt + side * apartFt / 2));
    target.Track.Last.GroundSpeedKt = static_cast<std::int16_t>(std::nearbyint(e.SpeedKt(side)));
    target.Track.Course = WrapCourse(std::atan2(e.EastKt(side), e.NorthKt(side)) * DegreesPerRadian);
    target.Track.ClimbFtPerMin = side * e.ClimbFtPerMin / 2;
    return target;
}

Encounter RandomEncounter(std::mt19937& random, const LatLon& midpoint)
{
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    Encounter e;
    e.Midpoint = midpoint;
    e.MissNm = between(-5, 5);
    e.ClosestAt = between(-20, 150);
    e.RelativeKt = between(5, 1100);
    e.RelativeCourse = between(0, 360);
    e.AltitudeFt = between(2000, 40000);
    e.ApartFt = between(-2000, 2000);
    e.ClimbFtPerMin = random() % 3 == 0 ? 0 : between(-5000, 5000);
    do
        e.MidpointKt = between(-500, 500);
    while (e.SpeedKt(-1) < 41 || e.SpeedKt(1) < 41);
    return e;
}

/// What the alerts said of one encounter, refresh by refresh.
struct Watched {
    Span Inner; ///< when it is a conflict beyond doubt
    Span Outer; ///< when it may be taken for one
    std::array<bool, Refreshes> Stands{};
    std::array<bool, Refreshes> Violated{};
};

void Judge(const Watched& w, const AlertOptions& options, int& begun, int& violated)
{
    const auto surely = [&](int s) { return s >= 0 && WillBeClose(w.Inner, s, options.ConflictSeconds); };
    const auto perhaps = [&](int s) { return s >= 0 && WillBeClose(w.Outer, s, options.ConflictSeconds); };
    const auto lost = [&](int s) { return s >= 0 && w.Inner.From < s && w.Inner.To > s; };
    for (int s = 0; s < Refreshes; ++s) {
        const auto at = static_cast<std::size_t>(s);
        const bool begins = w.Stands[at] && (s == 0 || !w.Stands[at - 1]);
        const bool isLost = w.Violated[at] && (s == 0 || !w.Violated[at - 1]);
        const bool lately = perhaps(s - 1) || perhaps(s - 2);
        ASSERT_TRUE(w.Stands[at] || !(surely(s) && surely(s - 1))) << "missed or late at " << s;
        ASSERT_TRUE(!w.Stands[at] || perhaps(s) || lately) << "without cause at " << s;
        ASSERT_TRUE(!begins || (perhaps(s) && lately)) << "begun without cause at " << s;
        ASSERT_TRUE(w.Violated[at] || !(lost(s) && lost(s - 1))) << "the loss is missed at " << s;
        ASSERT_TRUE(!isLost || (w.Outer.From < s && w.Outer.To > s)) << "no separation is lost at " << s;
        begun += begins ? 1 : 0;
        violated += isLost ? 1 : 0;
    }
}

/// Places more than 300 nm apart, some of them on the 180 degree meridian.
std::vector<LatLon> Places()
{
    std::vector<LatLon> places;
    for (int lat = -78; lat <= 78; lat += 6)
        for (int lon = -180; lon < 180; lon += 30)
            places.push_back({static_cast<double>(lat), static_cast<double>(lon)});
    return places;
}

void FlyTogether(const std::vector<Encounter>& encounters, std::vector<Watched>& watched, const AlertOptions& options)
{
    AlertMonitor monitor;
    for (int s = 0; s < Refreshes; ++s) {
        std::vector<AlertTarget> targets;
        for (std::size_t i = 0; i < encounters.size(); ++i) {
            targets.push_back(TargetAt(encounters[i], -1, static_cast<std::int32_t>(2 * i), s));
            targets.push_back(TargetAt(encounters[i], 1, static_cast<std::int32_t>(2 * i + 1), s));
        }
        monitor.Refresh(targets, AirportIndex(), options, s);
        for (const Alert& alert : monitor.Standing()) {
            ASSERT_EQ(alert.FirstId / 2, alert.SecondId / 2) << "aircraft of different encounters";
            Watched& w = watched[static_cast<std::size_t>(alert.FirstId / 2)];
            w.Stands[static_cast<std::size_t>(s)] = true;
            w.Violated[static_cast<std::size_t>(s)] = alert.Violated;
        }
    }
}

TEST(ConflictOracle, NoneOf100000EncountersIsMissedLateOrWithoutCause)
{
    AlertOptions options;
    options.ConflictAlert = true;
    constexpr double MarginNm = 0.1;
    constexpr double MarginFt = 50;
    std::mt19937 random(15);
    const std::vector<LatLon> places = Places();
    int begun = 0;
    int violated = 0;
    for (std::size_t flown = 0; flown < 100000; flown += places.size()) {
        std::vector<Encounter> encounters;
        std::vector<Watched> watched;
        for (const LatLon& place : places) {
            const Encounter& e = encounters.emplace_back(RandomEncounter(random, place));
            watched.push_back({CloseTimes(e, options.ConflictNm - MarginNm, options.ConflictFt - MarginFt),
                               CloseTimes(e, options.ConflictNm + MarginNm, options.ConflictFt + MarginFt)});
        }
        ASSERT_NO_FATAL_FAILURE(FlyTogether(encounters, watched, options));
        for (const Watched& w : watched)
            ASSERT_NO_FATAL_FAILURE(Judge(w, options, begun, violated)) << "in the " << flown << "s";
    }
    EXPECT_GT(begun, 20000) << "too few conflicts to say anything";
    EXPECT_GT(violated, 2000);
}
} // namespace
} // namespace corvane
