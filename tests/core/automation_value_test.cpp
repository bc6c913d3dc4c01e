#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include "automation/object.h"
#include "fault_of.h"

namespace {

using automation::Value;
using tests::CodeOf;

TEST(Value, ConvertsAsThePlatformDoes) {
  const std::tuple<Value, std::optional<std::int32_t>, std::optional<bool>> cases[] = {
      {Value(), 0, false},
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
  int place = 0;
  for (const auto& [value, whole, flag] : cases) {
    SCOPED_TRACE("case " + std::to_string(++place));
    EXPECT_EQ(CodeOf([&] { EXPECT_EQ(value.AsWhole(), whole); }), whole ? 0 : automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { EXPECT_EQ(value.AsBool(), flag); }), flag ? 0 : automation::kTypeMismatch);
  }
}

TEST(Value, WhatIsNoNumberIsNeverTakenForOne) {
  using Limits = std::numeric_limits<double>;
  for (const Value& value :
       {Value(Limits::quiet_NaN()), Value(Limits::infinity()), Value(-Limits::infinity())}) {
    EXPECT_EQ(CodeOf([&] { value.AsWhole(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsReal(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsBool(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsText(); }), automation::kTypeMismatch);
  }
  for (const double real : {2147483647.5, -2147483649.0, 1e300})
    EXPECT_EQ(CodeOf([&] { Value(real).AsWhole(); }), automation::kOverflow) << real;
  EXPECT_EQ(CodeOf([&] { Value().AsText(); }), automation::kTypeMismatch);
}

}  // namespace
