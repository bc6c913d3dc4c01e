// The maker's controls inside a window of the tool: created by their program ids from SimControls.dll beside
// this program, over the virtual building's device as COM shows it, and worked through their native windows.
#include <olectl.h>
// After the one above, which brings windows.h.
#include <commctrl.h>

#include <bit>
#include <memory>

#include "platform/win32/apartment.h"
#include "platform/win32/com_object.h"
#include "platform/win32/control_host.h"
#include "platform/win32/local_dispatch.h"
#include "platform/win32/process.h"
#include "tests/sim/building_fixture.h"
#include "ui_support.h"

namespace {

using sim_test::Client;
using ui_test::ByName;
using ui_test::RectOf;
using ui_test::TextOf;

constexpr char kSensor[] = "MVConfigSensor.ctlSensorHardware";
constexpr char kVariable[] = "MVConfigSensor.ctlSensorNV";
constexpr char kActuator[] = "MVConfigActuator.ctlConfigActuator";

HRESULT CallLibrary(const char* entry) {
  const std::wstring file = win32::Wide(win32::ProgramFolder() + "\\SimControls.dll");
  const HMODULE library = LoadLibraryW(file.c_str());
  if (!library) return HRESULT_FROM_WIN32(GetLastError());
  using Entry = HRESULT(STDMETHODCALLTYPE*)();
  const auto call = std::bit_cast<Entry>(GetProcAddress(library, entry));
  return call ? call() : E_NOTIMPL;
}

void HoldShift(bool down) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_SHIFT] = down ? 0x80 : 0;
  SetKeyboardState(keys);
}

struct Dialog : ui::Window {
  Dialog() : Window("fTest") {
    SetTitle("Sensor Configuration");
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

  std::string Stored(const std::string& object, int number, const std::string& format) const {
    return building_.StoredText(sim_test::kFirstDevice, object, number, format);
  }

  HWND Site() const { return ui_test::Native(dialog_.ctlSite); }

  win32::ComApartment apartment_;
  simulator::Building building_{sim_test::Options()};
  Client client_{building_};
  Dialog dialog_;
  win32::ActiveXHost host_{toolkit_, loop_};
  std::vector<std::string> failures_;
};

TEST_F(HostedControls, WhatAPersonEntersIsStoredAndThereAgain) {
  const struct {
    const char* programId;
    int number;
    const char* choice;
    const char* list;
    int place;
    const char* box;  // empty: the list alone
    const char* entered;
    std::string object;
    int property;
    const char* format;
    std::string stored;
    std::string shownAgain;
  } cases[] = {
      {kSensor, 4, "2,3", "ctlSensorHardware.lstSensorType", 0, "ctlSensorLinear.txt(3)", "1500",
       "HardwareInput4", 4, "UCPTsensorScale", "0.00 10.00 0.00 1500.00", "1500.00"},
      {kSensor, 1, "2,3,6", "ctlSensorHardware.lstSensorType", 1, "ctlSensorTable.txt(15)", "99",
       "HardwareInput1", 5, "UCPTtranslationTable",
       "0.00 1.50 3.00 4.50 6.00 7.50 9.00 10.00 0.00 15.00 30.00 45.00 60.00 75.00 90.00 99.00", "99.00"},
      {kActuator, 6, "ANALOG_0_10V", "ctlConfigActuator.lstSense", 1, "ctlActuatorAnalog.txt(0)", "2",
       "HardwareOutput6", 7, "UCPTactuatorRange", "2.00 10.00", "2.00"},
      {kActuator, 7, "PWM", "ctlConfigActuator.lstSignal", 1, "ctlActuatorPwm.txt(0)", "7.5",
       "HardwareOutput7", 8, "UCPTpwmPeriod", "7.5", "7.5"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.programId) + " " + c.box);
    automation::Object control = Open(c.programId, c.number, c.choice);
    EXPECT_FALSE(control.Get("IsChanged").AsBool());
    ui_test::ChooseEntry(ByName(c.list), c.place);
    ASSERT_TRUE(IsWindowVisible(ByName(c.box)));
    ui_test::SetTextOf(ByName(c.box), c.entered);
    EXPECT_TRUE(control.Get("IsChanged").AsBool());
    EXPECT_TRUE(control.Call("WriteValue").AsBool());
    EXPECT_FALSE(control.Get("IsChanged").AsBool());
    EXPECT_EQ(Stored(c.object, c.property, c.format), c.stored);
    control.Call("Finish");
    host_.Destroy(dialog_.ctlSite);

    control = Open(c.programId, c.number, c.choice);
    EXPECT_EQ(TextOf(ByName(c.box)), c.shownAgain);
    EXPECT_TRUE(IsWindowVisible(ByName(c.box)));
    host_.Destroy(dialog_.ctlSite);
  }
  EXPECT_EQ(failures_, std::vector<std::string>());
}

TEST_F(HostedControls, VariableTypeIsStored) {
  const automation::Object control = Open(kVariable, 2, "2,3,6");
  EXPECT_EQ(TextOf(ByName("ctlSensorNV.lblVariable")), "nvoHwInput2");
  EXPECT_EQ(TextOf(ByName("ctlSensorNV.lstType")), "SNVT_temp_p");
  ui_test::ChooseEntry(ByName("ctlSensorNV.lstType"), 2);
  EXPECT_TRUE(control.Call("WriteValue").AsBool());
  EXPECT_EQ(client_.Variable("HardwareInput2", "nvoHwInput2").Text("MvFormatType"), "SNVT_temp_f");
}

TEST_F(HostedControls, ObjectsAreManagedThroughTheHost) {
  const automation::Object control =
      host_.Create(dialog_.ctlSite, "MVSingleObjectManager.ObjectManager",
                   [this](const std::string& text) { failures_.push_back(text); });
  const auto network = win32::ToDispatch(client_.network);
  const auto server = win32::ToDispatch(client_.server);
  control.Call("Initialize", "Test", win32::FromDispatch(network.Get()), win32::FromDispatch(server.Get()));
  Settle();
  const HWND list = ByName("ObjectManager.lvwObjects");
  ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 15);
  const auto order = [&](WPARAM row, const char* button) {
    LVITEMW item = {};
    item.state = item.stateMask = LVIS_SELECTED;
    SendMessageW(list, LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
    Settle();
    ui_test::Click(ByName(std::string("ObjectManager.") + button));
    Settle();
  };
  order(2, "cmdDisable");
  EXPECT_EQ(building_.StateOfObject(sim_test::kFirstDevice, "HardwareInput1"), "DISABLED");
  order(3, "cmdEnable");
  order(3, "cmdTest");
  EXPECT_EQ(building_.StateOfObject(sim_test::kFirstDevice, "HardwareInput1"), "ENABLED PASSED");
  EXPECT_EQ(building_.StateOfObject(sim_test::kFirstDevice, "HardwareInput2"), "ENABLED PASSED");
  order(0, "cmdDisable");
  EXPECT_EQ(failures_, std::vector<std::string>{
                           "NodeObject cannot be disabled: the other objects are reached through it."});
  EXPECT_EQ(building_.StateOfObject(sim_test::kFirstDevice, "HardwareInput1"), "ENABLED PASSED");
}

TEST_F(HostedControls, ARefusalIsHeardAndTheEntryStays) {
  const automation::Object control = Open(kSensor, 4, "2");
  ui_test::SetTextOf(ByName("ctlSensorLinear.txt(0)"), "12");
  EXPECT_FALSE(control.Call("WriteValue").AsBool());
  ASSERT_EQ(failures_.size(), 1U);
  EXPECT_NE(failures_[0].find("low signal"), std::string::npos) << failures_[0];
  EXPECT_EQ(TextOf(ByName("ctlSensorLinear.txt(0)")), "12");
  EXPECT_EQ(Stored("HardwareInput4", 4, "UCPTsensorScale"), "0.00 10.00 0.00 2000.00");
  EXPECT_EQ(faults_, std::vector<std::string>());
}

TEST_F(HostedControls, ErrorsArriveInWords) {
  const auto create = [&](const char* programId) {
    return sim_test::RefusalOf([&] { host_.Create(dialog_.ctlSite, programId, {}); });
  };
  EXPECT_EQ(
      create("MVConfigSensor.ctlMissing"),
      "The control \"MVConfigSensor.ctlMissing\" is not registered on this machine (error 0x800401F3).");
  EXPECT_EQ(GetWindow(Site(), GW_CHILD), nullptr);
  EXPECT_NO_THROW(host_.Check(kSensor));
  EXPECT_THROW(host_.Check("MVConfigSensor.ctlMissing"), automation::Error);

  EXPECT_EQ(sim_test::RefusalOf([&] { Open(kSensor, 9, "2"); }),
            "There is no hardware input 9: the controller has the hardware inputs 1 to 6.");
  building_.Faults().Fail({.member = "Collection.Item", .once = false});
  EXPECT_EQ(sim_test::RefusalOf([&] { Open(kActuator, 1, "PWM"); }), "The call failed.");
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
  MoveFocus(dialog_.txtBefore);
  std::vector<std::string> visited;
  for (int step = 0; step < 6; ++step) {
    Press(VK_TAB);
    visited.push_back(Focused());
  }
  EXPECT_EQ(visited, (std::vector<std::string>{"ctlConfigActuator.lstSignal", "ctlConfigActuator.lstSense",
                                               "ctlActuatorAnalog.txt(0)", "ctlActuatorAnalog.txt(1)",
                                               "fTest.txtAfter", "fTest.txtBefore"}));
  visited.clear();
  HoldShift(true);
  for (int step = 0; step < 3; ++step) {
    Press(VK_TAB);
    visited.push_back(Focused());
  }
  EXPECT_EQ(visited, (std::vector<std::string>{"fTest.txtAfter", "ctlActuatorAnalog.txt(1)",
                                               "ctlActuatorAnalog.txt(0)"}));
  for (int step = 0; step < 3; ++step) Press(VK_TAB);
  HoldShift(false);
  EXPECT_EQ(Focused(), "fTest.txtBefore");
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

TEST_F(HostedControls, RegistrationIsUndone) {
  ASSERT_EQ(CallLibrary("DllUnregisterServer"), S_OK);
  EXPECT_NE(
      sim_test::RefusalOf([&] { host_.Create(dialog_.ctlSite, kSensor, {}); }).find("is not registered"),
      std::string::npos);
  ASSERT_EQ(CallLibrary("DllRegisterServer"), S_OK);
  EXPECT_TRUE(host_.Create(dialog_.ctlSite, kSensor, {}));
}

}  // namespace
