#include <gtest/gtest.h>

#include "automation/error.h"
#include "com_support.h"
#include "platform/win32/local_dispatch.h"
#include "platform/win32/variant.h"

namespace {

using automation::Bytes;
using automation::Value;
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
  const std::string nul("a\0b", 3);
  const Value values[] = {
      {},
      true,
      false,
      0,
      std::numeric_limits<std::int32_t>::min(),
      0.1,
      -1e300,
      "",
      "72.5 °F",
      "\xF0\x9F\x8C\xA1 outside the basic plane",
      nul,
      Bytes{},
      Bytes{0, 1, 127, 128, 255},
      automation::Object(),
      automation::Object(std::make_shared<com_test::Box>()),
  };
  for (const Value& value : values) {
    const Variant variant = ToVariant(value);
    EXPECT_TRUE(Same(ToValue(variant.Get()), value))
        << "place " << &value - values << ", type " << variant.Get().vt;
  }
}

// What other programs may send; each is set by hand into a plain variant.
TEST(Variant, UnderstandsWhatOthersSend) {
  const struct {
    const char* what;
    std::function<void(VARIANT&)> fill;
    Value expected;
  } cases[] = {
      {"null", [](VARIANT& v) { v.vt = VT_NULL; }, {}},
      {"missing argument",
       [](VARIANT& v) {
         v.vt = VT_ERROR;
         v.scode = DISP_E_PARAMNOTFOUND;
       },
       {}},
      {"any non-zero boolean",
       [](VARIANT& v) {
         v.vt = VT_BOOL;
         v.boolVal = 1;
       },
       true},
      {"signed byte",
       [](VARIANT& v) {
         v.vt = VT_I1;
         v.cVal = static_cast<CHAR>(-1);
       },
       -1},
      {"byte",
       [](VARIANT& v) {
         v.vt = VT_UI1;
         v.bVal = 200;
       },
       200},
      {"16 bits",
       [](VARIANT& v) {
         v.vt = VT_I2;
         v.iVal = -32768;
       },
       -32768},
      {"large unsigned",
       [](VARIANT& v) {
         v.vt = VT_UI4;
         v.ulVal = 4000000000u;
       },
       4e9},
      {"64 bits",
       [](VARIANT& v) {
         v.vt = VT_I8;
         v.llVal = -5;
       },
       -5},
      {"single",
       [](VARIANT& v) {
         v.vt = VT_R4;
         v.fltVal = 2.5F;
       },
       2.5},
      {"date",
       [](VARIANT& v) {
         v.vt = VT_DATE;
         v.date = 36526.5;
       },
       36526.5},
      {"currency",
       [](VARIANT& v) {
         v.vt = VT_CY;
         v.cyVal.int64 = 12345;
       },
       1.2345},
      {"null text",
       [](VARIANT& v) {
         v.vt = VT_BSTR;
         v.bstrVal = nullptr;
       },
       ""},
      {"no byte array",
       [](VARIANT& v) {
         v.vt = VT_ARRAY | VT_UI1;
         v.parray = nullptr;
       },
       Bytes{}},
  };
  for (const auto& test : cases) {
    VARIANT plain;
    VariantInit(&plain);
    test.fill(plain);
    EXPECT_TRUE(Same(ToValue(plain), test.expected)) << test.what;
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_VARIANT;
    reference.pvarVal = &plain;
    EXPECT_TRUE(Same(ToValue(reference), test.expected)) << test.what << " by reference";
  }
}

TEST(Variant, FollowsTypedReferences) {
  BSTR text = SysAllocString(L"by reference");
  short number = 12;
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_BYREF | VT_BSTR;
  variant.pbstrVal = &text;
  EXPECT_EQ(ToValue(variant).AsText(), "by reference");
  variant.vt = VT_BYREF | VT_I2;
  variant.piVal = &number;
  EXPECT_EQ(ToValue(variant).AsWhole(), 12);
  EXPECT_STREQ(text, L"by reference");
  SysFreeString(text);
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
}

TEST(Variant, RefusesWhatItDoesNotUnderstand) {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_ERROR;
  variant.scode = E_FAIL;
  try {
    ToValue(variant);
    FAIL() << "an error code is no value";
  } catch (const automation::Error& error) {
    EXPECT_EQ(error.Code(), automation::kTypeMismatch);
  }
}

}  // namespace
