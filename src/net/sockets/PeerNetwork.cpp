#include "net/sockets/PeerNetwork.h"

#include "net/sockets/PeerSockets.h"

#include <asio/executor_work_guard.hpp>
#include <asio/post.hpp>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <future>
#include <optional>
#include <thread>
#include <utility>

namespace corvane::directplay {
struct Outgoing {
    WireId From = 0;
    WireId To = 0;
    bool Guaranteed = true;
    Bytes Content;
};

/// Messages on their way from the program's thread to the network thread, in order.
class SendQueue {
public:
    SendQueue(asio::io_context& io, PeerSockets& sockets) : m_io(io), m_sockets(sockets), m_recheck(io) {}

    /// Program's thread. Never waits: when the network thread is far behind, the message is refused.
    bool Push(Outgoing message)
    {
        constexpr std::size_t Most = 16777216;
        const std::scoped_lock lock(m_mutex);
        if (m_bytes + message.Content.size() > Most)
            return false;
        m_bytes += message.Content.size();
        m_messages.push_back(std::move(message));
        if (!std::exchange(m_scheduled, true))
            asio::post(m_io, [this] { SendSome(); });
        return true;
    }

    /// Program's thread: whether much waits already, for a machine that does read, or here for all its players.
    [[nodiscard]] bool Congested() const
    {
        constexpr std::size_t Enough = 4194304;
        const std::scoped_lock lock(m_mutex);
        return m_congested || m_bytes > Enough / m_players;
    }

    /// Network thread: so many players are in the session.
    void SetPlayers(std::size_t players)
    {
        const std::scoped_lock lock(m_mutex);
        m_players = std::max<std::size_t>(players, 1);
    }

    /// Network thread: everything that waits goes to its connections.
    void SendAll()
    {
        while (SendOne() > 0) {
        }
    }

private:
    /// Network thread: what waits goes to its connections in portions, between which these get on with it.
    void SendSome()
    {
        constexpr std::size_t Portion = 65536;
        for (std::size_t sent = 0; sent < Portion;) {
            const std::size_t bytes = SendOne();
            if (bytes == 0)
                break;
            sent += bytes * m_players; // which this thread alone changes
        }
        {
            const std::scoped_lock lock(m_mutex);
            m_scheduled = !m_messages.empty();
            if (m_scheduled)
                asio::post(m_io, [this] { SendSome(); });
        }
        CheckCongestion();
    }

    /// Returns the message's bytes, 1 at least; 0 where none waits.
    std::size_t SendOne()
    {
        const std::optional<Outgoing> one = Next();
        if (!one)
            return 0;
        // The program cannot know who has left a moment ago: what cannot be sent any more is dropped.
        (void)m_sockets.Machine().Send(one->From, one->To, one->Guaranteed, one->Content);
        return std::max<std::size_t>(one->Content.size(), 1);
    }

    std::optional<Outgoing> Next()
    {
        const std::scoped_lock lock(m_mutex);
        if (m_messages.empty())
            return std::nullopt;
        Outgoing one = std::move(m_messages.front());
        m_messages.pop_front();
        m_bytes -= one.Content.size();
        return one;
    }

    void CheckCongestion()
    {
        constexpr Millis Soon{2};
        const bool congested = m_sockets.Congested();
        {
            const std::scoped_lock lock(m_mutex);
            m_congested = congested;
        }
        if (!congested)
            return;
        m_recheck.expires_after(Soon);
        m_recheck.async_wait([this](asio::error_code error) {
            if (!error)
                CheckCongestion();
        });
    }

    asio::io_context& m_io;
    PeerSockets& m_sockets;
    asio::steady_timer m_recheck;
    mutable std::mutex m_mutex;
    std::deque<Outgoing> m_messages;
    std::size_t m_bytes = 0;
    std::size_t m_players = 1; ///< in the session, to each of which a message may go by itself
    bool m_scheduled = false;
    bool m_congested = false;
};

class PeerNetwork::Impl final : public PeerSockets::Listener {
public:
    explicit Impl(const DirectPlayOptions& options)
        : Options(options),
          Queue(options.QueueShare),
          m_work(m_io.get_executor()),
          Sockets(m_io, options, Queue, *this),
          Sending(m_io, Sockets),
          m_leaving(m_io)
    {
    }
    ~Impl() override
    {
        m_io.stop();
        if (m_thread.joinable())
            m_thread.join();
    }
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;

    void Start()
    {
        m_thread = std::thread([this] { m_io.run(); });
    }

    void Post(std::function<void()> work) { asio::post(m_io, std::move(work)); }

    void RunAndWait(const std::function<void()>& work)
    {
        std::promise<void> done;
        Post([&] {
            Sending.SendAll(); // what was said before
            work();
            OnChanged(Sockets.Machine());
            done.set_value();
        });
        done.get_future().wait();
    }

    void OnRequestDone(Result<WireId> result) override
    {
        const std::scoped_lock lock(m_mutex);
        m_result = std::move(result);
        m_changed.notify_all();
    }

    void OnChanged(PeerMachine& machine) override
    {
        Members.Update(machine);
        Sending.SetPlayers(machine.Table().Players().size());
    }

    Result<WireId> Request(const Work& start, const std::function<bool()>& whileWaiting)
    {
        Post([this, start] {
            Sending.SendAll();
            start(Sockets.Machine(), Sockets.Now());
        });
        if (!WaitForResult(whileWaiting))
            Post([this] { Sockets.Machine().CancelRequest(); });
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_result.has_value(); });
        Result<WireId> result = std::move(*m_result);
        m_result.reset();
        lock.unlock();
        RunAndWait([] {}); // the picture of the session that goes with the result
        return result;
    }

    /// Waits on the network thread's side until the goodbyes are sent.
    void AwaitSent(const std::shared_ptr<std::promise<void>>& done, Millis deadline)
    {
        constexpr Millis Soon{5};
        if (Sockets.AllSent() || Sockets.Now() >= deadline)
            return done->set_value();
        m_leaving.expires_after(Soon);
        m_leaving.async_wait([this, done, deadline](asio::error_code) { AwaitSent(done, deadline); });
    }

    void Leave()
    {
        RunAndWait([this] { Sockets.Machine().Leave(); });
        auto done = std::make_shared<std::promise<void>>();
        Post([this, done] { AwaitSent(done, Sockets.Now() + Options.Linger); });
        done->get_future().wait();
    }

    DirectPlayOptions Options;
    MessageQueue Queue;
    Roster Members;

private:
    /// False when the wait was left before there was a result.
    bool WaitForResult(const std::function<bool()>& whileWaiting)
    {
        constexpr Millis Step{50};
        std::unique_lock lock(m_mutex);
        while (!m_changed.wait_for(lock, Step, [&] { return m_result.has_value(); })) {
            if (!whileWaiting)
                continue;
            lock.unlock();
            const bool goOn = whileWaiting();
            lock.lock();
            if (!goOn)
                return false;
        }
        return true;
    }

    asio::io_context m_io;
    asio::executor_work_guard<asio::io_context::executor_type> m_work;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::optional<Result<WireId>> m_result;

public:
    PeerSockets Sockets;
    SendQueue Sending;
    unsigned Taken = 0; // of the program's thread alone

private:
    asio::steady_timer m_leaving;
    std::thread m_thread;
};

PeerNetwork::PeerNetwork(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}

PeerNetwork::~PeerNetwork() = default;

Result<std::unique_ptr<PeerNetwork>> PeerNetwork::Start(const DirectPlayOptions& options)
{
    auto impl = std::make_unique<Impl>(options);
    if (auto opened = impl->Sockets.Open(); !opened)
        return opened.error();
    impl->Start();
    return std::unique_ptr<PeerNetwork>(new PeerNetwork(std::move(impl)));
}

void PeerNetwork::Run(const Work& work)
{
    m_impl->RunAndWait([&] { work(m_impl->Sockets.Machine(), m_impl->Sockets.Now()); });
}

Result<WireId> PeerNetwork::Request(const Work& start, const std::function<bool()>& whileWaiting)
{
    return m_impl->Request(start, whileWaiting);
}

bool PeerNetwork::Send(WireId from, WireId to, bool guaranteed, Bytes content)
{
    return m_impl->Sending.Push({from, to, guaranteed, std::move(content)});
}

bool PeerNetwork::Congested() const
{
    return m_impl->Sending.Congested();
}

void PeerNetwork::Leave()
{
    m_impl->Leave();
}

const Roster& PeerNetwork::Members() const
{
    return m_impl->Members;
}

MessageQueue& PeerNetwork::Queue()
{
    return m_impl->Queue;
}

void PeerNetwork::OnTaken()
{
    constexpr unsigned Often = 16; // the network looks by itself, but only every few milliseconds
    if (++m_impl->Taken % Often == 0)
        m_impl->Post([impl = m_impl.get()] { impl->Sockets.ResumeReading(); });
}

Result<SocketAddress> PeerNetwork::EnumerationAddress()
{
    Result<SocketAddress> address = SocketAddress{};
    m_impl->RunAndWait([&] { address = m_impl->Sockets.EnumerationAddress(); });
    return address;
}

PacketCounters PeerNetwork::Counters()
{
    PacketCounters counters;
    Run([&](PeerMachine& machine, Millis) { counters = machine.Counters(); });
    return counters;
}
} // namespace corvane::directplay
