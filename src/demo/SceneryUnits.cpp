#include "demo/SceneryUnits.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
/// A direction as the signed number of turn / steps nearest to it; steps is a power of two.
static std::int64_t CircleSteps(double degrees, std::int64_t steps) noexcept
{
    const auto nearest = static_cast<std::int64_t>(RoundHalfEven(degrees * static_cast<double>(steps) / 360));
    const std::int64_t turn = ((nearest % steps) + steps) % steps;
    return turn >= steps / 2 ? turn - steps : turn;
}

std::int32_t LatitudeWord(double lat) noexcept
{
    return RoundTo<std::int32_t>(lat * 10001750 / 90);
}

std::int32_t LongitudeWord(double lon) noexcept
{
    return static_cast<std::int32_t>(CircleSteps(lon, std::int64_t{1} << 32));
}

std::int32_t HeadingWord(double trueHeading) noexcept
{
    return static_cast<std::int32_t>(CircleSteps(trueHeading, std::int64_t{1} << 32));
}

std::int32_t OppositeHeadingWord(std::int32_t word) noexcept
{
    constexpr std::uint32_t HalfTurn = 0x80000000;
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(word) + HalfTurn);
}

std::int32_t TurnedHeadingWord(std::int32_t word, int degrees) noexcept
{
    const auto turn = static_cast<std::uint32_t>(HeadingWord(degrees));
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(word) + turn);
}

std::int32_t FrequencyWord(std::int32_t kilohertz) noexcept
{
    std::uint32_t word = 0;
    auto rest = static_cast<std::uint32_t>(kilohertz);
    for (unsigned shift = 4; shift < 32; shift += 4) { // the lowest digit, hundreds of hertz, stays 0
        word |= rest % 10 << shift;
        rest /= 10;
    }
    return static_cast<std::int32_t>(word);
}

std::int32_t MetresFromFeet(double feet) noexcept
{
    return RoundTo<std::int32_t>(feet * MetresPerFoot);
}

std::int32_t NavaidLatitude(double lat) noexcept
{
    return RoundTo<std::int32_t>(lat * 5000875 / 90);
}

std::int32_t NavaidLongitude(double lon) noexcept
{
    return static_cast<std::int32_t>(CircleSteps(lon, std::int64_t{1} << 24));
}

std::uint8_t NavaidRange(double rangeNm) noexcept
{
    return static_cast<std::uint8_t>(std::clamp(RoundHalfEven(rangeNm * 1852 / 2048), 0.0, 255.0));
}
} // namespace corvane
