// The native window of a start: published before the host is asked for anything, and not always to be had.
#include <set>

#include "fault_of.h"
#include "tool_test.h"

namespace {

/// Windows without a screen, which the system can refuse.
struct PlainToolkit : ui::Toolkit {
  struct Peer : ui::WindowPeer {
    void SetTitle(const std::string&) override {}
    void SetVisible(bool) override {}
    void SetAcceptsInput(bool) override {}
    void SetState(ui::WindowState) override {}
    void Move(int, int) override {}
    void Resize(int, int) override {}
    ui::Bounds GetBounds() const override { return {}; }
    void BringToFront() override {}
    void LeaveTopmost() override {}
    void HandleInput() override {}
    std::int32_t Handle() const override { return 31; }
  };
  void Realize(ui::Window& window) override {
    if (refuses) throw base::Error("No more windows.");
    window.SetWindowPeer(&peer);
  }
  void Discard(ui::Window& window) override { window.SetWindowPeer(nullptr); }
  void UseFont(const std::string&) override {}

  bool refuses = false;
  Peer peer;
};

/// The tool with native windows, as it were.
struct NativeWindow : PlainToolkit, tests::ToolTest {
  NativeWindow() : ToolTest(this) {}
  std::string Command() {
    return tests::ErrorOf([this] { api.Call("SendCommand", 0, 0, ""); });
  }
};

TEST_F(NativeWindow, ThatCannotBeMadeIsAnErrorAndTheNextCommandTriesAgain) {
  refuses = true;
  EXPECT_EQ(Command(), tests::Raised("The configuration window could not be opened: No more windows."));
  EXPECT_EQ(program.Window(), nullptr);
  EXPECT_FALSE(api.Get("Visible").AsBool());
  refuses = false;
  EXPECT_EQ(Command(), "no error");
  EXPECT_TRUE(program.Window()->Visible());
}

TEST_F(NativeWindow, IsFoundByOtherProcessesWhileItLoads) {
  const std::string network =
      building.NetworkName() + " at " + building.IpAddress() + ":" + std::to_string(building.Port());
  const std::string name = plugin::PublishedName("KV-TARN CONFIGURATION", network, "rtu-1 north WING");
  plugin::CWindowAgent other(memory, desktop);
  std::set<std::string> acts;
  const auto look = [&] {
    desktop.acts.clear();
    other.RaisePublished(name);
    acts.insert(desktop.acts.empty() ? "nothing" : desktop.acts.back());
  };
  throughHost = [&](std::string_view id, const automation::Object& object) {
    if (id == "MVPlugInLib.ObjectServer") look();  // before the host is asked for anything
    return object;
  };
  loop.onTurn = look;
  building.Faults().Fail({.member = "Property.Precision"});
  EXPECT_EQ(Command(), "no error");
  EXPECT_EQ(acts, std::set<std::string>{"raise what is shown for 31"});
  acts.clear();
  look();
  EXPECT_EQ(acts, std::set<std::string>{"nothing"}) << "the start was refused";

  building.Faults().Clear();
  acts.clear();
  EXPECT_EQ(Command(), "no error");
  EXPECT_EQ(acts, std::set<std::string>{"raise what is shown for 31"});
  look();
  EXPECT_TRUE(acts.contains("activate 31"));
  program.Window()->Close();
  look();
  EXPECT_TRUE(acts.contains("nothing"));
}

}  // namespace
