#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "link.h"
#include "serverlink/asio_loop.h"

namespace {

using namespace std::chrono_literals;
using serverlink::Bytes;
using simulator::ServerMode;
using testing::HasSubstr;
using tests::Pattern;
using tests::Refusal;

struct ClientTest : testing::Test, tests::Link {
  std::chrono::milliseconds Took(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::ceil<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
  }
};

TEST_F(ClientTest, GreetsAndTakesTheAnswerApart) {
  EXPECT_TRUE(Connect());
  EXPECT_EQ(Echo({1, 2, 3}), (Bytes{1, 2, 3}));
  EXPECT_EQ(comm.ovpGetRspParam(), 2);
  EXPECT_EQ(comm.ovpGetRspArgTypeTransaction(*comm.Transaction("7019")), 3);
  EXPECT_EQ(comm.Transaction("07019"), nullptr);
  EXPECT_EQ(comm.Transaction("7018"), nullptr);  // the greeting is done with

  const auto requests = server.TakeRequests();
  ASSERT_EQ(requests.size(), 2u);
  EXPECT_EQ(requests[0].parameter, 1);
  EXPECT_EQ(requests[0].argumentType, 3);
  EXPECT_EQ(std::string(requests[0].argument.begin(), requests[0].argument.end()), "hello");
  EXPECT_THAT(traced, testing::IsSupersetOf({"Connection in", "Transaction in 7018", "Connection out normal",
                                             "Rx=7019", "Transaction out normal 7019",
                                             "Sending response argument 3"}));
}

TEST(Trace, KeepsTheLastLinesWithTheirTimeWithinTwiceItsLimit) {
  const std::string path = testing::TempDir() + "limited.trace";
  const auto old = path + ".old";
  for (const auto& file : {path, old}) std::filesystem::remove(file);
  for (int i = 0; i < 300; ++i) serverlink::TraceToFile(path, 1'000)("Rx=", i);
  const auto trace = serverlink::TraceToFile(path, 1'000);
  for (int i = 300; i < 600; ++i) trace("Rx=", i);
  std::vector<std::string> lines;
  for (const auto& file : {old, path}) {
    EXPECT_LE(std::filesystem::file_size(file), 1'000u);
    std::ifstream stream(file);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
  }
  ASSERT_GE(lines.size(), 15u);
  for (std::size_t i = 0; i < lines.size(); ++i)
    EXPECT_THAT(lines[i], testing::MatchesRegex("....-..-.. ..:..:..\\.... Rx=" +
                                                std::to_string(600 - lines.size() + i)));
  EXPECT_FALSE(serverlink::TraceToFile(testing::TempDir() + "nowhere/link.trace").On());
}

TEST_F(ClientTest, RequestsCarryTypeTextAndArgument) {
  Connect();
  server.TakeRequests();
  comm.ovpTransaction(7, 8, std::nullopt, "");
  comm.ovpSetArgument({9, 9, 9});
  const std::tuple<std::int16_t, std::int16_t, std::string> overflows[] = {
      {1, 32'700, "AB"}, {1, 5, std::string(32'768, 'x')}, {-1, 5, ""}};
  for (const auto& [command, type, text] : overflows)
    EXPECT_THAT(Refusal([&] { comm.ovpTransaction(command, 1, type, text); }), HasSubstr("Overflow"));
  comm.ovpTransaction(1, 1, 5, "AB");  // the argument is still there, once
  EXPECT_THAT(Refusal([&] { comm.ovpTransaction(1, 1, 5, ""); }), HasSubstr("No argument"));
  comm.ovpSetArgument({1});
  comm.ovpTransaction(7, 8, std::nullopt, "");  // in place of the one that was never sent

  const auto requests = server.TakeRequests();
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(requests[0].argumentType, 0);
  EXPECT_TRUE(requests[0].argument.empty());
  EXPECT_EQ(requests[1].argumentType, 105);
  EXPECT_EQ(requests[1].argument, (Bytes{0, 2, 'A', 'B', 9, 9, 9}));
  EXPECT_EQ(requests[2].sequence, requests[1].sequence + 1);
  EXPECT_TRUE(requests[2].argument.empty());
}

TEST_F(ClientTest, SequenceNumbersWrapAndRecordsDoNotPileUp) {
  Connect();
  for (int i = 2; i <= 1'100; ++i) {
    comm.ovpTransaction(1, 1, std::nullopt, "");
    const int number = i <= 1'069 ? 7'017 + i : 7'017 + i - 1'069;
    ASSERT_NE(comm.Transaction(std::to_string(number)), nullptr) << i;
    ASSERT_EQ(comm.Transaction(std::to_string(number - 1)), nullptr) << i;
  }
  EXPECT_EQ(server.TakeRequests()[1'068].sequence, 8'086);
}

TEST_F(ClientTest, LongRequestsAndAnswersInPiecesArriveWhole) {
  Connect();
  EXPECT_EQ(Echo(Pattern(12'000'000)), Pattern(12'000'000));
  server.Set({.mode = ServerMode::kChunked, .piece = 700, .pause = 1ms});
  EXPECT_EQ(Echo(Pattern(5'000)), Pattern(5'000));
}

TEST_F(ClientTest, EveryBadAnswerIsAnErrorThatSaysWhatHappened) {
  clockSpeed = 20;
  comm.setTransactionTimeout(1);
  const std::pair<simulator::ServerOptions, const char*> cases[] = {
      {{.greetingAnswer = "ok"}, "refused the greeting; it answered \"ok\""},
      {{.mode = ServerMode::kSilent, .spoilsGreeting = true}, "has not answered within 1 s."},
      {{.mode = ServerMode::kClosing, .spoilsGreeting = true, .offset = 13}, "closed the connection"},
      {{.mode = ServerMode::kGarbage, .spoilsGreeting = true}, "answered transaction"},
      {{.mode = ServerMode::kSilent, .offset = 23}, "Only 23 of the 24 bytes of a header"},
      {{.mode = ServerMode::kSilent, .offset = 30}, "within 1 s; 6 of 10 bytes have come"},
      {{.mode = ServerMode::kOutOfStep}, "answered transaction"},
      {{.mode = ServerMode::kGarbage}, "answered transaction"},
      {{.mode = ServerMode::kClosing}, "closed the connection"},
      {{.mode = ServerMode::kResetting}, "server broke the connection"},
  };
  for (const auto& [options, text] : cases) {
    server.Set(options);
    EXPECT_THAT(Refusal([&] { Connect(), Echo(Pattern(10)); }), HasSubstr(text));
  }
  server.Set({});
  Connect();
  EXPECT_EQ(Echo({5}), Bytes{5});
}

TEST_F(ClientTest, AServerThatIsNotThereIsToldAndALongLookUpHoldsNobodyUp) {
  EXPECT_EQ(Refusal([&] { Echo({1}); }), "There is no connection to the server.");
  EXPECT_THAT(Refusal([&] { comm.ovpConnect("127.0.0.1", 65'536, "", 0); }),
              HasSubstr("between 1 and 65535"));
  const std::int32_t port = simulator::ProtocolServer().Port();  // gone again
  EXPECT_EQ(Refusal([&] { comm.ovpConnect("127.0.0.1", port, "", 0); }),
            "The server 127.0.0.1 could not be reached at port " + std::to_string(port) +
                ". The connection was refused.");
  EXPECT_EQ(Refusal([&] { Echo({1}); }),
            "There is no connection to the server any more. The connection was refused.");
  clockSpeed = 300;
  EXPECT_THAT(Refusal([&] { comm.ovpConnect("192.0.2.1", 9, "", 0); }),
              HasSubstr("192.0.2.1 could not be reached"));
  const auto took = Took([&] {
    EXPECT_THAT(Refusal([&] { comm.ovpConnect("slow.test", 9, "", 0); }),
                HasSubstr("port 9. There was no answer within 30 s."));
    clockSpeed = 1;
    EXPECT_TRUE(comm.ovpConnect("localhost", server.Port(), "hello", 3));
    serverlink::AsioSocket(tests::SlowName).Connect("slow.test", 9);  // nor does its end wait
  });
  EXPECT_LT(took, 20s);
}

TEST_F(ClientTest, AnAnswerWithMoreBehindItStandsAndThenTheConnectionEnds) {
  for (const std::size_t size : {0, 10, 4'072, 5'000, 100'000}) {
    for (const std::size_t surplus : {1, 23, 24, 9'000}) {
      for (const auto pause : {0ms, 1ms}) {
        server.Set({.mode = ServerMode::kSurplus, .piece = surplus, .pause = pause});
        Connect();
        ASSERT_EQ(Echo(Pattern(size)), Pattern(size)) << size << '+' << surplus;
        ASSERT_THAT(
            Refusal([&] { Echo({1}); }),
            HasSubstr(pause == 0ms ? "any more. The server sent data that no request waits for." : "."))
            << size << '+' << surplus;
        ASSERT_FALSE(socket.Connected());
        ASSERT_EQ(comm.ovpGetRspArgVal(), Pattern(size));
      }
    }
  }
}

TEST_F(ClientTest, WhatNobodyWaitsForTakesNoMemory) {
  clockSpeed = 100;
  Connect();
  comm.setTransactionTimeout(1);
  server.Set({.mode = ServerMode::kLate, .piece = 4});
  for (int i = 0; i < 3; ++i)
    EXPECT_THAT(Refusal([&] { Echo(Bytes(1'000'000)); }), HasSubstr("not answered"));
  comm.setTransactionTimeoutDefault();
  EXPECT_EQ(Echo({1}), Bytes{1});
  for (const char* key : {"7019", "7020", "7021"}) {
    const auto late = comm.Transaction(key);
    EXPECT_EQ(late->ReceivedBytesArg, 1'000'000);
    EXPECT_EQ(late->SndArgument.capacity() + late->RspArgument.capacity(), 0u);
  }
}

TEST_F(ClientTest, OneRequestIsOnItsWayAtMostAndClosingLetsGoOfIt) {
  clockSpeed = 100;
  Connect();
  comm.setTransactionTimeout(1);
  server.Set({.mode = ServerMode::kChunked, .pause = 10s});  // reads no further request meanwhile
  Refusal([&] { Echo({1, 2}); });
  EXPECT_THAT(Refusal([&] { Echo(Bytes(16 << 20)); }), HasSubstr("has not answered"));
  for (int i = 0; i < 2; ++i) EXPECT_THAT(Refusal([&] { Echo({1}); }), HasSubstr("has not been sent yet"));
  comm.ovpClose();
  EXPECT_FALSE(socket.Sending());
  EXPECT_EQ(Refusal([&] { comm.ovpTransaction(1, 1, 5, ""); }), "No argument was set for the transaction.");
}

TEST_F(ClientTest, DrippingBytesDoNotExtendTheTimeOut) {
  Connect();
  comm.setTransactionTimeout(1);
  server.Set({.mode = ServerMode::kChunked, .piece = 1, .pause = 30ms});
  const auto took =
      Took([&] { EXPECT_THAT(Refusal([&] { Echo(Pattern(1'000)); }), HasSubstr("of 1000 bytes")); });
  EXPECT_GE(took, 1'000ms);
  EXPECT_LE(took, 2'000ms);  // the whole answer would take thirty seconds
}

TEST(AsioLoop, TurnsAgainAfterItHadNothingToDoAndTicksUntilATimerIsStopped) {
  serverlink::AsioLoop loop;
  loop.Turn();
  bool done = false;
  loop.Post([&done] { done = true; });
  loop.Turn();
  EXPECT_TRUE(done);
  int ticks = 0;
  ui::Timer timer(loop, 1ms);
  timer.onTick = [&] {
    if (++ticks == 3) timer.Stop();
  };
  timer.Start();
  const auto end = std::chrono::steady_clock::now() + 10s;
  loop.RunUntil([&] { return ticks >= 3 || std::chrono::steady_clock::now() > end; });
  std::this_thread::sleep_for(20ms);
  loop.Turn();
  EXPECT_EQ(ticks, 3);
}

TEST_F(ClientTest, WaitingTurnsTheLoopWithoutSpinningAndWakesForData) {
  clockSpeed = 10;
  Connect();
  comm.setTransactionTimeout(30);
  server.Set({.mode = ServerMode::kChunked, .piece = 1'000, .pause = 330ms});
  // The rest comes in the middle of a round of 100 ms; a busy machine may need another try.
  std::chrono::milliseconds took{1'000};
  for (int attempt = 0; attempt < 10 && took >= 385ms; ++attempt) {
    loop.turns = 0;
    took = Took([&] { Echo(Pattern(10)); });
  }
  EXPECT_GE(took, 330ms);
  EXPECT_LT(took, 385ms);
  EXPECT_GE(loop.turns, 10);
  EXPECT_LE(loop.turns, 25);
}

TEST_F(ClientTest, EventHandlersMayCloseButNotStartAnotherTransaction) {
  Connect();
  server.Set({.mode = ServerMode::kSilent});
  std::vector<std::string> refused;
  loop.onTurn = [&] {
    refused = {Refusal([&] { comm.ovpTransaction(1, 1, std::nullopt, ""); }),
               Refusal([&] { comm.ovpSetArgument({1}); }), Refusal([&] { Connect(); })};
    comm.ovpClose();
  };
  EXPECT_EQ(Refusal([&] { Echo({1}); }), "The connection was closed.");
  EXPECT_THAT(refused, testing::AllOf(testing::SizeIs(3), testing::Each(HasSubstr("still waits"))));
}

TEST_F(ClientTest, ABrokenConnectionIsToldInOneBoxAlsoWhenNothingIsAsked) {
  comm.NetworkIpAddress = "10.1.2.3";
  prompts.whileAsked = [&] { loop.Tick(); };  // a box turns the message loop
  for (int round = 0; round < 2; ++round) {
    server.Set({});
    Connect();
    server.Set({.mode = ServerMode::kResetting});
    EXPECT_THAT(Refusal([&] { Echo({1}); }), HasSubstr("broke the connection"));
    loop.Tick();
    loop.Tick();
  }
  ASSERT_EQ(prompts.asked.size(), 1u);
  EXPECT_EQ(prompts.Last().text, "Connection lost with host 10.1.2.3, you should restart this plugin");
  EXPECT_EQ(prompts.asked[0].title, "KV-TARN Configuration");
  EXPECT_EQ(prompts.asked[0].icon, ui::Icon::kError);
  EXPECT_TRUE(comm.ConnectionLost());

  server.Set({.mode = ServerMode::kChunked, .pause = 1ms});
  Connect();
  server.Set({.mode = ServerMode::kClosing, .offset = 1'000});
  Echo({1});  // a whole answer, then the end
  std::this_thread::sleep_for(50ms);
  loop.Tick();
  EXPECT_FALSE(socket.Connected());
  EXPECT_THAT(Refusal([&] { Echo({1}); }), HasSubstr("any more. The server closed the connection."));
}

TEST_F(ClientTest, ATransactionIsRecentForEightTicks) {
  EXPECT_FALSE(comm.TransactionOn());
  Connect();
  for (int i = 0; i < 5; ++i) loop.Tick();
  Echo({1});
  for (int i = 0; i < 7; ++i) loop.Tick();
  EXPECT_TRUE(comm.TransactionOn());
  loop.Tick();
  EXPECT_FALSE(comm.TransactionOn());
}

TEST_F(ClientTest, TheTimeOutFollowsTheSizeOfTheBuffer) {
  Connect();
  server.Set({.mode = ServerMode::kSilent});
  clockSpeed = 2'000;
  const std::pair<std::int32_t, const char*> cases[] = {{0, "60"},      {25'250, "60"}, {25'251, "61"},
                                                        {25'750, "62"}, {26'250, "62"}, {60'000, "130"}};
  for (const auto& [size, seconds] : cases) {
    comm.setTransactionTimeoutFromBufferSize(size);
    EXPECT_THAT(Refusal([&] { comm.ovpTransaction(1, 1, std::nullopt, ""); }),
                HasSubstr("within " + std::string(seconds) + " s."));
  }
}

TEST_F(ClientTest, NumbersBecomeBytesMostSignificantFirstAndFit) {
  EXPECT_EQ(comm.shortToByteArray(0x1234), (Bytes{0x12, 0x34}));
  EXPECT_EQ(comm.unsignedShortToByteArray(65'535), (Bytes{0xFF, 0xFF}));
  EXPECT_EQ(comm.unsignedIntToByteArray(0x01020304), (Bytes{1, 2, 3, 4}));
  const std::function<void()> overflows[] = {[&] { comm.shortToByteArray(-1); },
                                             [&] { comm.unsignedShortToByteArray(65'536); },
                                             [&] { comm.unsignedIntToByteArray(-1); },
                                             [&] { comm.setTransactionTimeoutFromBufferSize(16'379'000); }};
  for (const auto& call : overflows) EXPECT_THAT(Refusal(call), HasSubstr("Overflow"));
}

}  // namespace
