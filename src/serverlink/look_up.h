// Finds the addresses of a host. The system's look-up has no time limit and cannot be called off, so each
// runs on a thread of its own that is left behind when nobody waits for it any more.
#pragma once

#include <functional>
#include <future>
#include <string>
#include <vector>

#include "serverlink/asio.h"

namespace serverlink {

struct Addresses {
  asio::error_code error;
  std::vector<asio::ip::tcp::endpoint> endpoints;
};

/// How a name is looked up; may take as long as it likes and runs on another thread.
using AskName = std::function<Addresses(const std::string& host, std::uint16_t port)>;

/// Asks the system.
Addresses AskSystem(const std::string& host, std::uint16_t port);

/// The addresses to come; at once for an address in numbers. Throws std::system_error when no thread can be
/// started.
std::future<Addresses> LookUp(const AskName& ask, const std::string& host, std::uint16_t port);

}  // namespace serverlink
