#include "world/Inflater.h"

namespace corvane {
struct Inflater::Stream {};

Inflater::Inflater() = default;
Inflater::~Inflater() = default;

Result<Inflater::Step> Inflater::Take(ByteSpan /*input*/)
{
    return Fail({}, "is a gzip file, and this program was built without zlib; unpack it first");
}
} // namespace corvane
