#include "core/GreatCircle.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/net/LoopbackAddress.h"
#include "tests/traffic/TrafficPlay.h"
#include "traffic/feeds/AircraftFeed.h"
#include "traffic/out/LineServer.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>

extern char** environ;

namespace corvane {
namespace {
/// A receiver program without a receiver: what is said at its raw input it has heard.
class ReceiverProgram {
public:
    ReceiverProgram(const std::string& address, const std::string& folder)
    {
        std::vector<std::string> words{"dump1090-mutability",
                                       "--net-only",
                                       "--quiet",
                                       "--net-bind-address",
                                       address,
                                       "--net-ri-port",
                                       "30001",
                                       "--net-ro-port",
                                       "0",
                                       "--net-sbs-port",
                                       "30003",
                                       "--net-bi-port",
                                       "0",
                                       "--net-bo-port",
                                       "0",
                                       "--lat",
                                       "52.3",
                                       "--lon",
                                       "4.76",
                                       "--write-json",
                                       folder};
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (posix_spawnp(&m_process, arguments.front(), nullptr, nullptr, arguments.data(), environ) != 0)
            m_process = 0;
    }
    ReceiverProgram(const ReceiverProgram&) = delete;
    ReceiverProgram& operator=(const ReceiverProgram&) = delete;
    ReceiverProgram(ReceiverProgram&&) = delete;
    ReceiverProgram& operator=(ReceiverProgram&&) = delete;
    ~ReceiverProgram()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGTERM);
        waitpid(m_process, nullptr, 0);
    }
    [[nodiscard]] bool Runs() const { return m_process > 0; }

private:
    pid_t m_process = 0;
};

/// Says the frames of two aircraft at the raw input, again and again: in the air with its positions of both kinds and
/// its callsign, and taxiing.
class Antenna {
public:
    explicit Antenna(const std::string& address) : m_place(asio::ip::make_address(address), 30001) {}

    void Transmit()
    {
        static constexpr std::array Frames{"*8D40621D58C382D690C8AC2863A7;\n", "*8D40621D58C386435CC412692AD6;\n",
                                           "*8D40621D202CC371C32CE02E065C;\n", "*8C4841753AAB238733C8CD4020B1;\n",
                                           "*8C4841753A8A35323FAEBDAC702D;\n"};
        asio::error_code error;
        if (!m_connected) {
            m_socket = asio::ip::tcp::socket(m_io);
            m_socket.connect(m_place, error);
            m_connected = !error;
        }
        for (const char* const frame : Frames)
            if (m_connected)
                asio::write(m_socket, asio::buffer(std::string(frame)), error);
        m_connected = m_connected && !error;
    }

private:
    asio::io_context m_io;
    asio::ip::tcp::endpoint m_place;
    asio::ip::tcp::socket m_socket{m_io};
    bool m_connected = false;
};

TEST(ReceiverPrograms, AreReadAtTheirPortAndInTheirFile)
{
    if (std::system("command -v dump1090-mutability >/dev/null") != 0)
        GTEST_SKIP() << "dump1090-mutability is not installed";
    const std::string address = test::LoopbackAddress(77);
    const TemporaryFolder folder;
    const ReceiverProgram program(address, folder.Path().string());
    ASSERT_TRUE(program.Runs());
    Antenna antenna(address);
    const NearestTrafficOptions nearest{{52.3, 4.76}, 300, 100, {}};
    const auto port = OpenAircraftFeed({FeedKind::BaseStation, address, 30003, ""}, nearest);
    const auto file =
        OpenAircraftFeed({FeedKind::JsonFile, "", 0, (folder.Path() / "aircraft.json").string()}, nearest);
    test::Sky byPort;
    test::Sky byFile;
    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [start] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
    };
    while (elapsed() < 30000 && (byPort.Names().size() < 2 || byFile.Names().size() < 2)) {
        antenna.Transmit();
        byPort.Take(port->Take(elapsed()));
        byFile.Take(file->Take(elapsed()));
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    for (const auto* sky : {&byPort, &byFile}) {
        const auto* const flying = sky->Find("KLM1023");
        ASSERT_NE(flying, nullptr) << (sky == &byPort ? "port" : "file");
        EXPECT_LT(RangeNm(flying->Report.Position, {52.2572, 3.91937}), 0.01); // as both frames say
        EXPECT_EQ(flying->Report.AltitudeFt, 38000);
        const auto* const taxiing = sky->Find("484175");
        ASSERT_NE(taxiing, nullptr);
        EXPECT_LT(RangeNm(taxiing->Report.Position, {52.3206, 4.7347}), 0.2);
        EXPECT_EQ(taxiing->Report.AltitudeFt, 0);
        EXPECT_LE(taxiing->Report.GroundSpeedKt, 19);
    }
}
} // namespace
} // namespace corvane
