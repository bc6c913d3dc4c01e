// The native window of a start: published before the host is asked for anything, and not always to be had.
#include <set>

#include "fault_of.h"
#include "tool_test.h"

namespace {

using tests::ErrorOf;
using tests::Raised;

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
struct NativeTool : PlainToolkit, tests::Tool {
  NativeTool() : Tool(Options(), this) {}
  std::string Command() {
    return ErrorOf([this] { api.Call("SendCommand", 0, 0, ""); });
  }
};

TEST(NativeWindow, ThatCannotBeMadeIsAnErrorAndTheNextCommandTriesAgain) {
  NativeTool tool;
  tool.refuses = true;
  EXPECT_EQ(tool.Command(), Raised("The configuration window could not be opened: No more windows."));
  EXPECT_EQ(tool.program.Window(), nullptr);
  EXPECT_FALSE(tool.api.Get("Visible").AsBool());
  tool.refuses = false;
  EXPECT_EQ(tool.Command(), "no error");
  EXPECT_TRUE(tool.program.Window()->Visible());
}

TEST(NativeWindow, IsFoundByOtherProcessesWhileItLoads) {
  NativeTool tool;
  const std::string name =
      plugin::PublishedName("KV-TARN CONFIGURATION",
                            tool.building.NetworkName() + " at " + tool.building.IpAddress() + ":" +
                                std::to_string(tool.building.Port()),
                            "rtu-1 north WING");
  plugin::CWindowAgent other(tool.memory, tool.desktop);
  std::set<std::string> acts;
  const auto look = [&] {
    tool.desktop.acts.clear();
    other.RaisePublished(name);
    acts.insert(tool.desktop.acts.empty() ? "nothing" : tool.desktop.acts.back());
  };
  tool.throughHost = [&](std::string_view id, const automation::Object& object) {
    if (id == "MVPlugInLib.ObjectServer") look();  // before the host is asked for anything
    return object;
  };
  tool.loop.onTurn = look;
  tool.building.Faults().Fail({.member = "Property.Precision"});
  EXPECT_EQ(tool.Command(), "no error");
  EXPECT_EQ(acts, std::set<std::string>{"raise what is shown for 31"});
  acts.clear();
  look();
  EXPECT_EQ(acts, std::set<std::string>{"nothing"}) << "the start was refused";

  tool.building.Faults().Clear();
  acts.clear();
  EXPECT_EQ(tool.Command(), "no error");
  EXPECT_EQ(acts, std::set<std::string>{"raise what is shown for 31"});
  look();
  EXPECT_TRUE(acts.contains("activate 31"));
  tool.program.Window()->Close();
  look();
  EXPECT_TRUE(acts.contains("nothing"));
}

}  // namespace
