#include "session/WireUnits.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <array>
#include <cmath>

namespace corvane {
static constexpr double DegreesPerLatitudeMetre = 360.0 / 40007000.0;
static constexpr double UnitsPerTurn = 4294967296.0;
static constexpr double DegreesPerUnit = 360.0 / UnitsPerTurn;
static constexpr double FeetPerMetre = 3.28084;
static constexpr double KnotsPerFootPerSecond = 0.592484;
static constexpr std::int32_t HeadingSteps = 1024; // to the full turn
static constexpr int HeadingBit = 2;
static constexpr int FixedPointBits = 16;
static constexpr std::array<std::string_view, 4> EngineTypes = {"Piston Plane", "Jet Plane", "-None-", "Helicopter"};

double LatitudeFromWire(std::int32_t metres) noexcept
{
    return metres * DegreesPerLatitudeMetre;
}

std::int32_t LatitudeToWire(double degrees) noexcept
{
    return RoundTo<std::int32_t>(degrees / DegreesPerLatitudeMetre);
}

double LongitudeFromWire(std::int32_t turn) noexcept
{
    return turn * DegreesPerUnit;
}

std::int32_t LongitudeToWire(double degrees) noexcept
{
    if (!std::isfinite(degrees))
        return 0;
    const double units = RoundHalfEven(std::remainder(degrees, 360.0) / DegreesPerUnit);
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::int64_t>(units)));
}

std::int32_t AltitudeFromWire(std::int32_t metres) noexcept
{
    return RoundTo<std::int32_t>(metres / MetresPerFoot);
}

std::int32_t AltitudeToWire(std::int32_t feet) noexcept
{
    return RoundTo<std::int32_t>(feet * MetresPerFoot);
}

std::int16_t HeadingFromPbh(std::int32_t attitude) noexcept
{
    constexpr std::int32_t HeadingMask = HeadingSteps - 1;
    const std::int32_t step = DivPow2(attitude, HeadingBit) & HeadingMask;
    return RoundTo<std::int16_t>(step / static_cast<double>(HeadingSteps) * 360.0);
}

std::int32_t PbhFromHeading(std::int32_t heading) noexcept
{
    std::int32_t degrees = heading % 360;
    if (degrees < 0)
        degrees += 360;
    if (degrees == 0 && heading != 0)
        degrees = 360; // north as 360, which the last step below a full turn reads back as
    const auto step = RoundTo<std::int32_t>(degrees * static_cast<double>(HeadingSteps) / 360.0);
    return (step == HeadingSteps ? HeadingSteps - 1 : step) << HeadingBit;
}

std::int16_t SpeedFromWire(std::int32_t fixedPoint) noexcept
{
    const std::int32_t metresPerSecond = DivPow2(fixedPoint, FixedPointBits);
    return RoundTo<std::int16_t>(metresPerSecond * FeetPerMetre * KnotsPerFootPerSecond);
}

std::int32_t SpeedToWire(std::int32_t knots) noexcept
{
    const auto metresPerSecond = RoundTo<std::int16_t>(knots / KnotsPerFootPerSecond / FeetPerMetre);
    return std::int32_t{metresPerSecond} * (std::int32_t{1} << FixedPointBits);
}

std::int32_t DivPow2(std::int32_t value, int n) noexcept
{
    return value / (std::int32_t{1} << n);
}

std::string_view EngineTypeText(std::int16_t code) noexcept
{
    if (code < 0 || static_cast<std::size_t>(code) >= EngineTypes.size())
        return {};
    return EngineTypes[static_cast<std::size_t>(code)];
}

std::int16_t EngineTypeCode(std::string_view text) noexcept
{
    std::int16_t code = 0;
    for (const std::string_view known : EngineTypes) {
        if (known == text)
            break;
        ++code;
    }
    return code;
}
} // namespace corvane
