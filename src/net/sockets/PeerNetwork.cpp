#include "net/sockets/PeerNetwork.h"

#include "net/sockets/PeerSockets.h"

#include <asio/executor_work_guard.hpp>
#include <asio/post.hpp>

#include <condition_variable>
#include <future>
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
            asio::post(m_io, [this] { SendAll(); });
        return true;
    }

    /// Program's thread: whether much waits already, here or for a machine that does read.
    [[nodiscard]] bool Congested() const
    {
        constexpr std::size_t Enough = 4194304;
        const std::scoped_lock lock(m_mutex);
        return m_congested || m_bytes > Enough;
    }

    /// Network thread: everything that waits goes to its connections.
    void SendAll()
    {
        std::vector<Outgoing> messages;
        {
            const std::scoped_lock lock(m_mutex);
            messages = std::exchange(m_messages, {});
            m_bytes = 0;
            m_scheduled = false;
        }
        // The program cannot know who has left a moment ago: what cannot be sent any more is dropped.
        for (const Outgoing& one : messages)
            (void)m_sockets.Machine().Send(one.From, one.To, one.Guaranteed, one.Content);
        CheckCongestion();
    }

private:
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
    std::vector<Outgoing> m_messages;
    std::size_t m_bytes = 0;
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

    void OnChanged(PeerMachine& machine) override { Members.Update(machine); }

    Result<WireId> Request(const Work& start, const std::function<bool()>& whileWaiting)
    {
        Post([this, start] { start(Sockets.Machine(), Sockets.Now()); });
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
        RunAndWait([this] {
            Sending.SendAll();
            Sockets.Machine().Leave();
        });
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
