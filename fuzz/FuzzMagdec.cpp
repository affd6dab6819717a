#include "core/MagVarGrid.h"

#include <cmath>
#include <cstdlib>

/// A magdec.bgl; the grid answers for every whole degree, whatever it holds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    corvane::MagVarGrid grid;
    if (!corvane::FillMagVarGrid(grid, {data, size}))
        return 0;
    for (double lon = -180; lon <= 180; lon += 60) {
        const auto variation = grid.VariationAt({45, lon});
        if (!variation || std::abs(*variation) > 180)
            std::abort();
    }
    return 0;
}
