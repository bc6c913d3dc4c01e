// The server link: the protocol client against the plainest code that does the same over the same connection,
// against another library's client, and its reassembly against copying.
#include "link_bench.h"

#include <modbus/modbus.h>

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>

#include "contest.h"
#include "link_peer.h"
#include "serverlink/asio_loop.h"
#include "serverlink/asio_socket.h"
#include "serverlink/fComm.h"
#include "shell/strings.h"
#include "simulator/protocol/frame.h"
#include "tests/core/byte_socket.h"
#include "tests/core/stand_ins.h"

namespace {

using bench::Contest;
using serverlink::Bytes;

void Must(bool held) {
  if (!held) throw std::runtime_error("An exchange of a benchmark failed.");
}

constexpr std::size_t kHeader = simulator::kFullHeader;
constexpr std::size_t kKilobyte = 1024;  // a whole frame
constexpr std::uint16_t kLargeCommand = 2;

struct Client {
  serverlink::AsioSocket socket;
  serverlink::AsioLoop loop;
  tests::ScriptedPrompts prompts;
  serverlink::fComm comm{{.socket = socket,
                          .loop = loop,
                          .prompts = prompts,
                          .text = shell::ReplacePlaceholders,
                          .title = "bench"}};

  Client() { comm.ovpConnect("127.0.0.1", bench::ProtocolPeer().Port(), "", 0); }
};

/// A connection that was greeted and a request of `size` bytes.
struct Raw : bench::RawClient {
  Bytes request;
  explicit Raw(std::size_t size, std::uint16_t command = 1) : RawClient(bench::ProtocolPeer().Port()) {
    const auto greeting = simulator::WriteFrame({.parameter = 1}, simulator::kGreetingHeader);
    std::array<std::uint8_t, 14> answer;
    bench::SendAll(Socket(), greeting.data(), greeting.size());
    bench::ReceiveAll(Socket(), answer.data(), answer.size());
    request = simulator::WriteFrame({.command = command, .argument = Bytes(size - kHeader)}, kHeader);
  }
};

void AddExchanges(Contest& contest) {
  for (const std::size_t size : {kHeader, kKilobyte}) {
    contest.Add("raw " + std::to_string(size),
                [raw = std::make_shared<Raw>(size), argument = Bytes(size - kHeader, 7),
                 answer = Bytes(size)]() mutable {
                  std::ranges::copy(argument, raw->request.begin() + kHeader);
                  bench::SendAll(raw->Socket(), raw->request.data(), raw->request.size());
                  Must(bench::ReceiveAll(raw->Socket(), answer.data(), answer.size()));
                });
  }
  const auto client = std::make_shared<Client>();
  contest.Add("link 24", [client] { client->comm.ovpTransaction(1, 0, std::nullopt, ""); });
  contest.Add("link 1024", [client, argument = Bytes(kKilobyte - kHeader, 7)] {
    client->comm.ovpSetArgument(argument);
    client->comm.ovpTransaction(1, 0, std::int16_t{1}, "");
    Must(client->comm.ovpGetRspArgVal().size() == argument.size());
  });

  const std::shared_ptr<modbus_t> modbus(modbus_new_tcp("127.0.0.1", bench::ModbusPeer().Port()),
                                         [](modbus_t* context) {
                                           modbus_close(context);
                                           modbus_free(context);
                                         });
  Must(modbus_connect(modbus.get()) == 0);
  contest.Add("modbus", [modbus] {
    std::array<std::uint16_t, 7> registers;
    Must(modbus_read_registers(modbus.get(), 0, 7, registers.data()) == 7);
  });
}

// One connection may be twice as slow as the next, and stays so, whoever reads it and however: the time is
// the sender's. So every round has new connections, and the fastest of three on either side counts.
const std::vector<std::string> kLargeLinks = {"link large 1", "link large 2", "link large 3"};
const std::vector<std::string> kLargeRaws = {"raw large", "raw large, waiting for all",
                                             "raw large, 64 KiB at a time"};

/// One large answer by reads of at most `most` bytes, in memory that all of these share.
void AddRawRead(Contest& contest, const std::string& name, std::size_t most, int flags) {
  static Bytes answer(kHeader + bench::kLargeAnswer);
  const auto raw = std::make_shared<std::optional<Raw>>();
  const auto read = [raw, most, flags] {
    bench::SendAll((*raw)->Socket(), (*raw)->request.data(), kHeader);
    for (std::size_t count = 0; count < answer.size();) {
      const ssize_t more =
          recv((*raw)->Socket(), answer.data() + count, std::min(most, answer.size() - count), flags);
      Must(more > 0);
      count += static_cast<std::size_t>(more);
    }
  };
  contest.Add(name, read, {}, [raw] { raw->emplace(kHeader, kLargeCommand); });
}

void AddLargeAnswers(Contest& contest) {
  AddRawRead(contest, kLargeRaws[0], 2 << 20, 0);
  AddRawRead(contest, kLargeRaws[1], 2 << 20, MSG_WAITALL);
  AddRawRead(contest, kLargeRaws[2], 1 << 16, 0);
  for (const std::string& name : kLargeLinks) {
    const auto client = std::make_shared<std::optional<Client>>();
    const auto read = [client] {
      (*client)->comm.ovpTransaction(kLargeCommand, 0, std::nullopt, "");
      Must((*client)->comm.ovpGetRspArgVal().size() == bench::kLargeAnswer);
    };
    contest.Add(name, read, {}, [client] { client->emplace(); });
  }
}

/// Answers of 1 KiB as they come in chunks of at most `most` bytes; a header is never cut.
struct Stream {
  static constexpr std::int16_t kFrames = 32;
  Bytes bytes;
  std::vector<std::span<const std::uint8_t>> chunks;

  explicit Stream(std::size_t most) {
    for (std::int16_t i = 0; i < kFrames; ++i) {
      const auto frame = simulator::WriteFrame(
          {.sequence = static_cast<std::uint16_t>(7018 + i), .argument = Bytes(kKilobyte - kHeader, 7)},
          kHeader);
      bytes.insert(bytes.end(), frame.begin(), frame.end());
    }
    const std::span<const std::uint8_t> all(bytes);
    for (std::size_t start = 0, end; start < bytes.size(); start = end) {
      end = std::min(start + most, bytes.size());
      const std::size_t intoFrame = end % kKilobyte;
      if (intoFrame < kHeader) end -= intoFrame;
      if (end <= start) end = start + kHeader;
      chunks.push_back(all.subspan(start, end - start));
    }
  }
};

void AddReassembly(Contest& contest, std::size_t most) {
  const auto stream = std::make_shared<Stream>(most);
  const std::string size = std::to_string(most);
  const auto answers = std::make_shared<tests::Awaiting>();
  contest.Add(
      "reassemble " + size,
      [stream, answers] {
        for (const auto chunk : stream->chunks) answers->Arrive(chunk);
      },
      [answers] { answers->Await(Stream::kFrames); });

  // The plainest code that reads the same connection: every chunk into a buffer, and from there to its
  // answer.
  const auto collected = std::make_shared<std::vector<Bytes>>();
  contest.Add(
      "collect " + size,
      [stream, collected, socket = tests::ByteSocket(), buffer = Bytes(4096)]() mutable {
        serverlink::Socket& connection = socket;
        std::size_t place = 0;
        for (const auto chunk : stream->chunks) {
          socket.Arrive(chunk);
          const auto count = static_cast<std::ptrdiff_t>(connection.GetData(buffer));
          Bytes& answer = (*collected)[place / kKilobyte];
          answer.insert(answer.end(), buffer.begin(), buffer.begin() + count);
          place += chunk.size();
        }
      },
      [collected] {
        collected->clear();
        collected->resize(Stream::kFrames);
      });
}

struct Promise {
  const char* what;
  std::vector<std::string> measured;  // the fastest of these
  std::vector<std::string> against;   // and of these
  double bench::Times::*clock;
  double least;  // how many times as fast it must be
};

constexpr auto kReal = &bench::Times::real;

/// A blocking exchange without any client is 1.27 to 1.29 times as fast as this library's.
constexpr double kOfLibmodbus = 1.2;

const Promise kExchanges[] = {
    {"24-byte frames / raw blocking exchange", {"link 24"}, {"raw 24"}, kReal, 0.95},
    {"1 KiB frames / raw blocking exchange", {"link 1024"}, {"raw 1024"}, kReal, 0.95},
    {"24-byte frames / libmodbus, 23 bytes", {"link 24"}, {"modbus"}, kReal, kOfLibmodbus},
    {"the same, processor time", {"link 24"}, {"modbus"}, &bench::Times::cpu, 1 / 0.75},
    {"answer of 1 MiB / best raw read", kLargeLinks, kLargeRaws, kReal, 0.8},
};

const Promise kReassembly[] = {
    {"1 KiB answers in chunks of 1,460 / reading and copying",
     {"reassemble 1460"},
     {"collect 1460"},
     kReal,
     0.8},
    {"1 KiB answers in chunks of 7 / reading and copying", {"reassemble 7"}, {"collect 7"}, kReal, 0.45},
    {"1 KiB answers in chunks of 1 / reading and copying", {"reassemble 1"}, {"collect 1"}, kReal, 0.45},
};

/// Answers how many of the promises were missed.
int Print(const Contest& contest, std::span<const Promise> promises) {
  int missed = 0;
  for (const Promise& promise : promises) {
    const double speed = contest.Speed(promise.measured, promise.against, promise.clock);
    std::printf("%-58s %7.0f ns %8.2f %8.2f%s\n", promise.what,
                contest.Median(promise.measured.front(), promise.clock), speed, promise.least,
                speed < promise.least ? "  MISSED" : "");
    missed += speed < promise.least;
  }
  return missed;
}

}  // namespace

namespace bench {

int PrintLink() {
  Contest exchanges;
  AddExchanges(exchanges);
  AddLargeAnswers(exchanges);
  exchanges.Run();
  Contest reassembly;
  for (const std::size_t most : {1460, 7, 1}) AddReassembly(reassembly, most);
  reassembly.Run();

  std::printf("\n%-58s %10s %8s %8s\n", "server link, medians of 15 rounds", "time", "speed", "at least");
  return Print(exchanges, kExchanges) + Print(reassembly, kReassembly);
}

}  // namespace bench
