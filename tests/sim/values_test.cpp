// Types, units, texts: what every property of the controller reads and takes.
#include "building_fixture.h"
#include "simulator/catalogue.h"
#include "simulator/core.h"
#include "simulator/value_text.h"

namespace sim_test {

/// What each of these shows reads as the same value.
static void ReadBack(const std::vector<simulator::PropertyTemplate>& properties) {
  for (const char decimal : {'.', ','}) {
    for (const auto& property : properties) {
      for (const bool us : {false, true}) {
        const simulator::Presentation shown{{property.type, us}, 9, base::Numbers(decimal)};
        const std::string text = simulator::FormatValue(shown, property.initial);
        // Without a present value nothing can be kept: the text alone must give the value.
        const simulator::Fields again = simulator::ParseValue(shown, property.name, text, {});
        EXPECT_EQ(simulator::FormatValue(shown, again), text) << property.key;
      }
    }
  }
}

TEST(SimValues, EveryDefaultIsReadBackToItselfInEveryUnitAndLocale) {
  const simulator::Core core(Options());
  for (const auto& object : core.deviceTemplate.objects) {
    ReadBack(object.properties);
    for (const auto& variable : object.variables) ReadBack(variable.properties);
  }
}

TEST_F(OpenBuilding, UnitsAreConvertedByHandCalculatedFigures) {
  const std::tuple<int, std::string, std::string, std::string, int, const char*> cases[] = {
      {4, "SCPTmaxDischargeAirHeatingSetpoint", "40", "#US", 3, "104.000"},
      {36, "UCPTreturnTempAlarm", "-40 120 60", "#US", 3, "-40.000 248.000 60.000"},
      {35, "UCPTspaceTempAlarm", "3 1800", "#US", 3, "5.400 1800.000"},  // a difference has no offset
      {47, "UCPTweightAvgMaxInOffset", "2", "#DegF", 1, "3.6"},
      {13, "UCPTmaxSupplyPressure", "600", "#US", 5, "2.40878"},
      {7, "SCPToutdoorAirEnthalpySetpoint", "63", "#US", 3, "27.085"},
      {30, "UCPTspaceTempPIDparam", "18 0.5 9 60 -1.8 5", "#US", 4,
       "10.0000 0.9000 5.0000 60.0000 -1.0000 5.0000"},
      {33, "UCPTpressurePIDparam", "0.12 12.5 0 60 0 0 35", "#US", 5,
       "29.89067 0.05018 0.00000 60.00000 0.00000 0.00000 35.00000"},
      {32, "UCPTCO2PIDparam", "0.25 50 0 0 0 0", "", 2, "0.25 50.00 0.00 0.00 0.00 0.00"},
  };
  for (const auto& [number, name, si, us, precision, expected] : cases) {
    const automation::Object property = client.Property("RoofTopObject", number);
    property.Put("Value", si);
    property.Put("formatName", name + us);
    property.Put("Precision", precision);
    EXPECT_EQ(property.Text("Value"), expected) << name;
  }
}

TEST_F(OpenBuilding, OneChangedFieldLeavesTheOthersAtFullPrecision) {
  const automation::Object property = client.Property("RoofTopObject", 33);
  property.Put("Value", "0.123456 12.3456 0.5 60 0 0 35.4321");
  property.Put("formatName", "UCPTpressurePIDparam#US");
  property.Put("Precision", 2);
  EXPECT_EQ(property.Text("Value"), "30.75 0.05 124.54 60.00 0.00 0.00 35.43");
  property.Put("Value", "30.75 0.05 124.54 90.00 0 0.00 35.43");
  EXPECT_EQ(building.StoredText(kFirstDevice, "RoofTopObject", 33, "UCPTpressurePIDparam", 4),
            "0.1235 12.3456 0.5000 90.0000 0.0000 0.0000 35.4321");
}

TEST_F(OpenBuilding, RefusalsNameThePropertyTheTextAndTheRangeInTheUnitInUse) {
  const std::tuple<const char*, int, std::string, std::string, const char*> cases[] = {
      {"RoofTopObject", 30, "UCPTspaceTempPIDparam#US", "9999 1 1 1 1 1",
       "\"9999\" is outside the range -100 to 100 % / °F (field 1, proportional gain)."},
      {"RoofTopObject", 30, "UCPTspaceTempPIDparam#SI", "1 25.1 1 1 1 1",
       "\"25.1\" is outside the range 0 to 25 °C (field 2, dead band)."},
      {"RoofTopObject", 12, "SCPTlimitCO2", "many", "\"many\" is not a number from 0 to 5000 ppm."},
      {"RoofTopObject", 3, "SCPTsetPnts#SI", "24  26 28 21 19 16",
       "\"24  26 28 21 19 16\" has 7 fields; 6 are expected."},
      {"RoofTopObject", 52, "UCPTextraConfig", "60.5 60 100 120 0",
       "\"60.5\" is not a whole number from 10 to 120 min (field 1, heating/cooling cycle time)."},
      {"HardwareOutput1", 3, "UCPTroofTopOutputType", "HEATING_9", "\"HEATING_9\" is not allowed."},
      {"HardwareOutput1", 6, "UCPTlocalHardwareFlag", "yes", "\"yes\" is not 0 or 1."},
      {"NodeObject", 2, "SCPTlocation", "1234567890123456789012345678901",
       "\"1234567890123456789012345678901\" has 31 characters; at most 30 are allowed."},
  };
  for (const auto& [object, number, format, given, sentence] : cases) {
    const automation::Object property = client.Property(object, number);
    property.Put("formatName", format);
    const std::string before = property.Text("Value");
    std::uint32_t code = 0;
    const std::string refusal = RefusalOf([&, text = given] { property.Put("Value", text); }, &code);
    EXPECT_EQ(refusal, format.substr(0, format.find('#')) + ": " + sentence);
    EXPECT_EQ(code, automation::kApplicationDefined);
    EXPECT_EQ(property.Text("Value"), before) << format;
  }
  const automation::Object humidity = client.Property("RoofTopObject", 41);
  EXPECT_EQ(RefusalOf([&] { humidity.Put("formatName", "UCPTnothing"); }),
            "There is no format \"UCPTnothing\".");
  EXPECT_EQ(RefusalOf([&] { humidity.Put("formatName", "UCPTCO2Alarm"); }),
            "UCPThumidityAlarm is of type UCPThumidityAlarm; the format \"UCPTCO2Alarm\" does not fit it.");
  EXPECT_EQ(RefusalOf([&] { humidity.Put("Precision", 10); }),
            "UCPThumidityAlarm: the precision 10 is outside the range 0 to 9.");
  EXPECT_EQ(RefusalOf([&] { client.Variable("RoofTopObject", "nviOccCmd").Put("MvFormatType", "SNVT_ppm"); }),
            "nviOccCmd: the type \"SNVT_ppm\" is not allowed; allowed: SNVT_occupancy, SNVT_tod_event.");
}

TEST(SimValues, TextsThatMustBeTaken) {
  const std::tuple<const char*, int, std::string, std::string, const char*> cases[] = {
      {"RoofTopObject", 3, "SCPTsetPnts#US", "77,0 77,9 82 68 60,8 59", "25,0 25,5 27,8 20,0 16,0 15,0"},
      // The limit as a refusal shows it.
      {"RoofTopObject", 13, "UCPTmaxSupplyPressure#US", "10,0366", "2500,0"},
      {"RoofTopObject", 12, "SCPTlimitCO2", " 800 ", "800,0"},
      // A constant of a program, not a typed number.
      {"HardwareOutput1", 4, "SNVT_switch", "100.0 1", "100,0 1"},
      {"HardwareOutput1", 3, "UCPTroofTopOutputType", "cool_valve_open", "COOL_VALVE_OPEN"},
      {"NodeObject", 2, "SCPTlocation", " Dächer über  der Küche Süd 12", " Dächer über  der Küche Süd 12"},
      {"NodeObject", 2, "SCPTlocation", "", ""},
  };
  simulator::Building building(Options({}, ','));
  const Client client(building);
  for (const auto& [object, number, format, text, stored] : cases) {
    const automation::Object property = client.Property(object, number);
    property.Put("formatName", format);
    property.Put("Value", text);
    const std::string bare = format.substr(0, format.find('#'));
    EXPECT_EQ(building.StoredText(kFirstDevice, object, number, bare, 1), stored) << format;
  }
  const automation::Object limit = client.Property("RoofTopObject", 12);
  EXPECT_EQ(RefusalOf([&] { limit.Put("Value", "1.000"); }),
            "SCPTlimitCO2: \"1.000\" is not a number from 0 to 5000 ppm.");
}

}  // namespace sim_test
