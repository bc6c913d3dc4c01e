#include <gmock/gmock.h>

#include "fault_of.h"
#include "serverlink/transaction.h"

namespace {

using automation::Bytes;
using tests::CodeOf;

struct TransactionRecord : testing::Test {
  std::shared_ptr<serverlink::CTransaction> transaction = std::make_shared<serverlink::CTransaction>();
  automation::Object byName{transaction};
};

TEST_F(TransactionRecord, ElementsOutsideOfAnArrayAreZeroAndIgnoreWrites) {
  for (const std::string array : {"RspArgument", "RspHeader", "SndArgument"}) {
    const std::string get = "Get" + array + "Element", set = "Set" + array + "Element";
    byName.Call(set, 0, 9);  // never allocated
    EXPECT_EQ(byName.Call(get, 0).AsWhole(), 0) << array;
    byName.Put(array, Bytes(24, 0x11));
    byName.Call(set, 23, 255);
    for (const int outside : {-1, 24, 2'147'483'647, -2'147'483'647 - 1}) {
      byName.Call(set, outside, 9);
      EXPECT_EQ(byName.Call(get, outside).AsWhole(), 0) << array << outside;
    }
    EXPECT_EQ(byName.Call(get, 23).AsWhole(), 255) << array;
    EXPECT_EQ(byName.Get(array).AsBytes().size(), 24u) << array;
  }
}

TEST_F(TransactionRecord, ReDimKeepsOrZeroes) {
  byName.Put("RspArgument", Bytes{1, 2, 3, 4});
  const std::tuple<int, bool, Bytes> cases[] = {
      {9, true, {1, 2, 3, 4, 0, 0, 0, 0, 0, 0}}, {1, true, {1, 2}}, {2, false, {0, 0, 0}}};
  for (const auto& [bound, keep, bytes] : cases) {
    byName.Call("ReDimRspArgument", bound, keep);
    EXPECT_EQ(transaction->RspArgument, bytes);
  }
  EXPECT_EQ(CodeOf([&] { byName.Call("ReDimRspArgument", -1, true); }), automation::kBadIndex);
  EXPECT_EQ(transaction->RspArgument.size(), 3u);
}

TEST_F(TransactionRecord, NumbersThatDoNotFitAreRefused) {
  for (const char* number : {"SeqNumber", "ReceivedBytesArg"}) {
    byName.Put(number, -7);
    EXPECT_EQ(byName.Whole(number), -7) << number;
  }
  EXPECT_EQ(CodeOf([&] { byName.Put("State", 32768); }), automation::kOverflow);
  EXPECT_EQ(CodeOf([&] { byName.Call("SetRspArgumentElement", 0, 256); }), automation::kOverflow);
  EXPECT_EQ(CodeOf([&] { byName.Call("SetRspArgumentElement", 0, -1); }), automation::kOverflow);
  EXPECT_EQ(transaction->State, 0);
}

}  // namespace
