#include "traffic/feeds/WebFetch.h"

namespace corvane {
Result<std::string> FetchWebPage(const WebPage& page, std::size_t /*mostBytes*/, const std::atomic<bool>& /*stop*/)
{
    return Fail("http://" + page.Host, "this program was built without the library that reads web pages");
}
} // namespace corvane
