// The names of controls for screen readers. Wine has no service for them, so a recorder stands in its place;
// the service itself is on the list for a real machine.
#include <map>

#include "platform/win32/com/apartment.h"
#include "platform/win32/com/com_class.h"
#include "ui_support.h"
// After windows.h, which it needs.
#include <oleacc.h>

// The compiler's header does not have the number.
__CRT_UUID_DECL(IAccPropServices, 0x6e26e776, 0x04f0, 0x495d, 0x80, 0xe4, 0x33, 0x30, 0x35, 0x2e, 0x31, 0x69)

namespace ui_test {
namespace {

constexpr CLSID kServices = {0xb5f8350b, 0x0548, 0x48b1, {0xa6, 0xee, 0x88, 0xbd, 0x00, 0xb4, 0xa5, 0xe7}};
constexpr MSAAPROPID kName = {0x608d3df8, 0x8128, 0x4aa7, {0xa4, 0x28, 0xf5, 0x5e, 0x49, 0x26, 0x72, 0x91}};

using Names = std::map<HWND, std::string>;

// The service and its factory in one.
class Recorder : public win32::ComClass<IAccPropServices, IClassFactory> {
 public:
  explicit Recorder(Names& names) : names_(names) {}

  HRESULT WINAPI SetHwndPropStr(HWND window, DWORD object, DWORD child, MSAAPROPID property,
                                LPCWSTR text) override {
    EXPECT_EQ(static_cast<LONG>(object), OBJID_CLIENT);
    EXPECT_EQ(child, DWORD{CHILDID_SELF});
    EXPECT_EQ(property, kName);
    names_[window] = win32::Utf8(text);
    return S_OK;
  }
  HRESULT WINAPI ClearHwndProps(HWND window, DWORD, DWORD, const MSAAPROPID* properties, int count) override {
    EXPECT_EQ(count, 1);
    EXPECT_EQ(*properties, kName);
    EXPECT_TRUE(IsWindow(window)) << "while the window is there";
    names_.erase(window);
    return S_OK;
  }

  HRESULT WINAPI CreateInstance(IUnknown*, REFIID id, void** object) override {
    return QueryInterface(id, object);
  }
  HRESULT WINAPI LockServer(BOOL) override { return S_OK; }

  // Nobody calls these.
#define UNUSED(name, ...) \
  HRESULT WINAPI name(__VA_ARGS__) override { return E_NOTIMPL; }
  UNUSED(SetPropValue, const BYTE*, DWORD, MSAAPROPID, VARIANT)
  UNUSED(SetPropServer, const BYTE*, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope)
  UNUSED(ClearProps, const BYTE*, DWORD, const MSAAPROPID*, int)
  UNUSED(SetHwndProp, HWND, DWORD, DWORD, MSAAPROPID, VARIANT)
  UNUSED(SetHwndPropServer, HWND, DWORD, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope)
  UNUSED(ComposeHwndIdentityString, HWND, DWORD, DWORD, BYTE**, DWORD*)
  UNUSED(DecomposeHwndIdentityString, const BYTE*, DWORD, HWND*, DWORD*, DWORD*)
  UNUSED(SetHmenuProp, HMENU, DWORD, MSAAPROPID, VARIANT)
  UNUSED(SetHmenuPropStr, HMENU, DWORD, MSAAPROPID, LPCWSTR)
  UNUSED(SetHmenuPropServer, HMENU, DWORD, const MSAAPROPID*, int, IAccPropServer*, AnnoScope)
  UNUSED(ClearHmenuProps, HMENU, DWORD, const MSAAPROPID*, int)
  UNUSED(ComposeHmenuIdentityString, HMENU, DWORD, BYTE**, DWORD*)
  UNUSED(DecomposeHmenuIdentityString, const BYTE*, DWORD, HMENU*, DWORD*)
#undef UNUSED

 private:
  Names& names_;
};

TEST(UiNames, FollowTheDescriptionForTheLifeOfTheControl) {
  const win32::ComApartment apartment;
  Names names;
  const win32::ComPtr<IClassFactory> factory(new Recorder(names));
  DWORD registration = 0;
  ASSERT_EQ(CoRegisterClassObject(kServices, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                  &registration),
            S_OK);
  win32::MessageLoop loop([](const std::string& fault) { ADD_FAILURE() << fault; });
  win32::NativeToolkit toolkit(loop);
  ui::Window window("fTool");
  ui::TextBox gain(window, "gain");
  ui::TextBox band(window, "band");
  ui::Button plain(window, "plain");
  window.SetLayout(ui::Line({ui::Item(gain), ui::Item(band), ui::Item(plain)}));
  gain.SetAccessibleName("Space Temperature, Proportional Gain, % / °C");
  toolkit.Realize(window);
  band.SetAccessibleName("Dead Band");
  EXPECT_EQ(names, (Names{{toolkit.HandleOf(gain), "Space Temperature, Proportional Gain, % / °C"},
                          {toolkit.HandleOf(band), "Dead Band"}}));
  band.SetAccessibleName("");
  EXPECT_EQ(names.size(), 1u);
  toolkit.Discard(window);
  EXPECT_TRUE(names.empty());
  CoRevokeClassObject(registration);
}

}  // namespace
}  // namespace ui_test
