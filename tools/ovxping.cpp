// Tells on site whether a server answers, and how fast: connects, greets, runs transactions one after the
// other and prints their rate and how long they took.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "automation/error.h"
#include "serverlink/asio_loop.h"
#include "serverlink/asio_socket.h"
#include "serverlink/fComm.h"
#include "shell/strings.h"
#include "tools/arguments.h"

namespace {

constexpr const char* kUsage =
    "usage: ovxping HOST PORT [OPTION VALUE]...\n"
    "\n"
    "Connects to a server, greets it, runs transactions one after the other and prints how long they took.\n"
    "\n"
    "  --count N           transactions (100)\n"
    "  --size BYTES        argument of each, 0 for none (0)\n"
    "  --command N         command of each (1)\n"
    "  --parameter N       its parameter (0)\n"
    "  --type N            type of the argument (1)\n"
    "  --greeting TEXT     what the server is greeted with (\"\")\n"
    "  --greeting-type N   type of the greeting (0)\n"
    "  --timeout SECONDS   how long an answer may take (60)\n"
    "\n"
    "Ends with 0 when every transaction was answered, 1 when one was not, 2 when the command line is wrong.\n"
    "The environment variable KVTARN_LINK_TRACE names a file that takes a trace; of 8 MiB it becomes "
    "<file>.old.\n";

struct Request {
  std::string host;
  long port = 0;
  long count = 0;
  std::size_t size = 0;
  std::int16_t command = 0;
  std::int16_t parameter = 0;
  std::int16_t type = 0;
  std::string greeting;
  std::int16_t greetingType = 0;
  std::int16_t timeout = 0;
};

Request Read(int count, char** words) {
  const tools::Arguments arguments(count, words,
                                   {"--count", "--size", "--command", "--parameter", "--type", "--greeting",
                                    "--greeting-type", "--timeout"});
  if (arguments.Words().size() != 2) throw base::Error("A host and a port are needed.");
  const auto shortNumber = [&](const char* option, long usual) {
    return static_cast<std::int16_t>(arguments.Number(option, usual, 0, 32767));
  };
  Request request;
  request.host = arguments.Words()[0];
  request.port = tools::Arguments::Whole("The port", arguments.Words()[1], 1, 65535);
  request.count = arguments.Number("--count", 100, 1, 100'000'000);
  request.size = static_cast<std::size_t>(arguments.Number("--size", 0, 0, 64 << 20));
  request.command = shortNumber("--command", 1);
  request.parameter = shortNumber("--parameter", 0);
  request.type = shortNumber("--type", 1);
  request.greeting = arguments.Text("--greeting", "");
  request.greetingType = shortNumber("--greeting-type", 0);
  request.timeout = shortNumber("--timeout", 60);
  return request;
}

/// Notices of the client, without anybody to answer them.
class ConsolePrompts : public ui::Prompts {
 public:
  ui::Answer Ask(const ui::Prompt& prompt) override {
    std::fprintf(stderr, "%s\n", prompt.text.c_str());
    return ui::Answer::kOk;
  }
};

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration time) { return std::chrono::duration<double, std::milli>(time).count(); }

void Print(const Request& request, std::vector<Clock::duration> times, Clock::duration whole) {
  std::ranges::sort(times);
  // The time that so many of a hundred transactions stayed within.
  const auto within = [&](std::size_t percent) {
    return Milliseconds(times[(times.size() * percent + 99) / 100 - 1]);
  };
  const double seconds = Milliseconds(whole) / 1000;
  std::printf("%zu transactions of %zu bytes in %.3f s: %.0f a second\n", times.size(), request.size, seconds,
              static_cast<double>(times.size()) / seconds);
  std::printf("milliseconds: least %.3f, 50 %% %.3f, 90 %% %.3f, 99 %% %.3f, most %.3f\n",
              Milliseconds(times.front()), within(50), within(90), within(99), Milliseconds(times.back()));
}

void Run(const Request& request) {
  serverlink::AsioSocket socket;
  serverlink::AsioLoop loop;
  ConsolePrompts prompts;
  serverlink::fComm comm({.socket = socket,
                          .loop = loop,
                          .prompts = prompts,
                          .text = shell::ReplacePlaceholders,
                          .title = "ovxping",
                          .trace = serverlink::TraceFromEnvironment()});
  comm.NetworkIpAddress = request.host;
  comm.setTransactionTimeout(request.timeout);

  const auto start = Clock::now();
  comm.ovpConnect(request.host, static_cast<std::int32_t>(request.port), request.greeting,
                  request.greetingType);
  std::printf("connected and greeted %s, port %ld, in %.3f ms\n", request.host.c_str(), request.port,
              Milliseconds(Clock::now() - start));

  std::vector<Clock::duration> times;
  times.reserve(static_cast<std::size_t>(request.count));
  const auto first = Clock::now();
  for (long i = 0; i < request.count; ++i) {
    const auto before = Clock::now();
    std::optional<std::int16_t> type;
    if (request.size > 0) {
      comm.ovpSetArgument(serverlink::Bytes(request.size, 0x5A));
      type = request.type;
    }
    try {
      comm.ovpTransaction(request.command, request.parameter, type, "");
    } catch (const automation::Error& error) {
      if (!times.empty()) Print(request, times, Clock::now() - first);
      throw base::Error("Transaction " + std::to_string(i + 1) + " failed: " + error.Description());
    }
    times.push_back(Clock::now() - before);
  }
  Print(request, std::move(times), Clock::now() - first);
}

}  // namespace

int main(int count, char** words) { return tools::Main(count, words, kUsage, Read, Run); }
