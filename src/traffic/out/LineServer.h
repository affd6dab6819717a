#pragma once

#include "core/Result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace corvane {
/// Sends the same text to everybody who connects to a TCP port. Nobody is waited for: what a reader cannot take at once
/// waits for it, and one for whom too much waits is dropped. What readers send is thrown away. It runs on whichever
/// thread calls it.
class LineServer {
public:
    static constexpr std::size_t MostReaders = 32;
    static constexpr std::size_t MostWaiting = 4194304; ///< bytes, for one reader

    /// Listens at an address of this machine. An Error names it and says why it cannot.
    static Result<std::unique_ptr<LineServer>> Open(const std::string& address, std::uint16_t port);
    ~LineServer();
    LineServer(const LineServer&) = delete;
    LineServer& operator=(const LineServer&) = delete;
    LineServer(LineServer&&) = delete;
    LineServer& operator=(LineServer&&) = delete;

    /// Lets in who has come; whether anybody has.
    bool Accept();
    /// Sends text, which may be empty, and what still waits.
    void Send(std::string_view text);

    [[nodiscard]] std::uint16_t Port() const;
    [[nodiscard]] std::size_t ReaderCount() const noexcept;
    [[nodiscard]] std::uint64_t Dropped() const noexcept; ///< for not keeping up

private:
    struct Sockets;
    explicit LineServer(std::unique_ptr<Sockets> sockets);

    std::unique_ptr<Sockets> m_sockets;
};
} // namespace corvane
