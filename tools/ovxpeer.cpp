// The stand-in server of the binary protocol as a program, for trying the client by hand.
#include <cstdio>
#include <string>

#include "serverlink/asio.h"
#include "simulator/protocol/server.h"
#include "tools/arguments.h"

namespace {

std::string Usage() {
  return "usage: ovxpeer PORT [OPTION VALUE]...\n"
         "\n"
         "Serves the binary protocol until it is interrupted; port 0 takes a free one.\n"
         "\n"
         "  --mode NAME         how requests are answered (echo): " +
         simulator::ModeNames() +
         "\n  --answer TEXT       answer to the greeting (Ok)\n"
         "  --piece BYTES       pieces of the chunked mode, surplus of the surplus mode,\n"
         "                      requests that the late mode lets pile up (7)\n"
         "  --pause MS          between the pieces of the chunked mode, before the surplus (0)\n"
         "  --offset BYTES      of an answer, after which silence or end begins (0)\n"
         "  --answer-size BYTES argument of every answer, instead of what was sent\n"
         "  --address ADDRESS   where to listen (127.0.0.1)\n";
}

struct Service {
  simulator::ServerOptions options;
  std::uint16_t port = 0;
  std::string address;
};

Service Read(int count, char** words) {
  const tools::Arguments arguments(
      count, words, {"--mode", "--answer", "--piece", "--pause", "--offset", "--answer-size", "--address"});
  if (arguments.Words().size() != 1) throw base::Error("A port is needed.");
  Service service;
  service.port =
      static_cast<std::uint16_t>(tools::Arguments::Whole("The port", arguments.Words()[0], 0, 65535));
  service.address = arguments.Text("--address", "127.0.0.1");
  auto& options = service.options;
  const std::string mode = arguments.Text("--mode", "echo");
  const auto found = simulator::ModeByName(mode);
  if (!found) throw base::Error("There is no mode \"" + mode + "\".");
  options.mode = *found;
  options.greetingAnswer = arguments.Text("--answer", options.greetingAnswer);
  constexpr long kMost = 64 << 20;
  options.piece = static_cast<std::size_t>(arguments.Number("--piece", 7, 1, kMost));
  options.pause = std::chrono::milliseconds(arguments.Number("--pause", 0, 0, 3'600'000));
  options.offset = static_cast<std::size_t>(arguments.Number("--offset", 0, 0, kMost));
  const long answer = arguments.Number("--answer-size", -1, 0, kMost);
  if (answer >= 0) options.answerBytes = static_cast<std::size_t>(answer);
  return service;
}

void Serve(const Service& service) {
  simulator::ProtocolServer server(service.options, service.port, service.address);
  server.KeepNoRequests();
  std::printf("serving at %s, port %u\n", service.address.c_str(), unsigned{server.Port()});
  std::fflush(stdout);
  asio::io_context io;
  asio::signal_set signals(io, SIGINT, SIGTERM);
  signals.async_wait([](const asio::error_code&, int) {});
  io.run();
}

}  // namespace

int main(int count, char** words) { return tools::Main(count, words, Usage(), Read, Serve); }
