// The maker's editing controls over the virtual building, without a container: driven through their
// automation members, and by a person through their boxes and lists.
#include "base/text.h"
#include "building_fixture.h"
#include "simulator/controls/actuator.h"
#include "simulator/controls/sensor_hardware.h"
#include "simulator/controls/sensor_variable.h"

namespace {

using controls::Actuator;
using controls::SensorHardware;
using controls::SensorVariable;
using sim_test::RefusalOf;

/// An editor with what a dialog holds of it.
template <class Kind>
struct Opened {
  Opened(const sim_test::Client& client, int number, const std::string& choice) : control(editor) {
    editor->onFailed = [this](const std::string& text) { failures.push_back(text); };
    control.Call("Initialize", client.device, number, choice);
  }

  const ui::PageArea& Sections() const {
    return dynamic_cast<ui::PageArea&>(*editor->GetWindow().Find("areSettings"));
  }
  template <class T>
  T& Find(const std::string& section, const std::string& name) const {
    return dynamic_cast<T&>(*(*std::ranges::find(Sections().Forms(), section, &ui::Form::Name))->Find(name));
  }
  ui::ListBox& List(const std::string& name) const {
    return dynamic_cast<ui::ListBox&>(*editor->GetWindow().Find(name));
  }
  void Type(const std::string& section, int box, const std::string& text) const {
    EXPECT_TRUE(Find<ui::TextBox>(section, "txt(" + std::to_string(box) + ")").Type(text));
  }
  bool Choose(const std::string& list, const std::string& text) const { return List(list).Choose(text); }
  std::string Items(const std::string& list) const { return base::Join(List(list).Items(), ", "); }
  std::string ShownSection() const { return Sections().Shown()->Name(); }
  bool IsChanged() const { return control.Get("IsChanged").AsBool(); }
  bool WriteValue() const { return control.Call("WriteValue").AsBool(); }

  std::shared_ptr<controls::Editor> editor = std::make_shared<Kind>();
  automation::Object control;
  std::vector<std::string> failures;
};

struct Controls : sim_test::OpenBuilding {
  std::string Stored(const std::string& object, int number, const std::string& format) const {
    return building.StoredText(sim_test::kFirstDevice, object, number, format);
  }
};

TEST_F(Controls, SensorTypesFollowTheChoiceList) {
  const std::tuple<int, std::string, std::string, std::string> cases[] = {
      {1, "2,3,6", "Linear, Translation table, Standard thermistor, Disconnected", "ctlSensorThermistor"},
      {4, "2", "Linear, Disconnected", "ctlSensorLinear"},
      {6, " 4 ", "Digital contact, Disconnected", "ctlSensorContact"},
      // What is connected now stays in the list though it does not fit any more.
      {1, "5", "Standard thermistor, Multi-level switch, Disconnected", "ctlSensorThermistor"},
      {4, "", "Linear, Disconnected", "ctlSensorLinear"},
  };
  for (const auto& [input, choice, types, section] : cases) {
    SCOPED_TRACE(choice);
    const Opened<SensorHardware> sensor(client, input, choice);
    EXPECT_EQ(sensor.Items("lstSensorType"), types);
    EXPECT_EQ(sensor.ShownSection(), section);
    EXPECT_FALSE(sensor.IsChanged());
  }
}

TEST_F(Controls, EverySensorStoresItsOwnSettings) {
  const struct {
    int input, box, property;  // box -1: the list
    std::string choice, caption, section, name, entered, format, stored;
  } cases[] = {
      {4, 3, 4, "2", "Linear", "ctlSensorLinear", "LINEAR", "5000", "UCPTsensorScale",
       "0.00 10.00 0.00 5000.00"},
      {2, 9, 5, "2,3,6", "Translation table", "ctlSensorTable", "TRANS_TABLE", "12.5", "UCPTtranslationTable",
       "0.00 1.50 3.00 4.50 6.00 7.50 9.00 10.00 0.00 12.50 30.00 45.00 60.00 75.00 90.00 100.00"},
      {1, 0, 6, "2,3,6", "Standard thermistor", "ctlSensorThermistor", "STD_THERMISTOR", " -1.5 ",
       "UCPTthermistorOffset", "-1.50"},
      {3, 1, 8, "5", "Multi-level switch", "ctlSensorLevels", "MULTI_LEVEL", "3.25", "UCPTmultiLevelTable",
       "1.00 3.25 5.00 7.00"},
      {5, 0, 9, "2,3,7", "Setpoint offset", "ctlSensorOffset", "SETPOINT_OFFSET", "-2",
       "UCPTsetpointOffsetRange", "-2.00 3.00"},
      {6, -1, 7, "4", "Digital contact", "ctlSensorContact", "DIGITAL", "Normally closed", "UCPTcontactSense",
       "NORMALLY_CLOSED"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.caption);
    const std::string object = "HardwareInput" + std::to_string(c.input);
    Opened<SensorHardware> sensor(client, c.input, c.choice);
    EXPECT_TRUE(sensor.Choose("lstSensorType", c.caption));
    EXPECT_EQ(sensor.ShownSection(), c.section);
    if (c.box < 0) sensor.Find<ui::ListBox>(c.section, "lst").Choose(c.entered);
    if (c.box >= 0) sensor.Type(c.section, c.box, c.entered);
    EXPECT_TRUE(sensor.IsChanged());
    EXPECT_TRUE(sensor.WriteValue());
    EXPECT_FALSE(sensor.IsChanged());
    EXPECT_EQ(Stored(object, 2, "UCPTsensorType"), c.name);
    EXPECT_EQ(Stored(object, c.property, c.format), c.stored);

    const Opened<SensorHardware> again(client, c.input, c.choice);
    EXPECT_EQ(again.ShownSection(), c.section);
    EXPECT_FALSE(again.IsChanged());
  }
}

TEST_F(Controls, ARefusedValueIsToldAndKept) {
  Opened<SensorHardware> sensor(client, 4, "2,3");
  EXPECT_TRUE(sensor.Choose("lstSensorType", "Translation table"));
  for (const char* entered : {"11", "", "1 0", "warm"}) {
    sensor.Type("ctlSensorTable", 7, entered);
    EXPECT_FALSE(sensor.WriteValue());
    EXPECT_EQ(sensor.Find<ui::TextBox>("ctlSensorTable", "txt(7)").Text(), entered);
    EXPECT_TRUE(sensor.IsChanged());
    // Not a new type with settings that were refused.
    EXPECT_EQ(Stored("HardwareInput4", 2, "UCPTsensorType"), "LINEAR");
  }
  using testing::HasSubstr;
  EXPECT_THAT(sensor.failures, testing::ElementsAre(HasSubstr("10"), HasSubstr("number"), HasSubstr("blank"),
                                                    HasSubstr("warm")));
  sensor.Type("ctlSensorTable", 7, "9.5");
  EXPECT_TRUE(sensor.WriteValue());
}

TEST_F(Controls, ValuesAreShownInSiAndWrittenAgainAfterACancelledTransaction) {
  const automation::Object offset = client.Property("HardwareInput1", 6);
  offset.Put("Value", "5");
  offset.Put("formatName", "UCPTthermistorOffset#US");
  const Opened<SensorHardware> sensor(client, 1, "2,3,6");
  EXPECT_EQ(sensor.Find<ui::TextBox>("ctlSensorThermistor", "txt(0)").Text(), "5.00");
  offset.Put("formatName", "UCPTthermistorOffset#US");
  sensor.Type("ctlSensorThermistor", 0, "6");
  client.network.Call("BeginTransaction");
  EXPECT_TRUE(sensor.WriteValue());
  EXPECT_FALSE(sensor.IsChanged());
  client.network.Call("CancelTransaction");
  EXPECT_EQ(Stored("HardwareInput1", 6, "UCPTthermistorOffset"), "5.00");
  EXPECT_TRUE(sensor.IsChanged());
  EXPECT_TRUE(sensor.WriteValue());
  EXPECT_EQ(Stored("HardwareInput1", 6, "UCPTthermistorOffset"), "6.00");
}

TEST_F(Controls, VariableTypesSuitTheFunction) {
  const std::tuple<int, std::string, std::string> cases[] = {
      {1, "2,3,6", "SNVT_temp_p, SNVT_temp, SNVT_temp_f"},
      {4, "2", "SNVT_ppm"},
      {6, "4", "SNVT_switch, SNVT_lev_disc"},
      // The function was changed and not yet stored: the choice list says what it may be.
      {4, "2,3", "SNVT_enthalpy, SNVT_ppm"},
      {5, "2,4", "SNVT_switch, SNVT_amp, SNVT_amp_ac, SNVT_amp_f, SNVT_lev_disc, SNVT_lev_percent"},
  };
  for (const auto& [input, choice, types] : cases) {
    SCOPED_TRACE(choice);
    const Opened<SensorVariable> variable(client, input, choice);
    EXPECT_EQ(variable.Items("lstType"), types);
    EXPECT_FALSE(variable.IsChanged());
  }
  EXPECT_GT(Opened<SensorVariable>(client, 1, "1,2,3").Items("lstType").size(), 150U);  // nothing known

  const Opened<SensorVariable> chosen(client, 2, "2,3,6");
  EXPECT_TRUE(chosen.Choose("lstType", "SNVT_temp_f"));
  EXPECT_TRUE(chosen.WriteValue());
  EXPECT_EQ(client.Variable("HardwareInput2", "nvoHwInput2").Text("MvFormatType"), "SNVT_temp_f");
}

TEST_F(Controls, ActuatorStoresTheSettingsOfItsSignal) {
  EXPECT_FALSE(Opened<Actuator>(client, 1, "DIGITAL").IsChanged());
  EXPECT_FALSE(Opened<Actuator>(client, 7, "").IsChanged());
  Opened<Actuator> actuator(client, 6, "PWM");
  EXPECT_TRUE(actuator.IsChanged()) << "it begins with the signal that it is given";
  EXPECT_TRUE(actuator.Choose("lstSignal", "Analog 0 to 10 V"));
  EXPECT_EQ(actuator.ShownSection(), "ctlActuatorAnalog");
  EXPECT_TRUE(actuator.Choose("lstSignal", "Pulse width (PWM)"));
  EXPECT_EQ(actuator.ShownSection(), "ctlActuatorPwm");
  actuator.Type("ctlActuatorPwm", 0, "30");
  EXPECT_FALSE(actuator.WriteValue());
  EXPECT_THAT(actuator.failures, testing::ElementsAre(testing::HasSubstr("25.5")));
  actuator.Type("ctlActuatorPwm", 0, "4");
  EXPECT_TRUE(actuator.WriteValue());
  EXPECT_EQ(Stored("HardwareOutput6", 8, "UCPTpwmPeriod"), "4.0");
  EXPECT_EQ(Stored("HardwareOutput6", 2, "UCPThardwareSignalType"), "PWM");
}

TEST_F(Controls, WhatDoesNotFitIsRefusedInWords) {
  const automation::Object sensor(std::make_shared<SensorHardware>());
  const automation::Object variable(std::make_shared<SensorVariable>());
  const automation::Object actuator(std::make_shared<Actuator>());
  const std::tuple<automation::Object, int, const char*, const char*> cases[] = {
      {sensor, 7, "2", "There is no hardware input 7: the controller has the hardware inputs 1 to 6."},
      {variable, 0, "2", "There is no hardware input 0: the controller has the hardware inputs 1 to 6."},
      {actuator, 8, "PWM", "There is no hardware output 8: the controller has the hardware outputs 1 to 7."},
      {sensor, 1, "2,9", "There is no sensor choice \"9\"; the choices are 2 to 7."},
      {actuator, 1, "LOUD", "There is no signal \"LOUD\"; the signals are DIGITAL, PWM and ANALOG_0_10V."}};
  for (const auto& [control, number, choice, refusal] : cases)
    EXPECT_EQ(RefusalOf([&] { control.Call("Initialize", client.device, number, choice); }), refusal);
  EXPECT_EQ(RefusalOf([&] { sensor.Call("Initialize", automation::Object(), 1, "2"); }),
            "Initialize needs the device.");
  EXPECT_FALSE(sensor.Get("IsChanged").AsBool());
}

TEST_F(Controls, OnlyWhatChangedIsWrittenAFailureIsToldAndFinishLetsGo) {
  Opened<SensorHardware> sensor(client, 4, "2,3");
  sensor.Type("ctlSensorLinear", 1, "9");
  sensor.Find<ui::TextBox>("ctlSensorTable", "txt(0)").SetText("7");  // not the sensor that is chosen
  EXPECT_TRUE(sensor.WriteValue());
  EXPECT_EQ(Stored("HardwareInput4", 5, "UCPTtranslationTable").substr(0, 4), "0.00");
  sensor.Type("ctlSensorLinear", 0, "1");
  building.Faults().Fail({.member = "Property.Value", .call = 2});
  EXPECT_FALSE(sensor.WriteValue());
  EXPECT_EQ(sensor.failures.size(), 1U);
  EXPECT_TRUE(sensor.IsChanged());
  sensor.control.Call("Finish");
  EXPECT_FALSE(sensor.IsChanged());
  EXPECT_TRUE(sensor.WriteValue());
  EXPECT_EQ(Stored("HardwareInput4", 4, "UCPTsensorScale"), "0.00 9.00 0.00 2000.00");
}

}  // namespace
