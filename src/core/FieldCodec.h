#pragma once

#include "core/Bytes.h"
#include "core/NumberText.h"
#include "core/RecordFields.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

namespace corvane {
/// Appends a record's fields to bytes, little-endian and back to back: a visitor of VisitFields.
class FieldWriter {
public:
    explicit FieldWriter(Bytes& out) noexcept : m_out(out) {}

    template <class... Field> void operator()(const Field&... fields) { (Write(fields), ...); }
    /// The position is not known yet: it is written once the record is.
    void NextPos(std::int32_t /*position*/)
    {
        m_nextPosAt = m_out.Size();
        m_out.WriteI32(0);
    }
    /// Dimensions, element count, lower bound, elements, and the count in use; an empty list is never sized, which is
    /// the dimension count 0 alone.
    template <class T> void List(const std::vector<T>& list, Spare spare, const char* /*name*/)
    {
        if (list.empty()) {
            m_out.WriteU16(0);
        } else {
            m_out.WriteU16(1);
            m_out.WriteU32(static_cast<std::uint32_t>(list.size() + (spare == Spare::Blank ? 1 : 0)));
            m_out.WriteI32(0);
            for (const T& element : list)
                VisitFields(element, *this);
            const T blank;
            if (spare == Spare::Blank)
                VisitFields(blank, *this);
        }
        m_out.WriteI32(static_cast<std::int32_t>(list.size()));
    }

    /// Where in the bytes the field that NextPos was called for stands.
    [[nodiscard]] std::size_t NextPosAt() const noexcept { return m_nextPosAt; }

private:
    void Write(const std::string& text) { m_out.WriteText16(text); }
    void Write(double number) { m_out.WriteF64(number); }
    void Write(std::int32_t number) { m_out.WriteI32(number); }
    void Write(std::int16_t number) { m_out.WriteI16(number); }
    void Write(std::uint8_t number) { m_out.WriteU8(number); }
    void Write(BoundaryKind kind) { m_out.WriteU8(static_cast<std::uint8_t>(kind)); }

    ByteWriter m_out;
    std::size_t m_nextPosAt = 0;
};

/// Counts the bytes of a record whose texts are empty.
class FieldSizes {
public:
    template <class... Field> void operator()(const Field&... fields) noexcept
    {
        ((Count += std::is_same_v<Field, std::string> ? 2 : sizeof(fields)), ...);
    }

    std::size_t Count = 0;
};

/// Reads a record's fields: a visitor of VisitFields. Where the bytes end, the rest reads as empty texts, zeros and
/// empty lists, and the reader has failed.
class FieldReader {
public:
    explicit FieldReader(ByteReader& in) noexcept : m_in(in) {}

    template <class... Field> void operator()(Field&... fields) { (Read(fields), ...); }
    void NextPos(std::int32_t& position) { Read(position); }
    /// Keeps the elements in use. What stands behind a list that the encoding does not make is left unread.
    template <class T> void List(std::vector<T>& list, Spare /*spare*/, const char* name)
    {
        if (Why.empty())
            Why = ReadList(list, name);
    }

    std::string Why; ///< the first list that the encoding does not make, and what is wrong with it; empty: none

private:
    void Read(std::string& text) { text = m_in.ReadText16(); }
    void Read(double& number) { number = m_in.ReadF64(); }
    void Read(std::int32_t& number) { number = m_in.ReadI32(); }
    void Read(std::int16_t& number) { number = m_in.ReadI16(); }
    void Read(std::uint8_t& number) { number = m_in.ReadU8(); }
    void Read(BoundaryKind& kind) { kind = static_cast<BoundaryKind>(m_in.ReadU8()); }

    template <class T> std::string ReadList(std::vector<T>& list, const char* name)
    {
        std::uint32_t stored = 0;
        if (const std::uint16_t dimensions = m_in.ReadU16(); dimensions != 0) {
            stored = m_in.ReadU32();
            const std::int32_t lowerBound = m_in.ReadI32();
            if (dimensions != 1 || lowerBound != 0)
                return std::string(name) + " has " + NumberText(std::int64_t{dimensions}) + " dimensions from " +
                       NumberText(lowerBound);
            if (stored > m_in.Left() / SmallestSize<T>()) {
                // The elements end beyond the bytes, and so does their count behind them, which then is 0.
                static_cast<void>(m_in.ReadBytes(m_in.Left() + 1));
                return {};
            }
            list.resize(stored);
            for (T& element : list)
                VisitFields(element, *this);
        }
        const std::int32_t count = m_in.ReadI32();
        if (count < 0 || static_cast<std::uint32_t>(count) > stored)
            return std::string(name) + " uses " + NumberText(count) + " of " + NumberText(std::int64_t{stored}) +
                   " elements";
        list.resize(static_cast<std::size_t>(count));
        return {};
    }

    /// No file of n bytes holds more than n / SmallestSize elements.
    template <class T> static std::size_t SmallestSize()
    {
        FieldSizes sizes;
        const T blank;
        VisitFields(blank, sizes);
        return sizes.Count;
    }

    ByteReader& m_in;
};
} // namespace corvane
