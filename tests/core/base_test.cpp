#include <gtest/gtest.h>

#include "base/numbers.h"
#include "base/record.h"
#include "base/text.h"
#include "stand_ins.h"

namespace {

using base::Numbers;

TEST(Record, ChangesNothingButTheFieldThatIsReplaced) {
  for (const char* text : {"", " ", " 1  2 ", "0.50 +1e3 007 abc"})
    EXPECT_EQ(base::Record(text).Join(), text);
  base::Record record("1.50  007 x ");
  ASSERT_EQ(record.Count(), 5u);
  for (const auto& [place, text] : {std::pair(2, "8"), {4, "end"}, {2, "-9.25"}})
    record.Set(static_cast<std::size_t>(place), text);
  EXPECT_EQ(record.Join(), "1.50  -9.25 x end");
  EXPECT_EQ(record.Field(1), "");
  EXPECT_EQ(record.Field(3), "x");
  EXPECT_THROW(record.Set(0, "1 5"), base::Error) << "it would shift the others";
  EXPECT_THROW(record.Set(5, "3"), base::Error);
  EXPECT_THROW(static_cast<void>(record.Field(5)), base::Error);
  EXPECT_EQ(record.Join(), "1.50  -9.25 x end");
}

TEST(Numbers, FollowTheUsersNotation) {
  const std::pair<const char*, double> cases[] = {{"12", 12},    {" -1.5 ", -1.5},  {"+.5", 0.5},
                                                  {"1e3", 1000}, {"1.5E-2", 0.015}, {"5.", 5}};
  for (const auto& [text, value] : cases) EXPECT_EQ(Numbers().Parse(text), value) << text;
  for (const char* text : {"", "   ", "1,5", "abc", "1 2", "inf", "nan", "0x10", "+-1", "1e999"})
    EXPECT_EQ(Numbers().Parse(text), std::nullopt) << text;
  EXPECT_EQ(Numbers(',').Parse("1,5"), 1.5);
  for (const char* text : {"1.5", "1,5,2"}) EXPECT_EQ(Numbers(',').Parse(text), std::nullopt) << text;
}

TEST(Numbers, RoundHalfToEvenUpToTheExactLimit) {
  const Numbers numbers;
  const std::pair<const char*, int> cases[] = {{"0.5", 0},    {"1.5", 2},         {"2.5", 2},
                                               {"-0.5", 0},   {"-1.5", -2},       {"34.6", 35},
                                               {"2.4999", 2}, {"32767.4", 32767}, {"-32768.5", -32768}};
  for (const auto& [text, value] : cases) EXPECT_EQ(numbers.ToInt16(text), value) << text;
  for (const char* text : {"32767.5", "-32769"}) EXPECT_THROW(numbers.ToInt16(text), base::Error) << text;
  EXPECT_THROW(numbers.ToInt32("2147483648"), base::Error);
  EXPECT_THROW(numbers.ToSingle("1e39"), base::Error);
  EXPECT_THROW(numbers.ToDouble("x"), base::Error);
}

TEST(Numbers, WriteTheShortestTextInTheUsersNotation) {
  EXPECT_EQ(Numbers(',').Text(22.5), "22,5");
  EXPECT_EQ(Numbers().Text(44), "44");
  EXPECT_EQ(Numbers().Text(-0.0), "0");
  EXPECT_EQ(Numbers(',').Text(1234.5678, 2), "1234,57");
  EXPECT_EQ(Numbers().Text(-0.001, 2), "0.00");
  EXPECT_EQ(Numbers().Text(1e300, 0).size(), 301u);
}

TEST(Text, CaseOperationsLeaveOtherLettersAlone) {
  EXPECT_EQ(base::Upper("grüß °c"), "GRüß °C");
  EXPECT_TRUE(base::EqualsNoCase("FormatName", "formatname"));
  EXPECT_FALSE(base::EqualsNoCase("Value", "Values"));
}

TEST(RegistryStrings, SayByTheWordThatCallersCompareWhatFailed) {
  tests::MemoryRegistry registry;
  registry.closes = false;
  EXPECT_EQ(base::WriteRegistryString(registry, base::RegistryRoot::kCurrentUser, "key", "name", "x"),
            "No Succes");
}

}  // namespace
