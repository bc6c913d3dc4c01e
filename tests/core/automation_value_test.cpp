#include <gtest/gtest.h>

#include <limits>

#include "automation/object.h"
#include "fault_of.h"

namespace {

using automation::Value;
using tests::CodeOf;

TEST(Value, ConvertsAsThePlatformDoes) {
  const std::pair<Value, int> wholes[] = {{Value(), 0},         {true, -1},   {2.5, 2},   {"&H10", 16},
                                          {" &hffffffff ", -1}, {"&O17", 15}, {"&H0", 0}, {"-1.5", -2}};
  for (const auto& [value, whole] : wholes) {
    EXPECT_EQ(value.AsWhole(), whole);
    EXPECT_EQ(value.AsBool(), whole != 0) << whole;
  }
  const std::pair<Value, bool> flags[] = {{"tRue", true}, {"FALSE", false}, {"#TRUE#", true}};
  for (const auto& [value, flag] : flags) {
    EXPECT_EQ(CodeOf([&] { value.AsWhole(); }), automation::kTypeMismatch);
    EXPECT_EQ(value.AsBool(), flag);
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
  const Value neither[] = {"&H", "&HG", "&H1FFFFFFFF", "-&H10", "", "yes", automation::Bytes(1)};
  for (const Value& value : neither) {
    EXPECT_EQ(CodeOf([&] { value.AsWhole(); }), automation::kTypeMismatch);
    EXPECT_EQ(CodeOf([&] { value.AsBool(); }), automation::kTypeMismatch);
  }
  for (const double real : {2147483647.5, -2147483649.0, 1e300})
    EXPECT_EQ(CodeOf([&] { Value(real).AsWhole(); }), automation::kOverflow) << real;
  EXPECT_EQ(CodeOf([&] { Value().AsText(); }), automation::kTypeMismatch);
}

}  // namespace
