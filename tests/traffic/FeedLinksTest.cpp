#include "tests/core/TemporaryFolder.h"
#include "tests/traffic/TrafficPlay.h"
#include "traffic/feeds/AircraftFeed.h"
#include "traffic/feeds/WebFetch.h"
#include "traffic/out/LineServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <thread>

namespace corvane {
namespace {
using test::Sky;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string OneLine = "MSG,3,1,1,00000A,1,,,,,KLM1,1000,,,52,4,,,,,,0\r\n";
const NearestTrafficOptions Around{{52, 4}, 300, 100, {}};

/// Repeats work until a condition holds, for some seconds at most.
bool Until(const std::function<bool()>& holds, const std::function<void()>& work)
{
    for (int i = 0; i < 2000; ++i) {
        work();
        if (holds())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

std::unique_ptr<LineServer> ServerAt(std::uint16_t port)
{
    auto server = LineServer::Open("127.0.0.1", port);
    EXPECT_TRUE(server) << (server ? "" : server.error().Text());
    return server ? *std::move(server) : nullptr;
}

TEST(FeedLinks, AStreamThatBreaksIsOpenedAgain)
{
    auto server = ServerAt(0);
    const std::uint16_t port = server->Port();
    const auto feed = OpenAircraftFeed({FeedKind::BaseStation, "127.0.0.1", port, ""}, Around);
    std::int64_t now = 0;
    Sky sky;
    const auto work = [&] {
        if (server)
            server->Send(server->Accept() ? OneLine : "");
        sky.Take(feed->Take(now));
    };
    ASSERT_TRUE(Until([&] { return sky.Find("KLM1") != nullptr; }, work));
    EXPECT_THAT(sky.Notices, IsEmpty());
    EXPECT_FALSE(feed->CanBeTalkedTo());

    server.reset();
    now = 20000;
    ASSERT_TRUE(Until([&] { return !sky.Notices.empty(); }, work));
    EXPECT_THAT(sky.Notices.front(), HasSubstr("trying again"));
    EXPECT_THAT(feed->Health(), HasSubstr(sky.Notices.front().substr(0, sky.Notices.front().find(';')).substr(17)));
    for (const std::int64_t later : {20999, 21000, 23000, 27000}) { // it is refused
        now = later;
        for (int i = 0; i < 20; ++i) {
            work();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    EXPECT_EQ(sky.Notices.size(), 1U); // told once
    EXPECT_NE(sky.Find("KLM1"), nullptr);
    server = ServerAt(port);
    now = 58000;
    ASSERT_TRUE(Until([&] { return sky.Notices.size() == 2; }, work));
    EXPECT_THAT(sky.Notices.back(), HasSubstr("is there again"));
    EXPECT_NE(sky.Find("KLM1"), nullptr);
    now = 61000; // its minute began anew at 58 s
    ASSERT_TRUE(Until([&] { return server->ReaderCount() == 1; }, work));
    work();
    EXPECT_NE(sky.Find("KLM1"), nullptr);
}

TEST(FeedLinks, AStreamComesFromTheAddressThatItIsBoundTo)
{
    const auto server = ServerAt(0);
    const auto heardFrom = [&](const char* localAddress) {
        FeedPlace place{FeedKind::BaseStation, "127.0.0.1", server->Port(), ""};
        place.LocalAddress = localAddress;
        const auto feed = OpenAircraftFeed(place, Around);
        Sky sky;
        const bool heard = Until([&] { return sky.Find("KLM1") != nullptr || !sky.Notices.empty(); },
                                 [&] {
                                     server->Send(server->Accept() ? OneLine : "");
                                     sky.Take(feed->Take(0));
                                 });
        return heard && sky.Notices.empty();
    };
    EXPECT_TRUE(heardFrom("127.0.0.5"));
    EXPECT_FALSE(heardFrom("192.0.2.1")) << "no address of this machine";
    EXPECT_FALSE(heardFrom("::1")) << "of another kind than the host's";
}

TEST(FeedLinks, AFileIsReadAgainAndAgain)
{
    const TemporaryFolder folder;
    const auto path = folder.Path() / "aircraft.json";
    const auto feed = OpenAircraftFeed({FeedKind::JsonFile, "", 0, path.string()}, Around);
    Sky sky;
    std::int64_t now = 0;
    const auto work = [&] { sky.Take(feed->Take(now)); };
    ASSERT_TRUE(Until([&] { return !sky.Notices.empty(); }, work));
    EXPECT_THAT(sky.Notices.front(), HasSubstr("aircraft.json: "));
    folder.Write("aircraft.json", std::string(R"({"now":1,"aircraft":[{"hex":"00000a","lat":52,"lon":4,"seen":0}]})"));
    ASSERT_TRUE(Until([&] { return sky.Find("00000A") != nullptr; }, work));
    EXPECT_THAT(sky.Notices.back(), HasSubstr("is there again"));
    folder.Write("aircraft.json", std::string(R"({"now":2,"aircraft":[]})"));
    ASSERT_TRUE(Until([&] { return sky.Find("00000A") == nullptr; }, work));
}

struct PageCase {
    const char* Name;
    const char* Answer;   ///< what the server says
    const char* Repeated; ///< and what it goes on saying, for ever
    const char* Got;      ///< the page, or why there is none
    bool Closes = true;
};
class WebPages : public testing::TestWithParam<PageCase> {};

/// Fetches from a server that says a row's text, whatever it is asked.
Result<std::string> FetchFrom(const PageCase& row)
{
    constexpr std::size_t Most = 1000;
    auto server = ServerAt(0);
    const std::uint16_t port = server->Port();
    const std::atomic<bool> stop = false;
    auto page = std::async(std::launch::async, [&stop, port] {
        return FetchWebPage({"127.0.0.1", port, "/a"}, Most, stop);
    });
    std::size_t said = 0;
    const auto ended = [&page] { return page.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready; };
    const std::string repeated(row.Repeated);
    while (!ended()) {
        if (server && server->Accept())
            server->Send(row.Answer);
        if (server && server->ReaderCount() > 0 && row.Closes)
            server.reset();
        if (server && !repeated.empty()) {
            std::string flood;
            while (flood.size() < 100000)
                flood += repeated;
            server->Send(flood);
            said += flood.size();
        }
    }
    EXPECT_LT(said, 20000000U); // it does not read on for as long as somebody speaks
    return page.get();
}

TEST_P(WebPages, AreFetchedWithinTheirLimits)
{
    const auto page = FetchFrom(GetParam());
    EXPECT_THAT(page ? *page : page.error().Why, HasSubstr(GetParam().Got));
}

INSTANTIATE_TEST_SUITE_P(
    FeedLinks, WebPages,
    testing::Values(PageCase{"Page", "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello", "", "hello"},
                    PageCase{"Missing", "HTTP/1.1 404 No\r\nContent-Length: 2\r\n\r\nno", "", "status 404"},
                    PageCase{"Elsewhere",
                             "HTTP/1.1 301 Go\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n", "",
                             "status 301"},
                    PageCase{"NoHttp", "220 mail.example\r\n", "", "cannot be read"},
                    PageCase{"EndlessPage", "HTTP/1.1 200 OK\r\n\r\n", "xxxxxxxx", "too large", false},
                    PageCase{"HugeLength", "HTTP/1.1 200 OK\r\nContent-Length: 99999999999999\r\n\r\n", "xxxxxxxx",
                             "too large", false},
                    PageCase{"EndlessChunk", "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nFFFFFFFF\r\n",
                             "xxxxxxxx", "a", false},
                    PageCase{"EndlessHeadLine", "HTTP/1.1 200 OK\r\nX: ", "xxxxxxxx", "cannot be read", false},
                    PageCase{"EndlessHead", "HTTP/1.1 200 OK\r\n", "X: y\r\n", "cannot be read", false},
                    PageCase{"EndlessStatus", "", "xxxxxxxx", "cannot be read", false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(WebPage, OfAServerThatSaysNothingIsGivenUp)
{
    auto server = ServerAt(0);
    std::atomic<bool> stop = false;
    auto page = std::async(std::launch::async, [&stop, port = server->Port()] {
        return FetchWebPage({"127.0.0.1", port, "/"}, 1000, stop);
    });
    EXPECT_EQ(page.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    stop = true;
    EXPECT_EQ(page.wait_for(std::chrono::seconds(5)), std::future_status::ready);
    EXPECT_FALSE(page.get());
}
} // namespace
} // namespace corvane
