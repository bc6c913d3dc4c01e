#include <gtest/gtest.h>

#include "base/error.h"
#include "base/numbers.h"
#include "base/record.h"
#include "base/registry.h"
#include "base/text.h"
#include "stand_ins.h"

namespace {

using base::Numbers;
using base::Record;

TEST(Record, KeepsUntouchedFieldsByteForByte) {
  for (const char* text : {"", " ", "1", "1 2 3", " 1  2 ", "0.50 +1e3 007 abc"}) {
    EXPECT_EQ(Record(text).Join(), text);
  }
}

TEST(Record, ReplacesSingleFields) {
  Record record("1.50  007 x ");
  ASSERT_EQ(record.Count(), 5u);
  record.Set(2, "8");
  record.Set(4, "end");
  record.Set(2, "-9.25");
  EXPECT_EQ(record.Join(), "1.50  -9.25 x end");
  EXPECT_EQ(record.Field(1), "");
  EXPECT_EQ(record.Field(3), "x");
}

TEST(Record, RefusesWhatWouldShiftOrMissFields) {
  Record record("1 2");
  EXPECT_THROW(record.Set(0, "1 5"), base::Error);
  EXPECT_THROW(record.Set(2, "3"), base::Error);
  EXPECT_THROW(static_cast<void>(record.Field(2)), base::Error);
  EXPECT_EQ(record.Join(), "1 2");
}

TEST(Numbers, FollowTheUsersNotation) {
  const struct {
    char decimal;
    const char* text;
    std::optional<double> value;
  } cases[] = {{'.', "12", 12.0},           {'.', " -1.5 ", -1.5},
               {'.', "+.5", 0.5},           {'.', "1e3", 1000.0},
               {'.', "1.5E-2", 0.015},      {'.', "5.", 5.0},
               {'.', "", std::nullopt},     {'.', "   ", std::nullopt},
               {'.', "1,5", std::nullopt},  {'.', "abc", std::nullopt},
               {'.', "1 2", std::nullopt},  {'.', "inf", std::nullopt},
               {'.', "nan", std::nullopt},  {'.', "0x10", std::nullopt},
               {'.', "+-1", std::nullopt},  {'.', "1e999", std::nullopt},
               {',', "1,5", 1.5},           {',', "1.5", std::nullopt},
               {',', "1,5,2", std::nullopt}};
  for (const auto& item : cases) EXPECT_EQ(Numbers(item.decimal).Parse(item.text), item.value) << item.text;
}

TEST(Numbers, RoundWholeNumbersHalfToEven) {
  const Numbers numbers;
  const struct {
    const char* text;
    int value;
  } cases[] = {{"0.5", 0},   {"1.5", 2},   {"2.5", 2},   {"-0.5", 0},
               {"-1.5", -2}, {"34.6", 35}, {"22.5", 22}, {"2.4999", 2}};
  for (const auto& item : cases) EXPECT_EQ(numbers.ToInt16(item.text), item.value) << item.text;
}

TEST(Numbers, OverflowIsAnErrorAtTheExactLimit) {
  const Numbers numbers;
  EXPECT_EQ(numbers.ToInt16("32767.4"), 32767);
  EXPECT_THROW(numbers.ToInt16("32767.5"), base::Error);  // rounds up to 32768
  EXPECT_EQ(numbers.ToInt16("-32768.5"), -32768);
  EXPECT_THROW(numbers.ToInt16("-32769"), base::Error);
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
  EXPECT_EQ(base::Upper("gr\xC3\xBC\xC3\x9F \xC2\xB0"
                        "c"),
            "GR\xC3\xBC\xC3\x9F \xC2\xB0"
            "C");
  EXPECT_TRUE(base::EqualsNoCase("FormatName", "formatname"));
  EXPECT_FALSE(base::EqualsNoCase("Value", "Values"));
}

TEST(Text, SplitAndJoinAreInverse) {
  EXPECT_EQ(base::Split("a\r\n\r\nb", "\r\n"), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(base::Join(base::Split("::x:", ":"), ":"), "::x:");
  EXPECT_EQ(base::ReplaceAll("a%s%b%s%", "%s%", "1"), "a1b1");
}

TEST(RegistryStrings, EndAtTheFirstNulAndNeverFailLoudly) {
  tests::MemoryRegistry registry;
  const auto root = base::RegistryRoot::kCurrentUser;
  EXPECT_EQ(base::ReadRegistryString(registry, root, "key", "none"), "");
  registry.values["key|cut"] = std::string("1\0rest", 6);
  EXPECT_EQ(base::ReadRegistryString(registry, root, "key", "cut"), "1");
  EXPECT_EQ(base::WriteRegistryString(registry, root, "key", "name", "x"), "Success");
  registry.closes = false;
  EXPECT_EQ(base::WriteRegistryString(registry, root, "key", "name", "x"), "No Succes");
}

}  // namespace
