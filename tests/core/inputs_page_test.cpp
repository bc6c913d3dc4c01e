#include <chrono>
#include <thread>

#include "editor.h"
#include "tool_test.h"

namespace {

struct InputsTest : tests::ToolTest {
  std::string Input(const char* name, int number) {
    return "fHardwareInput." + std::string(name) + "(" + std::to_string(number - 1) + ")";
  }
  std::string Function(int number) { return Find<ui::ListBox>(Input("cboInput", number)).SelectedText(); }
  std::string StoredInput(int number, int property, const char* format) {
    return building.StoredText(device, "HardwareInput" + std::to_string(number), property, format);
  }

  /// Opens the sensor dialog of an input over two controls; `act` is what the person does in it.
  void InDialog(int number, const std::function<void()>& act) {
    for (auto* editor : {&variable, &hardware}) *editor = std::make_shared<tests::Editor>();
    controls.make = [this](const std::string& name, const auto&) {
      return automation::Object(name == "ctlSensorNV1" ? variable : hardware);
    };
    controls.onCreate = [this](ui::ControlSite& site) { dialog = &site.GetForm(); };
    loop.whileOpen = act;
    Click(Input("cmdConfigure", number));
  }
  static std::string Defaults(const std::string& function, bool applied) {
    return "ApplyDefaultValues/Hardware Input: The default '" + function + "' configuration settings were " +
           (applied ? "applied successfully" : "not applied");
  }
  void ClickInDialog(const char* button) { ClickIn(*dialog, button); }

  const char* device = tests::kUnassigned;
  std::shared_ptr<tests::Editor> variable;
  std::shared_ptr<tests::Editor> hardware;
  ui::Form* dialog = nullptr;
};

constexpr const char* kCanceled = "Configure/Sensor Input: Configuring sensor input was canceled.";

TEST_F(InputsTest, TheSameFunctionTwiceIsRefused) {
  Open(device);
  prompts.answers = {ui::Answer::kNo};
  AssignInput(1, "SPACE_TEMP");
  AssignInput(2, "SPACE_TEMP");
  EXPECT_EQ(prompts.Last().text, "This input is already selected, please select another one.");
  EXPECT_EQ(Function(2), "UNUSED");
  EXPECT_EQ(Text(Input("lblSensor", 2)), "");
  EXPECT_EQ(Main().Selections().GetSelectedInputType(1), "UNUSED");
  EXPECT_FALSE(Find(Input("cmdConfigure", 2)).Enabled());
  EXPECT_TRUE(Find(Input("cmdConfigure", 1)).Enabled());
  Click("cmdApply");
  EXPECT_EQ(StoredInput(1, 3, "UCPTroofTopInputType"), "SPACE_TEMP");
}

TEST_F(InputsTest, DefaultsAreOfferedForFiveFunctionsOnly) {
  Open(device);
  const struct {
    std::string function, sensor;  // empty: no question
    int property;
    const char* format;
    std::string value, variable;
  } cases[] = {
      {"SPACE_TEMP", "STD_THERMISTOR", 6, "UCPTthermistorOffset#SI", "0.00", "SNVT_temp_p"},
      {"SPACE_ENTHALPY", "LINEAR", 4, "UCPTsensorScale", "0.00 10.00 0.00 100.00", "SNVT_enthalpy"},
      {"SPACE_HUMIDITY", "LINEAR", 4, "UCPTsensorScale", "0.00 10.00 0.00 100.00", "SNVT_lev_percent"},
      {"CO2_LEVEL", "LINEAR", 4, "UCPTsensorScale", "0.00 10.00 0.00 2000.00", "SNVT_ppm"},
      {"SETPOINT", "SETPOINT_OFFSET", 9, "UCPTsetpointOffsetRange#SI", "-3.00 3.00", "SNVT_temp_diff_p"},
      {"RETURN_TEMP", "", 0, "", "", ""},
      {"OCC_CONTACT", "", 0, "", "", ""},
      {"UNUSED", "", 0, "", "", ""},
  };
  for (const auto& item : cases) {
    prompts.asked.clear();
    prompts.answers = {ui::Answer::kYes};
    AssignInput(3, item.function);
    EXPECT_EQ(prompts.asked.size(), item.sensor.empty() ? 0u : 1u) << item.function;
    if (item.sensor.empty()) continue;
    EXPECT_EQ(prompts.asked[0].text, "Do you want to set " + item.function +
                                         " configuration properties to the default values ?\r\n"
                                         "If yes, this process takes a few secondes.");
    EXPECT_EQ(prompts.asked[0].title, "QVR KV-TARN Configuration");
    EXPECT_EQ(prompts.asked[0].buttons, ui::Buttons::kYesNoCancel);
    EXPECT_EQ(LastMessage(), Defaults(item.function, true));
    EXPECT_EQ(StoredInput(3, 2, "UCPTsensorType"), item.sensor);
    EXPECT_EQ(StoredInput(3, item.property, item.format), item.value);
    EXPECT_EQ(Main().Device().InputVariables[3]["nvoHwInput3"].Type(), item.variable);
  }
}

TEST_F(InputsTest, CancelTakesTheChoiceBackAndAFailureIsTold) {
  Open(device);
  prompts.answers = {ui::Answer::kCancel};
  AssignInput(1, "SETPOINT");
  EXPECT_EQ(Function(1), "UNUSED");
  building.Faults().Fail({.member = "Property.Value"});
  AssignInput(1, "FAN_STATE");
  EXPECT_EQ(Function(1), "UNUSED") << "its sensor could not be read";
  EXPECT_EQ(Main().Selections().GetSelectedInputType(0), "UNUSED");
  EXPECT_FALSE(Main().Pages().AnyPageChanged());
  prompts.answers = {ui::Answer::kYes};
  building.Faults().Fail({.member = "NetworkVariable.MvFormatType"});
  AssignInput(1, "SETPOINT");
  EXPECT_EQ(LastMessage(), Defaults("SETPOINT", false));
  EXPECT_EQ(Function(1), "SETPOINT") << "the function itself stays chosen";
  EXPECT_EQ(StoredInput(1, 2, "UCPTsensorType"), "DISCONNECTED") << "nothing of the defaults is left";
  // The device tells what became of a commit without an answer.
  for (const bool taken : {false, true}) {
    prompts.answers = {ui::Answer::kYes};
    building.Faults().Fail({.member = "Network.CommitTransaction", .loseAnswer = taken});
    const std::string function = taken ? "SPACE_HUMIDITY" : "CO2_LEVEL";
    AssignInput(2 + taken, function);
    EXPECT_EQ(StoredInput(2 + taken, 2, "UCPTsensorType") == "LINEAR", taken);
    EXPECT_EQ(LastMessage(), Defaults(function, taken));
  }
}

TEST_F(InputsTest, TheSensorDialogGetsTheChoicesOfTheFunctionAndCancelShowsWhatApplyWrote) {
  Open(device);
  AssignInput(5, "MODE_SELECTOR");
  Click(Input("cmdConfigure", 5));
  EXPECT_THAT(LastMessage(), testing::HasSubstr("\"MVConfigSensor.ctlSensorNV\" is not registered"));

  building.Faults().StartCounting();
  InDialog(5, [this] {
    ClickInDialog("cmdApply");
    ClickInDialog("cmdCancel");
  });
  EXPECT_EQ(hardware->initialized, std::vector<std::string>{"RTU-2 South wing 5 5"});
  EXPECT_EQ(variable->initialized, hardware->initialized);
  EXPECT_EQ(hardware->writes, 0) << "nothing was changed";
  EXPECT_EQ(building.Faults().Count("Network.BeginTransaction"), 0u);
  EXPECT_EQ(LastMessage(), kCanceled);
  EXPECT_TRUE(controls.alive.empty());

  ClearLog();
  prompts.asked.clear();
  InDialog(5, [&] {
    hardware->changed = true;
    hardware->onWrite = [&] {
      Main().Device().InputProperties[5][2].Object().Put("Value", "MULTI_LEVEL");
      ClickInDialog("cmdApply");  // a second one meanwhile
      ClickInDialog("cmdCancel");
      Find<ui::Button>("cmdRefresh").Click();
    };
    ClickInDialog("cmdApply");
    EXPECT_EQ(hardware->writes, 1);
    ClickInDialog("cmdCancel");
  });
  EXPECT_EQ(LastMessage(), kCanceled);
  EXPECT_TRUE(prompts.asked.empty());
  EXPECT_EQ(Text(Input("lblSensor", 5)), "MULTI_LEVEL");
}

// What the two controls of the dialog say, what the device holds then, and whether the dialog is closed by
// OK.
TEST_F(InputsTest, TheSensorDialogWritesAllOrNothing) {
  const struct {
    const char* what;
    bool accepts;         // the second control, after the first one has written
    const char* raises;   // the member of the second one that fails
    const char* failing;  // of the network
    bool loseAnswer, kept, closed;
  } cases[] = {
      {"both write", true, "", nullptr, false, true, true},
      {"one refuses", false, "", nullptr, false, false, false},
      {"one raises an error", true, "WriteValue", nullptr, false, false, false},
      {"one cannot say whether it was changed", true, "IsChanged", nullptr, false, true, true},
      {"no transaction", true, "", "Network.BeginTransaction", false, false, false},
      {"the commit is refused", true, "", "Network.CommitTransaction", false, false, false},
      {"the commit is not confirmed", true, "", "Network.CommitTransaction", true, true, false},
  };
  Open(device);
  AssignInput(5, "MODE_SELECTOR");
  Click("cmdApply");
  for (const auto& item : cases) {
    host::Property& sensor = Main().Device().InputProperties[5][2];
    sensor.Object().Put("Value", "DISCONNECTED");
    Click("cmdRefresh");
    prompts.asked.clear();
    InDialog(5, [&] {
      variable->changed = true;
      variable->onWrite = [&] { sensor.Object().Put("Value", "MULTI_LEVEL"); };
      hardware->accepts = item.accepts;
      hardware->raises = item.raises;
      if (item.failing)
        building.Faults().Fail({.member = item.failing, .once = false, .loseAnswer = item.loseAnswer});
      ClickInDialog("cmdOK");
      building.Faults().Clear();
      const bool open = dynamic_cast<ui::Window&>(*dialog).Visible();
      EXPECT_EQ(open, !item.closed) << item.what;
      EXPECT_EQ(variable->finished, item.closed) << item.what;
      EXPECT_EQ(prompts.asked.size(), item.closed ? 0u : 1u) << item.what;
      if (open) ClickInDialog("cmdCancel");
    });
    EXPECT_EQ(hardware->writes, variable->writes) << item.what << ": the other control is asked all the same";
    const char* held = item.kept ? "MULTI_LEVEL" : "DISCONNECTED";
    EXPECT_EQ(StoredInput(5, 2, "UCPTsensorType"), held) << item.what;
    EXPECT_EQ(Text(Input("lblSensor", 5)).substr(0, std::string(held).size()), held) << item.what;
    EXPECT_EQ(LastMessage() == kCanceled, !item.closed) << item.what << ": " << LastMessage();
  }
  EXPECT_EQ(prompts.Last().text, "An error as occured while writing the value in the database");
  EXPECT_EQ(prompts.Last().icon, ui::Icon::kInformation);
}

TEST_F(InputsTest, ALanguageChosenElsewhereReachesTheDialogAndTranslatesNoNamesOfTheDevice) {
  Open(device);
  AssignInput(5, "MODE_SELECTOR");
  std::this_thread::sleep_for(std::chrono::seconds(1));  // the component counts in seconds
  building.Language().Put("Language", "French");
  InDialog(5, [this] {
    EXPECT_EQ(dialog->Find("cmdCancel")->Text(), "Annuler");
    ClickInDialog("cmdCancel");
  });
  prompts.answers = {ui::Answer::kYes};
  AssignInput(1, "SETPOINT");
  EXPECT_THAT(prompts.Last().text, testing::HasSubstr(" SETPOINT "));
  EXPECT_THAT(LastMessage(), testing::HasSubstr("SETPOINT"));
  building.Faults().Fail({.member = "Property.Value"});
  AssignInput(2, "FAN_STATE");
  EXPECT_THAT(LastMessage(), testing::HasSubstr("Entrée 2: "));
}

}  // namespace
