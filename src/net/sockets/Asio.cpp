// The library's functions, compiled once for all files that use its sockets.
#include <asio/impl/src.hpp>
