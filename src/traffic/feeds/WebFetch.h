#pragma once

#include "core/Result.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace corvane {
/// A page of a web server, in plain HTTP. Texts are ASCII.
struct WebPage {
    std::string Host;
    std::uint16_t Port = 80;
    std::string Path = "/";
    std::string LocalAddress = {}; ///< of this machine, that it is fetched from; empty: any
};

/// Fetches a page. Waits for the server up to ten seconds in all, and no longer than stop is false. A page of more than
/// mostBytes, a status other than 200 and whatever else a server may do are Errors that name the page; what it sends is
/// never held beyond that size.
Result<std::string> FetchWebPage(const WebPage& page, std::size_t mostBytes, const std::atomic<bool>& stop);
} // namespace corvane
