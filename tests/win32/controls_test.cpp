// The maker's controls inside a window of the tool, over the virtual building's device as COM shows it.
#include <bit>

#include "com_support.h"
#include "platform/win32/com/apartment.h"
#include "platform/win32/com/com_object.h"
#include "platform/win32/com/local_dispatch.h"
#include "platform/win32/control/control_host.h"
#include "platform/win32/system/process.h"
#include "tests/sim/building_fixture.h"
#include "ui_support.h"

namespace {

using ui_test::ByName;
using ui_test::RectOf;

constexpr char kSensor[] = "MVConfigSensor.ctlSensorHardware";
constexpr char kActuator[] = "MVConfigActuator.ctlConfigActuator";

HRESULT CallLibrary(const char* entry) {
  const std::wstring file = win32::Wide(win32::ProgramFolder() + "\\SimControls.dll");
  const HMODULE library = LoadLibraryW(file.c_str());
  if (!library) return HRESULT_FROM_WIN32(GetLastError());
  using Entry = HRESULT(STDMETHODCALLTYPE*)();
  const auto call = std::bit_cast<Entry>(GetProcAddress(library, entry));
  return call ? call() : E_NOTIMPL;
}

struct Dialog : ui::Window {
  Dialog() : Window("fTest") {
    SetLayout(ui::Stack({ui::Item(txtBefore), ui::Grow(ui::Item(ctlSite)), ui::Item(txtAfter)}));
  }
  ui::TextBox txtBefore{*this, "txtBefore"};
  ui::ControlSite ctlSite{*this, "ctlSite", 240, 120};
  ui::TextBox txtAfter{*this, "txtAfter"};
};

class HostedControls : public ui_test::UiTest {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(CallLibrary("DllRegisterServer"), S_OK); }

  void SetUp() override { Show(dialog_); }

  /// The control over the device as another program would hand it over.
  automation::Object Open(const std::string& programId, int number, const std::string& choice) {
    const automation::Object control = host_.Create(
        dialog_.ctlSite, programId, [this](const std::string& text) { failures_.push_back(text); });
    const auto device = win32::ToDispatch(client_.device);
    control.Call("Initialize", win32::FromDispatch(device.Get()), number, choice);
    Settle();
    return control;
  }

  HWND Site() const { return ui_test::Native(dialog_.ctlSite); }

  win32::ComApartment apartment_;
  simulator::Building building_{sim_test::Options()};
  sim_test::Client client_{building_};
  Dialog dialog_;
  win32::ActiveXHost host_{toolkit_, loop_};
  std::vector<std::string> failures_;
};

TEST_F(HostedControls, WhatIsNotRegisteredAndWhatAControlRefusesIsToldInWords) {
  ASSERT_EQ(CallLibrary("DllUnregisterServer"), S_OK);
  EXPECT_EQ(sim_test::RefusalOf([&] { host_.Create(dialog_.ctlSite, kSensor, {}); }),
            "The control \"MVConfigSensor.ctlSensorHardware\" is not registered on this machine (error "
            "0x800401F3).");
  EXPECT_EQ(GetWindow(Site(), GW_CHILD), nullptr);
  ASSERT_EQ(CallLibrary("DllRegisterServer"), S_OK);
  EXPECT_NO_THROW(host_.Check(kSensor));
  EXPECT_EQ(sim_test::RefusalOf([&] { Open(kSensor, 9, "2"); }),
            "There is no hardware input 9: the controller has the hardware inputs 1 to 6.");
}

TEST_F(HostedControls, AControlOfTheOtherWidthIsToldByItsWidth) {
  const std::string id = "{2D0F7F55-70A5-4D0C-8A55-0C5E3A0D619B}";
  // Program ids are shared on Windows; classes are not.
  com_test::WriteDefault(0, "Software\\Classes\\TarnTest.Other\\CLSID", id);
  const auto refusal = [this] { return sim_test::RefusalOf([&] { host_.Check("TarnTest.Other"); }); };
  EXPECT_NE(refusal().find("is not registered"), std::string::npos) << refusal();
  com_test::WriteDefault(com_test::kOtherView, "Software\\Classes\\CLSID\\" + id + "\\InprocServer32",
                         "C:\\control.dll");
  const std::string other = sizeof(void*) == 8 ? "32-bit" : "64-bit";
  EXPECT_EQ(refusal(),
            "The control \"TarnTest.Other\" is a " + other + " control; use the " + other + " tool.");

  win32::RegistryKey classes;
  RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\CLSID", 0, KEY_ALL_ACCESS | com_test::kOtherView,
                classes.Put());
  RegDeleteTreeW(classes.Get(), win32::Wide(id).c_str());
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"Software\\Classes\\TarnTest.Other");
}

TEST_F(HostedControls, NothingIsLeftOfADestroyedControl) {
  const automation::Object control = Open(kSensor, 4, "2");
  ui_test::SetTextOf(ByName("ctlSensorLinear.txt(0)"), "12");
  host_.Destroy(dialog_.ctlSite);
  EXPECT_EQ(GetWindow(Site(), GW_CHILD), nullptr);
  EXPECT_EQ(ByName("ctlSensorLinear.txt(0)"), nullptr);
  host_.Destroy(dialog_.ctlSite);
  // Whoever still holds the object may ask it, and nobody hears it.
  EXPECT_FALSE(control.Call("WriteValue").AsBool());
  EXPECT_EQ(failures_, std::vector<std::string>());

  const automation::Object second = Open(kActuator, 1, "DIGITAL");
  EXPECT_NE(ByName("ctlConfigActuator.lstSignal"), nullptr);
  toolkit_.Discard(dialog_);
  EXPECT_EQ(ByName("ctlConfigActuator.lstSignal"), nullptr);
  EXPECT_FALSE(second.Get("IsChanged").AsBool());
}

TEST_F(HostedControls, TheTabKeyPassesThroughTheControl) {
  Open(kActuator, 6, "ANALOG_0_10V");
  const std::vector<std::string> order = {
      "fTest.txtBefore",          "ctlConfigActuator.lstSignal", "ctlConfigActuator.lstSense",
      "ctlActuatorAnalog.txt(0)", "ctlActuatorAnalog.txt(1)",    "fTest.txtAfter"};
  MoveFocus(dialog_.txtBefore);
  for (std::size_t step = 1; step <= order.size(); ++step) {
    Press(VK_TAB);
    EXPECT_EQ(Focused(), order[step % order.size()]);
  }
  ui_test::Hold(VK_SHIFT, true);
  for (std::size_t step = order.size(); step-- > 0;) {
    Press(VK_TAB);
    EXPECT_EQ(Focused(), order[step]);
  }
  ui_test::Hold(VK_SHIFT, false);
  // And the site itself gives the focus on.
  dialog_.ctlSite.Focus();
  Settle();
  EXPECT_EQ(Focused(), "ctlConfigActuator.lstSignal");
}

TEST_F(HostedControls, TheControlFillsItsSiteAndScrollsWhatDoesNotFit) {
  Open(kSensor, 2, "2,3");
  ui_test::ChooseEntry(ByName("ctlSensorHardware.lstSensorType"), 1);
  for (const int height : {150, 600}) {
    dialog_.Resize(700, height);
    Settle();
    const RECT site = RectOf(Site());
    const RECT control = RectOf(ByName("ctlSensorHardware"));
    EXPECT_TRUE(EqualRect(&site, &control)) << height;
  }
  // Less than the table needs: the last box is out of sight until the focus comes there.
  SetWindowPos(GetWindow(Site(), GW_CHILD), nullptr, 0, 0, 400, 90, SWP_NOMOVE | SWP_NOZORDER);
  const HWND last = ByName("ctlSensorTable.txt(15)");
  const HWND area = ByName("ctlSensorHardware.areSettings");
  const auto seen = [&] {
    return RectOf(last).bottom <= RectOf(area).bottom && RectOf(last).top >= RectOf(area).top;
  };
  EXPECT_FALSE(seen());
  SetFocus(last);
  EXPECT_TRUE(RunUntil(seen));
}

}  // namespace
