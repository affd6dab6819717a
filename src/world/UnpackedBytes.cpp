#include "world/UnpackedBytes.h"

#include "world/Inflater.h"

namespace corvane {
UnpackedBytes::UnpackedBytes(std::unique_ptr<ByteSource> source) : m_source(std::move(source)) {}
UnpackedBytes::~UnpackedBytes() = default;

double UnpackedBytes::PartDone() const noexcept
{
    const std::uint64_t size = m_source->Size();
    return size == 0 ? 1 : static_cast<double>(m_offset) / static_cast<double>(size);
}

Result<ByteSpan> UnpackedBytes::NextRaw()
{
    Result<ByteSpan> piece = m_source->View(m_offset, 2);
    if (piece)
        m_offset += piece->size();
    return piece;
}

Result<ByteSpan> UnpackedBytes::NextUnpacked()
{
    for (;;) {
        const Result<ByteSpan> packed = m_source->View(m_offset, 2);
        if (!packed)
            return packed.error();
        Result<Inflater::Step> step = m_inflater->Take(*packed);
        if (!step)
            return Fail(Name(), step.error().Why);
        m_offset += step->Taken;
        m_given += step->Unpacked.size();
        if (m_given > MostUnpackedBytes)
            return Fail(Name(), "unpacks to more than 4 GB");
        if (!step->Unpacked.empty())
            return step->Unpacked;
        if (step->Taken > 0)
            continue;
        if (!m_inflater->AtEnd())
            return Fail(Name(), "its gzip data are cut off");
        m_offset = m_source->Size();
        return ByteSpan{};
    }
}

Result<ByteSpan> UnpackedBytes::Next()
{
    if (!m_begun) {
        m_begun = true;
        const Result<ByteSpan> start = m_source->View(0, 2);
        if (!start)
            return start.error();
        if (start->size() >= 2 && (*start)[0] == 0x1F && (*start)[1] == 0x8B)
            m_inflater = std::make_unique<Inflater>();
    }
    return m_inflater ? NextUnpacked() : NextRaw();
}
} // namespace corvane
