#include "serverlink/look_up.h"

#include <thread>
#include <utility>

namespace serverlink {

using asio::ip::tcp;

Addresses AskSystem(const std::string& host, std::uint16_t port) {
  asio::io_context io;
  Addresses found;
  for (const auto& entry : tcp::resolver(io).resolve(host, std::to_string(port), found.error)) {
    found.endpoints.push_back(entry.endpoint());
  }
  return found;
}

std::future<Addresses> LookUp(const AskName& ask, const std::string& host, std::uint16_t port) {
  std::promise<Addresses> promise;
  auto future = promise.get_future();
  asio::error_code isName;
  const auto address = asio::ip::make_address(host, isName);
  if (!isName) {
    promise.set_value({{}, {tcp::endpoint(address, port)}});
    return future;
  }
  std::thread([ask, host, port, promise = std::move(promise)]() mutable {
    promise.set_value(ask(host, port));
  }).detach();
  return future;
}

}  // namespace serverlink
