#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "automation/object.h"
#include "fault_of.h"

namespace {

using automation::Value;
using tests::CodeOf;

constexpr std::uint32_t kDone = 0;

TEST(Value, ConvertsAsThePlatformDoes) {
  struct {
    Value value;
    std::optional<std::int32_t> whole;
    std::optional<bool> flag;
  } const cases[] = {{{}, 0, false},
                     {true, -1, true},
                     {2.5, 2, true},
                     {"&H10", 16, true},
                     {" &hffffffff ", -1, true},
                     {"&O17", 15, true},
                     {"&H0", 0, false},
                     {"tRue", {}, true},
                     {"FALSE", {}, false},
                     {"#TRUE#", {}, true},
                     {"&H", {}, {}},
                     {"&HG", {}, {}},
                     {"&H1FFFFFFFF", {}, {}},
                     {"-&H10", {}, {}},
                     {"", {}, {}},
                     {"yes", {}, {}},
                     {"-1.5", -2, true},
                     {automation::Bytes{1}, {}, {}}};
  for (const auto& item : cases) {
    const auto place = &item - cases;
    const auto whole = CodeOf([&] { EXPECT_EQ(item.value.AsWhole(), item.whole) << place; });
    const auto flag = CodeOf([&] { EXPECT_EQ(item.value.AsBool(), item.flag) << place; });
    EXPECT_EQ(whole, item.whole ? kDone : automation::kTypeMismatch) << place;
    EXPECT_EQ(flag, item.flag ? kDone : automation::kTypeMismatch) << place;
  }
}

TEST(Value, WhatIsNoNumberIsNeverTakenForOne) {
  using Limits = std::numeric_limits<double>;
  for (const double real : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
    const Value value(real);
    EXPECT_EQ(CodeOf([&] { value.AsWhole(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsReal(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsBool(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsText(); }), automation::kTypeMismatch);
  }
  for (const double real : {2147483647.5, -2147483649.0, 1e300}) {
    EXPECT_EQ(CodeOf([&] { Value(real).AsWhole(); }), automation::kOverflow) << real;
  }
  EXPECT_EQ(CodeOf([&] { Value().AsText(); }), automation::kTypeMismatch);
}

}  // namespace
