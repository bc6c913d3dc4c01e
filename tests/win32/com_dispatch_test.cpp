#include <gtest/gtest.h>

#include "com_support.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/variant.h"

namespace {

using automation::Object;
using automation::Value;
using com_test::Box;
using com_test::ForeignObject;

automation::Error ErrorOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const automation::Error& error) {
    return error;
  }
  ADD_FAILURE() << "no error";
  return {0, ""};
}

bool Contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

/// A box reached through the platform's late-bound calls, as another program's object.
struct LateBound : testing::Test {
  std::shared_ptr<Box> box = std::make_shared<Box>();
  Object local{box};
  int lookUps = 0;
  Object object = Foreign(0);

  Object Foreign(DISPID shift) {
    const win32::ComPtr<IDispatch> foreign(new ForeignObject(win32::ToDispatch(local), lookUps, shift));
    return win32::FromDispatch(foreign.Get());
  }
};

TEST_F(LateBound, ErrorsArriveWithCodeDescriptionAndSource) {
  const auto raised = ErrorOf([&] { object.Call("Fail", double{0x80040000}, "Gerät fehlt", "KV-TARN"); });
  EXPECT_EQ(raised.Code(), automation::kApplicationDefined);
  EXPECT_EQ(raised.Description(), "Gerät fehlt");
  EXPECT_EQ(raised.Source(), "KV-TARN");

  const auto own = ErrorOf([&] { object.Call("Fail"); });
  EXPECT_EQ(own.Code(), automation::kApplicationDefined);
  EXPECT_EQ(own.Description(), "The tool itself failed.");

  const auto silent = ErrorOf([&] { object.Call("Fail", double{0x8002000B}, "", ""); });
  EXPECT_EQ(silent.Code(), automation::kBadIndex);
  EXPECT_TRUE(Contains(silent.Description(), "\"Fail\"")) << silent.Description();
}

TEST_F(LateBound, FaultyCallsNameTheMember) {
  const struct {
    const char* what;
    std::function<void()> call;
    std::uint32_t code;
  } cases[] = {
      {"Colour", [&] { object.Get("Colour"); }, automation::kUnknownName},
      {"Fixed", [&] { object.Put("Fixed", 1); }, automation::kMemberNotFound},
      {"Argument 2", [&] { object.Call("Join", "one"); }, automation::kBadArgumentCount},
      {"text", [&] { object.Call("Join", "one", Object(local)); }, automation::kTypeMismatch},
  };
  for (const auto& test : cases) {
    const auto error = ErrorOf(test.call);
    EXPECT_EQ(error.Code(), test.code) << test.what;
    EXPECT_TRUE(Contains(error.Description(), test.what)) << error.Description();
  }
}

TEST_F(LateBound, ObjectsKeepTheirIdentity) {
  EXPECT_EQ(win32::ToDispatch(local).Get(), win32::ToDispatch(local).Get());
  EXPECT_EQ(win32::ToDispatch(object).Get(), win32::ComObjectOf(object).Get());

  // An object of this program that went out and comes back is the object itself again.
  object.Put("Content", local);
  EXPECT_EQ(box->content.AsObject().GetTarget(), local.GetTarget());
  object.Put("Content", Value());  // the box would hold itself for ever
}

TEST_F(LateBound, TheDefaultMemberOfACollectionIsItem) {
  const auto dispatch = win32::ToDispatch(local);
  const win32::Variant number = win32::ToVariant(2);
  VARIANT argument = number.Get();
  DISPPARAMS parameters = {&argument, nullptr, 1, 0};
  win32::Variant result;
  ASSERT_EQ(dispatch->Invoke(DISPID_VALUE, GUID{}, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                             result.Put(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(win32::ToValue(result.Get()).AsObject().Text("Content"), "item 2");
}

TEST_F(LateBound, RefusesCallsThatItCannotServe) {
  const auto dispatch = win32::ToDispatch(local);
  DISPPARAMS none = {};
  DISPID name = 0;
  VARIANT argument;
  VariantInit(&argument);
  DISPPARAMS named = {&argument, &name, 1, 1};
  const auto invoke = [&](DISPID id, WORD flags, DISPPARAMS* parameters) {
    return dispatch->Invoke(id, GUID{}, 0, flags, parameters, nullptr, nullptr, nullptr);
  };
  EXPECT_EQ(invoke(99, DISPATCH_METHOD, &none), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(invoke(-1, DISPATCH_METHOD, &none), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(invoke(1, DISPATCH_PROPERTYPUT, &none), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(invoke(3, DISPATCH_METHOD, &named), DISP_E_NONAMEDARGS);
  // Without a place for the exception the code itself is the answer.
  EXPECT_EQ(static_cast<std::uint32_t>(invoke(4, DISPATCH_METHOD, &none)), automation::kApplicationDefined);
}

TEST_F(LateBound, MemberIdsAreAskedOncePerClass) {
  for (int round = 0; round < 3; ++round) {
    for (int number = 1; number <= 4; ++number) {
      const Object item = object.Child("Item", number);
      item.Put("content", round);
      item.Get("Content");
    }
  }
  // "Item" of the object, and "Content" of all its items.
  EXPECT_EQ(lookUps, 2);
  object.Child("Inner").Get("Content");  // reached in another way: another class
  EXPECT_EQ(lookUps, 4);
}

TEST_F(LateBound, AnObjectOfAnotherKindGetsIdsOfItsOwn) {
  const auto owner = std::make_shared<Box>();
  const win32::ComPtr<IDispatch> shown(new ForeignObject(win32::ToDispatch(Object(owner)), lookUps));
  const Object holder = win32::FromDispatch(shown.Get());
  owner->content = local;
  box->content = "plain";
  EXPECT_EQ(holder.Child("Content").Text("Content"), "plain");

  // The same way leads to an object whose ids are different.
  owner->content = Foreign(1000);
  const Object shifted = holder.Child("Content");
  const int before = lookUps;
  EXPECT_EQ(shifted.Text("Content"), "plain");
  EXPECT_EQ(shifted.Text("Content"), "plain");
  EXPECT_EQ(lookUps, before + 2);  // one look-up, which passes through two counting objects
}

TEST(ComObject, AMissingProgramIsNamedWithTheReason) {
  const auto error = ErrorOf([] { win32::CreateObject("Veldran.NoSuchClass"); });
  EXPECT_EQ(error.Code(), static_cast<std::uint32_t>(CO_E_CLASSSTRING));
  EXPECT_TRUE(Contains(error.Description(), "Veldran.NoSuchClass")) << error.Description();
  EXPECT_TRUE(Contains(error.Description(), "0x800401F3")) << error.Description();
}

}  // namespace
