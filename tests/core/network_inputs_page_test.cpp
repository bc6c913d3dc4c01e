#include <algorithm>

#include "base/record.h"
#include "faulty_host.h"
#include "tool_test.h"

namespace {

// Lends the windows that were shown.
struct Windows : ui::Toolkit {
  void Realize(ui::Window& window) override { shown[window.Name()] = &window; }
  void Discard(ui::Window& window) override { shown.erase(window.Name()); }
  void UseFont(const std::string&) override {}
  std::map<std::string, ui::Window*> shown;
};

// The windows come first, because the tool lets go of them when it ends.
struct NetworkInputsTest : Windows, tests::ToolTest {
  NetworkInputsTest() : ToolTest(this) {}

  static std::string Indexed(const char* name, std::size_t i) {
    return "fNetworkInput." + std::string(name) + "(" + std::to_string(i) + ")";
  }
  std::string StoredOf(const std::string& variable, int number, const char* format) {
    return building.StoredText(device, "RoofTopObject/" + variable, number, format);
  }
  std::string TypeInDevice(const char* variable) { return Main().Device().RoofTopVariables[variable].Type(); }

  /// Opens the dialog, does `act` in it and accepts it.
  void InDialog(const std::function<void()>& act) {
    loop.whileOpen = [&] {
      act();
      In<ui::Button>("cmdOK").Click();
    };
    Click("fNetworkInput.cmdChangeType");
  }
  void Choose(const char* variable, const char* type) {
    InDialog([&] {
      EXPECT_TRUE(ChooseRow("lvwVariable", variable) && ChooseRow("lvwType", type))
          << variable << " " << type;
    });
  }
  template <class T>
  T& In(const char* control) {
    return dynamic_cast<T&>(*shown.at("fChangeType")->Find(control));
  }
  std::vector<std::string> Rows(const char* list) {
    std::vector<std::string> rows;
    for (const auto& row : In<ui::ListView>(list).Rows()) rows.push_back(row.cells[0]);
    return rows;
  }
  bool ChooseRow(const char* list, const char* text) {
    const auto rows = Rows(list);
    return In<ui::ListView>(list).Choose(
        static_cast<std::size_t>(std::ranges::find(rows, text) - rows.begin()));
  }
  /// The flag, and with it the controls that hang on it.
  bool OptimumStart() {
    const bool standard = Main().Device().OccupancyIsStandard;
    for (const char* name :
         {"txtStartTime", "fraOptimum", "lblStartTime", "lblUnitStartTime", "chkOptimum"}) {
      for (const ui::Control* control : Page("fOptions").Group(name))
        EXPECT_EQ(control->Enabled(), standard) << name;
    }
    return standard;
  }

  static constexpr const char* device = tests::kUnassigned;
};

TEST_F(NetworkInputsTest, ANewTypeIsFollowedAtOnceAndReachesTheDeviceWithTheSaveThatIsNotRefused) {
  Open(device);
  const std::string before = StoredOf("nviCO2", 1, "SCPTmaxRcvTime");
  EXPECT_TRUE(OptimumStart());
  Choose("nviOccCmd", "SNVT_tod_event");
  EXPECT_EQ(Text(Indexed("lblType", 0)), "SNVT_tod_event");
  EXPECT_FALSE(OptimumStart());
  EXPECT_TRUE(Main().Pages().AnyPageChanged());
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_occupancy") << "closing without saving must change nothing";
  Type(Indexed("txtnvi", 12), "70");
  Type(Indexed("txtnvi", 20), "7000");
  Click("cmdApply");
  EXPECT_THAT(Messages()[0],
              testing::HasSubstr("WriteValue/Network Input: nviSpaceRH: SCPTmaxRcvTime: \"7000\""));
  EXPECT_EQ(StoredOf("nviCO2", 1, "SCPTmaxRcvTime"), before);
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_occupancy") << "taken back";
  Type(Indexed("txtnvi", 20), "600");
  Click("cmdApply");
  EXPECT_EQ(StoredOf("nviCO2", 1, "SCPTmaxRcvTime"), "70.0");
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_tod_event");
  EXPECT_EQ(base::Record(StoredOf("nviOccCmd", 2, "SCPTnvType")).Field(9), "128");
  EXPECT_FALSE(OptimumStart());

  Choose("nviOccCmd", "SNVT_occupancy");
  EXPECT_TRUE(OptimumStart());
  Click("cmdRefresh");
  EXPECT_FALSE(OptimumStart()) << "a refresh drops what was not saved";
  EXPECT_EQ(Text(Indexed("lblType", 0)), "SNVT_tod_event");
  Choose("nviOccCmd", "SNVT_occupancy");
  Click("cmdApply");
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_occupancy");
  EXPECT_TRUE(OptimumStart());

  // After a save the page knows the type of the device, also where it could not be read again.
  Choose("nviOccCmd", "SNVT_tod_event");
  Main().Context().work.InTransaction("Apply", "Main", [this] { return Page("fNetworkInput").WriteValue(); });
  Page("fNetworkInput").EndWriteValue();
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_tod_event");
  Choose("nviOccCmd", "SNVT_occupancy");
  Save();
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "SNVT_occupancy");
}

TEST_F(NetworkInputsTest, ATypeWithAScopeIsTheOneWithoutItAndKeepsItsScope) {
  tests::FailurePlan plan;
  plan.otherText = " SNVT_occupancy  8000AB.SNVT_tod_event ";  // a host that is generous with blanks
  throughHost = tests::FailingBy(plan);
  Open(tests::kPressure);
  plan.Arm(tests::Failure::kOtherText, {1}, false);  // what nviOccCmd allows
  InDialog([&] {
    ChooseRow("lvwVariable", "nviOccCmd");
    EXPECT_EQ(Rows("lvwType").size(), 2u);
    EXPECT_EQ(In<ui::ListView>("lvwType").Selection(), std::vector<std::size_t>{1});
  });
  EXPECT_FALSE(Page("fNetworkInput").IsChanged());

  EXPECT_EQ(Text(Indexed("lblType", 0)), "SNVT_tod_event");
  EXPECT_FALSE(OptimumStart());
  Choose("nviOccCmd", "SNVT_tod_event");
  EXPECT_FALSE(Page("fNetworkInput").IsChanged()) << "it has that type already";
  Choose("nviOccCmd", "SNVT_occupancy");
  EXPECT_TRUE(OptimumStart());
  Choose("nviOccCmd", "SNVT_tod_event");
  EXPECT_FALSE(OptimumStart());
  Click("cmdApply");
  EXPECT_EQ(TypeInDevice("nviOccCmd"), "8000AB.SNVT_tod_event");
}

TEST_F(NetworkInputsTest, TheDialogListsWhatTheVariablesAllow) {
  Open(device);
  Find<ui::TextBox>(Indexed("txtnvi", 13)).Enter();
  InDialog([&] {
    const auto variables = Rows("lvwVariable");
    EXPECT_EQ(std::ranges::count(variables, "nviOccCmd"), 1);
    EXPECT_EQ(std::ranges::count(variables, "nviCO2"), 0) << "it allows one type only";
    const std::size_t selected = In<ui::ListView>("lvwVariable").Selection().at(0);
    EXPECT_EQ(variables.at(selected), "nviFanState") << "where the keyboard was";
    EXPECT_EQ(Rows("lvwType"),
              (std::vector<std::string>{"SNVT_switch", "SNVT_amp", "SNVT_amp_ac", "SNVT_amp_f"}));
    EXPECT_EQ(In<ui::ListView>("lvwType").Selection(), std::vector<std::size_t>{0});
  });
  EXPECT_FALSE(Main().Pages().AnyPageChanged());
  // Several in one go, one of them seen again before the dialog is closed.
  InDialog([&] {
    ChooseRow("lvwType", "SNVT_amp");
    ChooseRow("lvwVariable", "nviSpaceTemp");
    ChooseRow("lvwType", "SNVT_temp_f");
    ChooseRow("lvwVariable", "nviFanState");
    EXPECT_EQ(In<ui::ListView>("lvwType").Selection(), std::vector<std::size_t>{1});
  });
  Click("cmdApply");
  EXPECT_EQ(TypeInDevice("nviFanState"), "SNVT_amp");
  EXPECT_EQ(TypeInDevice("nviSpaceTemp"), "SNVT_temp_f");
}

}  // namespace
