#include <gmock/gmock.h>

#include "platform/win32/system/text.h"
#include "platform/win32/window/message_loop.h"
#include "serverlink/asio_socket.h"
#include "serverlink/fComm.h"
#include "shell/strings.h"
#include "simulator/protocol/server.h"
#include "tests/core/stand_ins.h"

namespace {

using namespace std::chrono_literals;

TEST(LinkOnTheMessageLoop, WindowsLiveWhileATransactionWaits) {
  win32::MessageLoop loop([](const std::string& fault) { ADD_FAILURE() << fault; });
  simulator::ProtocolServer server;
  serverlink::AsioSocket socket;
  tests::ScriptedPrompts prompts;
  serverlink::fComm comm({.socket = socket,
                          .loop = loop,
                          .prompts = prompts,
                          .text = shell::ReplacePlaceholders,
                          .title = "Title",
                          .toCodePage = win32::CodePageText});
  ASSERT_TRUE(comm.ovpConnect("127.0.0.1", server.Port(), "hello", 3));
  server.TakeRequests();
  server.Set({.mode = simulator::ServerMode::kChunked, .piece = 100, .pause = 300ms});

  int ticks = 0;
  ui::Timer timer(loop, 20ms);
  timer.onTick = [&] { ++ticks; };
  timer.Start();
  comm.ovpSetArgument({1, 2, 3});
  // A-umlaut and a sign that no western code page has.
  comm.ovpTransaction(1, 2, std::int16_t{5}, "\xC3\x84\xE2\x98\x83");
  EXPECT_GE(ticks, 5);
  EXPECT_EQ(comm.ovpGetRspArgVal(), server.TakeRequests().at(0).argument);

  const std::string text = win32::CodePageText("\xC3\x84\xE2\x98\x83");
  EXPECT_EQ(text.size(), GetACP() == CP_UTF8 ? 5u : 2u);
  EXPECT_EQ(comm.ovpGetRspArgLen(), static_cast<std::int32_t>(2 + text.size() + 3));
}

}  // namespace
