#pragma once

#include <cassert>
#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace corvane {
/// A failure that came from outside (a file, the network, the user), shown as "What: Why".
///
/// What  the file, peer or step concerned, by its full name
/// Why   one clause with the evidence, such as "ends after 61 of 65160 values"
struct Error {
    std::string What;
    std::string Why;

    [[nodiscard]] std::string Text() const { return What + ": " + Why; }
    bool operator==(const Error&) const = default;
};

[[nodiscard]] inline Error Fail(std::string what, std::string why)
{
    return {std::move(what), std::move(why)};
}

/// A value or the Error that prevented it; the member names are those of std::expected.
template <class T> class [[nodiscard]] Result {
public:
    Result(T value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool has_value() const noexcept { return m_state.index() == 0; }
    explicit operator bool() const noexcept { return has_value(); }

    /// The value; calling these on a failure is a fault of the program.
    T& operator*() & noexcept { return Get(); }
    const T& operator*() const& noexcept { return Get(); }
    T&& operator*() && noexcept { return std::move(Get()); }
    T* operator->() noexcept { return &Get(); }
    const T* operator->() const noexcept { return &Get(); }

    [[nodiscard]] const Error& error() const noexcept
    {
        assert(!has_value());
        return *std::get_if<1>(&m_state);
    }

private:
    T& Get() noexcept
    {
        assert(has_value());
        return *std::get_if<0>(&m_state);
    }
    const T& Get() const noexcept
    {
        assert(has_value());
        return *std::get_if<0>(&m_state);
    }

    std::variant<T, Error> m_state;
};

/// Success without a value, or an Error.
template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}

    [[nodiscard]] bool has_value() const noexcept { return !m_error; }
    explicit operator bool() const noexcept { return has_value(); }

    [[nodiscard]] const Error& error() const noexcept
    {
        assert(m_error);
        return *m_error;
    }

private:
    std::optional<Error> m_error; ///< nothing to build on the way of success
};
} // namespace corvane
