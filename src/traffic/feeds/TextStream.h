#pragma once

#include "core/Bytes.h"
#include "traffic/feeds/BackOff.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvane {
/// A connection to a TCP service that speaks without being asked, kept up for ever: where it is refused, breaks or
/// closes, it is opened again. That nothing comes for minutes is no fault. Nothing here waits; it runs on whichever
/// thread polls it.
class TextStream {
public:
    /// What a poll reads at most: what is there beyond waits in the system, and then at the sender.
    static constexpr std::size_t MostAtOnce = 1048576;

    /// localAddress  in numbers, of this machine, that the connection is made from; empty: any
    TextStream(std::string host, std::uint16_t port, std::string localAddress = {});
    ~TextStream();
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;
    TextStream(TextStream&&) = delete;
    TextStream& operator=(TextStream&&) = delete;

    struct Handlers {
        std::function<void()> OnOpened;
        std::function<void(ByteSpan)> OnBytes;
        std::function<void(const std::string& why)> OnFailed; ///< it will be tried again
    };
    /// Does what can be done now.
    void Poll(std::int64_t nowMs, const Handlers& handlers);

    [[nodiscard]] bool IsOpen() const noexcept;
    /// When the next attempt begins, while none is under way.
    [[nodiscard]] std::optional<std::int64_t> NextTryMs() const noexcept;

private:
    struct Sockets;
    struct Names;
    enum class Step : std::uint8_t { Waiting, Resolving, Connecting, Open };

    void Resolve(std::int64_t nowMs);
    void Connect();
    void ConnectFromLocalAddress();
    void Read(const Handlers& handlers, std::int64_t nowMs);
    void Fail(const std::string& why, std::int64_t nowMs, const Handlers& handlers);

    std::string m_host;
    std::uint16_t m_port;
    std::string m_localAddress;
    std::unique_ptr<Sockets> m_sockets;
    std::shared_ptr<Names> m_names; ///< shared with the thread that asks for them
    Step m_step = Step::Waiting;
    BackOff m_backOff;
    std::int64_t m_attemptEndsMs = 0;
};
} // namespace corvane
