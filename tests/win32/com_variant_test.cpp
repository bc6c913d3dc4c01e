#include <gtest/gtest.h>

#include "automation/error.h"
#include "com_support.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/variant.h"

namespace {

using automation::Bytes;
using automation::Value;
using com_test::Plain;
using win32::ToValue;
using win32::ToVariant;
using win32::Variant;

bool Same(const Value& left, const Value& right) {
  if (left.Get().index() != right.Get().index()) return false;
  if (std::holds_alternative<automation::Object>(left.Get())) {
    return left.AsObject().GetTarget() == right.AsObject().GetTarget();
  }
  return left.IsEmpty() || (std::holds_alternative<Bytes>(left.Get()) ? left.AsBytes() == right.AsBytes()
                                                                      : left.AsText() == right.AsText());
}

TEST(Variant, GoesOutAndComesBackUnchanged) {
  constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
  const char outside[] = "\xF0\x9F\x8C\xA1 outside the basic plane";
  const std::string nul("a\0b", 3);
  const Bytes none, bytes = {0, 1, 127, 128, 255};
  const automation::Object nobody, object(std::make_shared<com_test::Box>());
  const Value values[] = {{},        true,    false, 0,    kLeast, 0.1,    -1e300, "",
                          "72.5 °F", outside, nul,   none, bytes,  nobody, object};
  for (const Value& value : values) {
    const Variant variant = ToVariant(value);
    EXPECT_TRUE(Same(ToValue(variant.Get()), value)) << "type " << variant.Get().vt;
  }
}

TEST(Variant, UnderstandsWhatOthersSend) {
  const win32::Bstr lent("by reference");
  BSTR text = lent.Get();
  short number = 12;
  std::tuple<const char*, VARIANT, Value> cases[] = {
      {"null", Plain(VT_NULL, 0), {}},
      {"missing argument", Plain(VT_ERROR, DISP_E_PARAMNOTFOUND), {}},
      {"any non-zero boolean", Plain(VT_BOOL, VARIANT_BOOL{1}), true},
      {"signed byte", Plain(VT_I1, static_cast<signed char>(-1)), -1},
      {"byte", Plain(VT_UI1, BYTE{200}), 200},
      {"16 bits", Plain(VT_I2, SHORT{-32768}), -32768},
      {"large unsigned", Plain(VT_UI4, 4000000000u), 4e9},
      {"64 bits", Plain(VT_I8, LONGLONG{-5}), -5},
      {"single", Plain(VT_R4, 2.5F), 2.5},
      {"date", Plain(VT_DATE, 36526.5), 36526.5},
      {"currency", Plain(VT_CY, LONGLONG{12345}), 1.2345},
      {"null text", Plain(VT_BSTR, BSTR{nullptr}), ""},
      {"text by reference", Plain(VT_BYREF | VT_BSTR, &text), "by reference"},
      {"number by reference", Plain(VT_BYREF | VT_I2, &number), 12},
      {"no byte array", Plain(VT_ARRAY | VT_UI1, static_cast<SAFEARRAY*>(nullptr)), Bytes{}},
  };
  for (auto& [what, plain, expected] : cases) {
    EXPECT_TRUE(Same(ToValue(plain), expected)) << what;
    EXPECT_TRUE(Same(ToValue(Plain(VT_BYREF | VT_VARIANT, &plain)), expected)) << what << " by reference";
  }
}

Variant ArrayOfNumbers(std::initializer_list<int> numbers) {
  Variant variant;
  VARIANT* raw = variant.Put();
  raw->vt = VT_ARRAY | VT_VARIANT;
  raw->parray = SafeArrayCreateVector(VT_VARIANT, 1, static_cast<ULONG>(numbers.size()));
  LONG index = 1;
  for (const int number : numbers) {
    const Variant element = ToVariant(number);
    SafeArrayPutElement(raw->parray, &index, const_cast<VARIANT*>(&element.Get()));
    ++index;
  }
  return variant;
}

TEST(Variant, ArraysOfScriptsAreBytesWhenTheyFit) {
  EXPECT_EQ(ToValue(ArrayOfNumbers({0, 17, 255}).Get()).AsBytes(), (Bytes{0, 17, 255}));
  EXPECT_THROW(ToValue(ArrayOfNumbers({0, 256}).Get()), automation::Error);
  EXPECT_THROW(ToValue(ArrayOfNumbers({-1}).Get()), automation::Error);
  EXPECT_THROW(ToValue(Plain(VT_ERROR, E_FAIL)), automation::Error) << "an error code is no value";
}

}  // namespace
