#include <gmock/gmock.h>

#include "byte_socket.h"
#include "fault_of.h"
#include "link.h"

namespace {

using serverlink::Bytes;
using tests::FaultOf;

/// Transactions that await their answers, and those answers as they come over the wire.
struct Reassembly : testing::Test, tests::Awaiting {
  std::vector<Bytes> arguments;
  Bytes stream;
  std::vector<std::size_t> starts;  // of the answers in the stream

  void Expect(const std::vector<std::size_t>& sizes) {
    Await(sizes.size());
    arguments.clear();
    stream.clear();
    starts.clear();
    for (const std::size_t size : sizes) {
      const auto number = static_cast<std::uint16_t>(7'018 + arguments.size());
      arguments.push_back(tests::Pattern(size));
      starts.push_back(stream.size());
      const simulator::Frame answer{.sequence = number, .argument = arguments.back()};
      const auto bytes = simulator::WriteFrame(answer, simulator::kFullHeader);
      stream.insert(stream.end(), bytes.begin(), bytes.end());
    }
  }

  void Read(std::size_t from, std::size_t to) { Arrive(std::span(stream).subspan(from, to - from)); }

  bool InsideHeader(std::size_t place) const {
    return std::ranges::any_of(starts, [=](auto start) { return place > start && place < start + 24; });
  }

  void CheckAll() {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      ASSERT_EQ(At(i).State, serverlink::kComplete) << i;
      ASSERT_EQ(At(i).RspArgument, At(i).IsGivenUp ? Bytes() : arguments[i]) << i;
      ASSERT_EQ(static_cast<std::size_t>(At(i).ReceivedBytesArg), arguments[i].size());
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
        Read(0, cut);
        Read(cut, whole);
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
      SCOPED_TRACE(sizes[0]);
      Expect(sizes);
      for (std::size_t i = 0; i + 1 < sizes.size(); ++i) At(i).IsGivenUp = givenUp;
      Arrive(stream);
      CheckAll();
    }
  }
}

TEST_F(Reassembly, MemoryGrowsWithWhatHasArrivedNotWithWhatIsAnnounced) {
  Expect({0});
  stream[12] = 0x04;  // 64 MiB, the longest that is taken
  Read(0, 24);
  const Bytes piece(1'460);
  for (std::size_t received = 0; received <= 1'000 * piece.size(); received += piece.size()) {
    ASSERT_EQ(static_cast<std::size_t>(At(0).ReceivedBytesArg), received);
    ASSERT_LE(At(0).RspArgument.capacity(), 4096 + 2 * received);
    Arrive(piece);
  }
}

TEST_F(Reassembly, WhatCannotBeTheAnswerIsRefusedInWords) {
  const std::pair<const char*, std::function<void()>> cases[] = {
      {"Only 23 of the 24 bytes of a header", [&] { Read(0, 23); }},
      {"announced an answer of 67108865 bytes", [&] { stream[12] = 4, stream[15] = 1, Read(0, 24); }},
      {"announced an answer of 4294967295 bytes",
       [&] { std::fill_n(stream.begin() + 12, 4, 0xFF), Read(0, 24); }},
      {"answered transaction 7019 where 7018", [&] { stream[7] = 0x6B, Read(0, 24); }},
      {"no request waits", [&] { Read(0, 24), Read(0, 1); }},
      {"no request waits", [&] { stream.push_back(1), Read(0, 25); }},
      {"no request waits", [&] { At(0).State = serverlink::kBuilding, Read(0, 24); }}};
  for (const auto& [text, arrive] : cases) {
    Expect({0});
    EXPECT_THAT(FaultOf(arrive), testing::HasSubstr(text));
  }
}

}  // namespace
