#include "area/WorldOutlines.h"

#include <cstdlib>

using namespace corvane;

// The window comes from the first 32 bytes, the map from the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ByteReader head(ByteSpan(data, size));
    OutlineWindow window;
    for (double* edge : {&window.North, &window.South, &window.West, &window.East})
        *edge = head.ReadF64();
    MemorySource map("world.map", ByteSpan(data, size).subspan(head.Position()));
    std::vector<OutlinePoint> points;
    if (!CutOutlines(map, window, points) || (!points.empty() && !points.front().IsSeparator()))
        std::abort();
    return 0;
}
