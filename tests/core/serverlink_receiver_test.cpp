#include <gmock/gmock.h>

#include "byte_socket.h"
#include "fault_of.h"
#include "link.h"

namespace {

using serverlink::Bytes;
using serverlink::CTransaction;
using tests::FaultOf;

/// A receiver with transactions that await their answers, and those answers as they come over the wire.
struct Reassembly : testing::Test {
  serverlink::TransactionTable table;
  serverlink::Texts text = shell::ReplacePlaceholders;
  serverlink::Trace trace;
  tests::ByteSocket socket;
  serverlink::Receiver receiver{socket, table, text, trace};
  std::vector<Bytes> arguments;
  Bytes stream;
  std::vector<std::size_t> starts;  // of the answers in the stream

  void Expect(const std::vector<std::size_t>& sizes, std::int16_t last = 7017) {
    receiver.Restart(last);
    receiver.SetMode(serverlink::HeaderMode::kAuthenticated);
    table.Clear();
    arguments.clear();
    stream.clear();
    starts.clear();
    for (const std::size_t size : sizes) {
      last = serverlink::NextNumber(last);
      auto& transaction = table.At(last) = std::make_shared<CTransaction>();
      transaction->State = serverlink::kSent;
      arguments.push_back(tests::Pattern(size));
      starts.push_back(stream.size());
      const auto bytes =
          simulator::WriteFrame({.sequence = static_cast<std::uint16_t>(last), .argument = arguments.back()},
                                simulator::kFullHeader);
      stream.insert(stream.end(), bytes.begin(), bytes.end());
    }
  }

  void Arrive(std::span<const std::uint8_t> bytes) {
    socket.Arrive(bytes);
    receiver.DataArrival();
  }
  void Arrive(std::size_t from, std::size_t to) { Arrive(std::span(stream).subspan(from, to - from)); }
  /// With one byte changed.
  void Arrive(std::size_t from, std::size_t to, std::size_t place, std::uint8_t byte) {
    stream[place] = byte;
    Arrive(from, to);
  }

  CTransaction& At(std::size_t place) { return *table.At(static_cast<std::int16_t>(7'018 + place)); }

  bool InsideHeader(std::size_t place) const {
    return std::ranges::any_of(starts,
                               [&](std::size_t start) { return place > start && place < start + 24; });
  }

  void CheckAll(std::int16_t number = 7017) {
    for (const Bytes& argument : arguments) {
      number = serverlink::NextNumber(number);
      const auto& transaction = table.At(number);
      ASSERT_EQ(transaction->State, serverlink::kComplete) << number;
      ASSERT_EQ(transaction->RspArgument, argument) << number;
      ASSERT_EQ(static_cast<std::size_t>(transaction->ReceivedBytesArg), argument.size());
    }
  }
};

TEST_F(Reassembly, EverySplitInTwoGivesTheSameAnswersUnlessItCutsAHeader) {
  for (const auto& sizes : {std::vector<std::size_t>{0}, {1, 0, 40}, {0, 5'000, 3}}) {
    Expect(sizes);
    const std::size_t whole = stream.size();
    for (std::size_t cut = 0; cut <= whole; ++cut) {
      Expect(sizes);
      const std::string fault = FaultOf([&] {
        Arrive(0, cut);
        Arrive(cut, whole);
      });
      EXPECT_EQ(fault.empty(), !InsideHeader(cut)) << cut << ": " << fault;
      if (fault.empty()) CheckAll();
    }
  }
}

TEST_F(Reassembly, AnswersThatComeTogetherAreTakenWhereverTheReadsCutTheirHeaders) {
  std::vector<std::vector<std::size_t>> together = {std::vector<std::size_t>(150, 10)};
  for (std::size_t size = 4'040; size < 4'080; ++size) together.push_back({size, 5, 9'000, 0, 3});
  for (const auto& sizes : together) {
    for (const bool givenUp : {false, true}) {
      Expect(sizes);
      for (std::size_t i = 0; i + 1 < sizes.size(); ++i) At(i).IsGivenUp = givenUp;
      Arrive(stream);
      for (std::size_t i = 0; i < sizes.size(); ++i) {
        ASSERT_EQ(At(i).State, serverlink::kComplete) << sizes[0];
        ASSERT_EQ(At(i).RspArgument, At(i).IsGivenUp ? Bytes() : arguments[i]) << sizes[0];
      }
    }
  }
}

TEST_F(Reassembly, MemoryGrowsWithWhatHasArrivedNotWithWhatIsAnnounced) {
  Expect({0});
  stream[12] = 0x04;  // 64 MiB, the longest that is taken
  const auto bounded = [&] {
    const CTransaction& transaction = *table.At(7018);
    return transaction.RspArgument.capacity() <=
           4096 + 2 * static_cast<std::size_t>(transaction.ReceivedBytesArg);
  };
  Arrive(0, 24);
  EXPECT_TRUE(bounded());
  const Bytes piece(1'460);
  for (int i = 0; i < 1'000; ++i) {
    Arrive(piece);
    ASSERT_TRUE(bounded()) << i;
  }
  EXPECT_EQ(table.At(7018)->ReceivedBytesArg, 1'460'000);
}

TEST_F(Reassembly, WhatCannotBeTheAnswerIsRefusedInWords) {
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"Only 23 of the 24 bytes of a header", [&] { Arrive(0, 23); }},
      {"announced an answer of 67108865 bytes", [&] { stream[12] = 4, Arrive(0, 24, 15, 1); }},
      {"announced an answer of 4294967295 bytes",
       [&] { std::fill_n(stream.begin() + 12, 4, 0xFF), Arrive(0, 24); }},
      {"answered transaction 7019 where 7018", [&] { Arrive(0, 24, 7, 0x6B); }},
      {"no request waits", [&] { Arrive(0, 24), Arrive(0, 1); }},
      {"no request waits", [&] { stream.push_back(1), Arrive(0, 25); }},
      {"no request waits", [&] { table.At(7018)->State = serverlink::kBuilding, Arrive(0, 24); }}};
  for (const auto& [text, arrive] : cases) {
    Expect({0});
    EXPECT_THAT(FaultOf(arrive), testing::HasSubstr(text));
  }
}

}  // namespace
