#pragma once

#include "core/Bytes.h"
#include "core/Result.h"

#include <memory>
#include <string>

namespace corvane {
/// Unpacks gzip data piece by piece. A build without zlib has one that refuses.
class Inflater {
public:
    Inflater();
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    Inflater(Inflater&&) = delete;
    Inflater& operator=(Inflater&&) = delete;
    ~Inflater();

    struct Step {
        std::size_t Taken = 0; ///< bytes of the input that are done with
        ByteSpan Unpacked;     ///< valid until the next call
    };
    /// Takes a piece of the input, which holds what the call before left. Nothing at all is taken where the data have
    /// ended. An Error where they are damaged; its What is empty.
    Result<Step> Take(ByteSpan input);
    /// A member of the file is whole, and no other has begun.
    [[nodiscard]] bool AtEnd() const noexcept { return m_atEnd; }

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
    Bytes m_out;
    bool m_atEnd = false;
};
} // namespace corvane
