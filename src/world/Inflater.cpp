#include "world/Inflater.h"

#include <algorithm>
#include <limits>
#include <zlib.h>

namespace corvane {
struct Inflater::Stream {
    z_stream Z{};
    bool Ready = false;
};

Inflater::Inflater() : m_stream(std::make_unique<Stream>())
{
    constexpr int GzipOnly = 16 + MAX_WBITS;
    constexpr std::size_t PieceSize = std::size_t{256} * 1024;
    m_stream->Ready = inflateInit2(&m_stream->Z, GzipOnly) == Z_OK;
    m_out.resize(PieceSize);
}

Inflater::~Inflater()
{
    if (m_stream->Ready)
        static_cast<void>(inflateEnd(&m_stream->Z));
}

Result<Inflater::Step> Inflater::Take(ByteSpan input)
{
    if (!m_stream->Ready)
        return Fail({}, "there is no memory to unpack it");
    z_stream& z = m_stream->Z;
    if (m_atEnd) {
        const bool another = input.size() >= 2 && input[0] == 0x1F && input[1] == 0x8B;
        if (!another)
            return Step{};
        static_cast<void>(inflateReset(&z));
        m_atEnd = false;
    }
    constexpr std::size_t MostAtOnce = std::numeric_limits<std::int32_t>::max();
    const std::size_t given = std::min(input.size(), MostAtOnce);
    z.next_in = const_cast<Bytef*>(input.data()); // zlib does not write to it
    z.avail_in = static_cast<uInt>(given);
    z.next_out = m_out.data();
    z.avail_out = static_cast<uInt>(m_out.size());
    const int status = inflate(&z, Z_NO_FLUSH);
    if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR)
        return Fail({},
                    std::string("its gzip data are damaged (") + (z.msg != nullptr ? z.msg : "no dictionary") + ")");
    m_atEnd = status == Z_STREAM_END;
    return Step{given - z.avail_in, ByteSpan(m_out).first(m_out.size() - z.avail_out)};
}
} // namespace corvane
