#include <gmock/gmock.h>

#include "com_support.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/com/variant.h"
#include "tests/core/fault_of.h"

namespace {

using automation::Object;
using com_test::Box;
using testing::HasSubstr;
using testing::StartsWith;
using tests::ErrorOf;

/// A box reached through the platform's late-bound calls, as another program's object.
struct LateBound : testing::Test {
  std::shared_ptr<Box> box = std::make_shared<Box>();
  Object local{box};
  int lookUps = 0;
  Object object = Foreign(local);

  Object Foreign(const Object& inner, DISPID shift = 0) {
    const win32::ComPtr<IDispatch> foreign(
        new com_test::ForeignObject(win32::ToDispatch(inner), lookUps, shift));
    return win32::FromDispatch(foreign.Get());
  }

  /// A call of `local` as any client makes it.
  HRESULT Invoke(DISPID id, WORD flags, DISPPARAMS parameters = {}, VARIANT* result = nullptr) const {
    return win32::ToDispatch(local)->Invoke(id, GUID{}, 0, flags, &parameters, result, nullptr, nullptr);
  }
};

TEST_F(LateBound, ErrorsArriveWithCodeDescriptionAndSource) {
  EXPECT_EQ(ErrorOf([&] { object.Call("Fail", double{0x80040000}, "Gerät fehlt", "KV-TARN"); }),
            "80040000: Gerät fehlt | KV-TARN");
  EXPECT_THAT(ErrorOf([&] { object.Call("Fail"); }), StartsWith("80040000: The tool itself failed. | "));
  EXPECT_THAT(ErrorOf([&] { object.Call("Fail", double{0x8002000B}, "", ""); }),
              testing::AllOf(StartsWith("8002000B: "), HasSubstr("\"Fail\"")));
}

TEST_F(LateBound, FaultyCallsNameTheMember) {
  const std::tuple<const char*, std::function<void()>, std::uint32_t> cases[] = {
      {"Colour", [&] { object.Get("Colour"); }, automation::kUnknownName},
      {"Fixed", [&] { object.Put("Fixed", 1); }, automation::kMemberNotFound},
      {"Argument 2", [&] { object.Call("Join", "one"); }, automation::kBadArgumentCount},
      {"text", [&] { object.Call("Join", "one", Object(local)); }, automation::kTypeMismatch},
      {"Veldran.NoSuchClass", [] { win32::CreateObject("Veldran.NoSuchClass"); }, 0x800401F3},
  };
  for (const auto& [what, call, code] : cases) {
    EXPECT_EQ(tests::CodeOf(call), code) << what;
    EXPECT_THAT(ErrorOf(call), HasSubstr(what));
  }
  EXPECT_THAT(ErrorOf(std::get<1>(cases[4])), HasSubstr("(0x800401F3)")) << "with the system's reason";
}

TEST_F(LateBound, ObjectsKeepTheirIdentity) {
  EXPECT_EQ(win32::ToDispatch(local).Get(), win32::ToDispatch(local).Get());
  EXPECT_EQ(win32::ToDispatch(object).Get(), win32::ComObjectOf(object).Get());

  // An object of this program that went out and comes back is the object itself again.
  object.Put("Content", local);
  EXPECT_EQ(box->content.AsObject().GetTarget(), local.GetTarget());
  object.Put("Content", automation::Value());  // the box would hold itself for ever
}

TEST_F(LateBound, TheDefaultMemberIsItemAndWhatCannotBeServedIsRefused) {
  const win32::Variant number = win32::ToVariant(2);
  VARIANT argument = number.Get();
  win32::Variant result;
  ASSERT_EQ(
      Invoke(DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {&argument, nullptr, 1, 0}, result.Put()),
      S_OK);
  EXPECT_EQ(win32::ToValue(result.Get()).AsObject().Text("Content"), "item 2");

  DISPID name = 0;
  EXPECT_EQ(Invoke(99, DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(-1, DISPATCH_METHOD), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Invoke(1, DISPATCH_PROPERTYPUT), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(Invoke(3, DISPATCH_METHOD, {&argument, &name, 1, 1}), DISP_E_NONAMEDARGS);
  // Without a place for the exception the code itself is the answer.
  EXPECT_EQ(static_cast<std::uint32_t>(Invoke(4, DISPATCH_METHOD)), automation::kApplicationDefined);
}

TEST_F(LateBound, MemberIdsAreAskedOncePerClass) {
  for (int round = 0; round < 3; ++round) {
    for (int number = 1; number <= 4; ++number) {
      const Object item = object.Child("Item", number);
      item.Put("content", round);
      item.Get("Content");
    }
  }
  EXPECT_EQ(lookUps, 2) << "\"Item\" of the object, and \"Content\" of all its items";
  object.Child("Inner").Get("Content");
  EXPECT_EQ(lookUps, 4) << "reached in another way: another class";
}

TEST_F(LateBound, AnObjectOfAnotherKindGetsIdsOfItsOwn) {
  const auto owner = std::make_shared<Box>();
  const Object holder = Foreign(Object(owner));
  owner->content = local;
  box->content = "plain";
  EXPECT_EQ(holder.Child("Content").Text("Content"), "plain");

  // The same way leads to an object whose ids are different.
  owner->content = Foreign(local, 1000);
  const Object shifted = holder.Child("Content");
  const int before = lookUps;
  EXPECT_EQ(shifted.Text("Content"), "plain");
  EXPECT_EQ(shifted.Text("Content"), "plain");
  EXPECT_EQ(lookUps, before + 2);  // one look-up, which passes through two counting objects
}

}  // namespace
