// The as-left record over the virtual building: written for each unit, in both unit systems, in two
// languages, and kept in the build folder for a browser to show.
#include <filesystem>
#include <fstream>
#include <set>

#include "configuration/record.h"
#include "configuration/record_places.h"
#include "host/device_tree.h"
#include "host/input_functions.h"
#include "host/output_functions.h"
#include "tool_test.h"

namespace {

using configuration::Document;
using configuration::RecordInput;
using configuration::Snapshot;
using configuration::Value;

/// What is wrong with a document as XML, or nothing: tags closed in order, attributes quoted, nothing
/// unescaped. Counts the marked fields.
std::string Fault(std::string_view text, std::map<std::string, int>& fields) {
  std::vector<std::string> open;
  if (!text.starts_with("<!DOCTYPE html>\n")) return "no document type";
  text.remove_prefix(15);
  while (!text.empty()) {
    const std::size_t start = std::min(text.find('<'), text.size());
    const std::string_view words = text.substr(0, start);
    for (std::size_t i = words.find('&'); i != words.npos; i = words.find('&', i + 1)) {
      const std::string_view entity = words.substr(i, words.find(';', i) - i);
      if (entity != "&amp" && entity != "&lt" && entity != "&gt" && entity != "&quot")
        return "stray & in " + std::string(words);
    }
    if (start == text.size()) break;
    const std::size_t end = text.find('>', start);
    if (end == text.npos) return "a tag that does not end";
    std::string tag(text.substr(start + 1, end - start - 1));
    text.remove_prefix(end + 1);
    if (tag.starts_with('/')) {
      if (open.empty() || open.back() != tag.substr(1)) return "not open: " + tag;
      open.pop_back();
      continue;
    }
    if (std::ranges::count(tag, '"') % 2 || tag.find('<') != tag.npos) return "quotation marks: " + tag;
    constexpr std::string_view kMark = "data-field=\"";
    if (const std::size_t mark = tag.find(kMark); mark != tag.npos)
      ++fields[tag.substr(mark + kMark.size(), tag.find('"', mark + kMark.size()) - mark - kMark.size())];
    if (!tag.ends_with('/')) open.push_back(tag.substr(0, tag.find(' ')));
  }
  return open.empty() ? "" : "not closed: " + open.back();
}

/// A language component without a translation that notes what it was asked for.
struct Listener : automation::Target, std::enable_shared_from_this<Listener> {
  automation::Value Invoke(automation::Access, std::string_view member,
                           std::span<const automation::Value> arguments) override {
    if (member == "Section") return automation::Object(shared_from_this());
    if (member == "Font") return "";
    if (member != "Item") return 1;
    asked.insert(arguments[0].AsText());
    return {};
  }
  std::set<std::string> asked;
};

bool Has(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

/// The whole tool over one unit.
struct Unit : tests::Tool {
  explicit Unit(const char* name) : device(name) {
    Open(device);
    Take();
  }
  void Speak(const char* language, bool imperial) {
    Find<ui::OptionButton>(imperial ? "optUnit(1)" : "optUnit(0)").Click();
    program.GetStrings().SetLanguage(language);
    Main().ReInitializeStrings();
    Take();
  }
  /// What the unit holds, in the language and units in use.
  void Take() {
    snapshot.head = {"1.2.3",
                     "8000AB0C12340001",
                     "3.1",
                     "Harbour Street",
                     device,
                     "Roof north, bay 3",
                     "2026-11-22T13:05:00Z",
                     Find<ui::OptionButton>("optUnit(1)").Selected(),
                     "",
                     ""};
    snapshot.values.clear();
    for (const fields::Field* field : Main().Pending().Fields())
      snapshot.values.push_back(
          configuration::ValueOf(*field, input.numbers, Main().Pending().DeviceContent(*field)));
    titles.clear();
    for (const shell::PageEntry& entry : Main().Pages().Table())
      titles.push_back({std::string(entry.pageClass), input.strings.GetStrings(entry.title)});
    input.pages = titles;
    input.sensors.clear();
    input.signals.clear();
    const auto stored = [&](const std::string& object, const char* type) {
      return base::Upper(building.StoredText(device, object, 2, type));
    };
    for (int i = 1; i <= 6; ++i)
      input.sensors.push_back(stored("HardwareInput" + std::to_string(i), "UCPTsensorType"));
    for (int i = 1; i <= 7; ++i)
      input.signals.push_back(stored("HardwareOutput" + std::to_string(i), "UCPThardwareSignalType"));
  }
  static void SaySomething(RecordInput& input) {
    input.advice = {{true, "<in manual>", "moves"},
                    {false, "close", "drifts", "A. Bee", "2026-11-22T14:05:00Z", "a museum"}};
    input.checks = {{{"output", "1"},
                     {"function", "FAN_ON_OFF"},
                     {"step", "ON"},
                     {"result", "not moved"},
                     {"remark", "belt"},
                     {"who", "C. Dee"},
                     {"when", "2026-11-23T08:00:00Z"}}};
  }
  Value& At(std::string_view page, std::string_view control) {
    return const_cast<Value&>(*snapshot.Find(page, control));
  }
  static void Keep(const std::string& name, const std::string& record, const std::string& csv) {
    // To be looked at: beside the building's data, wherever the tests are run from.
    const auto folder = std::filesystem::path(SIM_DATA_DIR).parent_path() / "records";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / (name + ".html"), std::ios::binary) << record;
    std::ofstream(folder / (name + ".csv"), std::ios::binary) << csv;
  }

  std::string device;
  Snapshot snapshot;
  std::vector<configuration::PageTitle> titles;
  RecordInput input{.snapshot = snapshot,
                    .pages = {},
                    .strings = program.GetStrings(),
                    .numbers = base::Numbers('.'),
                    .request = {"J. Weber", "Harbour Street 12\nHamburg", ""},
                    .time = "2026-11-22 14:05",
                    .verified = true};
};

TEST(AsLeftRecord, HoldsEveryFieldOnceInEveryUnitAndLanguage) {
  const char* devices[] = {tests::kAssigned, tests::kUnassigned, tests::kPressure};
  for (std::size_t i = 0; i < std::size(devices); ++i) {
    Unit unit(devices[i]);
    for (const auto& [language, code, imperial] :
         {std::tuple("English", "en", false), {"English", "en", true}, {"German", "de", false}}) {
      unit.Speak(language, imperial);
      const std::string record = configuration::WriteRecord(unit.input);
      Unit::Keep(std::to_string(i + 1) + (imperial ? "-us-" : "-si-") + code, record,
                 configuration::WriteRecordCsv(unit.input));
      std::map<std::string, int> fields;
      EXPECT_EQ(Fault(record, fields), "");
      EXPECT_EQ(fields.size(), unit.snapshot.values.size());
      for (const Value& value : unit.snapshot.values)
        EXPECT_EQ(fields[value.page + "." + value.control], 1) << value.page << "." << value.control;
      EXPECT_TRUE(Has(record, std::string(" lang=\"") + code));
      EXPECT_EQ(Has(record, ">°F<"), imperial);
      EXPECT_EQ(Has(record, ">°C<"), !imperial);
      EXPECT_FALSE(Has(record, "script"));
      EXPECT_FALSE(Has(record, "src="));
    }
  }
}

TEST(AsLeftRecord, TakesWhateverStandsInTheDeviceAsText) {
  Unit unit(tests::kUnassigned);
  const std::string nasty = "<b>&\"'</style>\x01\r\nx;,";
  unit.snapshot.head.device = unit.snapshot.head.location = nasty;
  unit.input.request.note = "=1+1 \"a;b\"";
  Value& value = unit.At("fHardwareInput", "cboInput(0)");
  value.content = value.shown = value.caption.row = value.caption.frame = nasty;
  std::map<std::string, int> fields;
  const std::string record = configuration::WriteRecord(unit.input);
  EXPECT_EQ(Fault(record, fields), "");
  for (const char* text : {"<b>", "\x01"}) EXPECT_FALSE(Has(record, text)) << text;
  EXPECT_TRUE(Has(record, "content:\"\\3c b\\3e \\26 \\22 \\27 \\3c \\2f style")) << "the foot of each sheet";
  for (const char separator : {',', ';'}) {
    unit.input.numbers = base::Numbers(separator == ',' ? '.' : ',');
    const std::string csv = configuration::WriteRecordCsv(unit.input);
    const std::string headings = base::Join(
        {"Device", "Page", "Group", "Row", "Column", "Value", "Unit", "Used", "Page class", "Control"},
        std::string(1, separator));
    ASSERT_EQ(csv.substr(0, csv.find('\r')), "\xEF\xBB\xBF" + headings);
    const std::string quoted = "\"" + base::ReplaceAll(nasty, "\"", "\"\"") + "\"";
    const std::string line = base::Join({quoted, "Object Inputs", quoted, quoted, "Usage", quoted, "", "Yes",
                                         "fHardwareInput", "cboInput(0)"},
                                        std::string(1, separator));
    EXPECT_TRUE(Has(csv, "\r\n" + line + "\r\n")) << csv.substr(0, 2000);
    EXPECT_TRUE(Has(csv, "\"'=1+1 \"\"a;b\"\"\"")) << "no formula";
  }
}

TEST(AsLeftRecord, SaysWhatIsOpenWhatWasAcceptedAndWhatWasSeen) {
  Unit unit(tests::kUnassigned);
  Unit::SaySomething(unit.input);
  std::map<std::string, int> fields;
  const std::string record = configuration::WriteRecord(unit.input);
  EXPECT_EQ(Fault(record, fields), "");
  for (const char* text : {"<td>Fault</td><td>&lt;in manual&gt;</td><td>moves</td>",
                           "<td>close</td><td>A. Bee</td><td>2026-11-22 14:05 UTC</td><td>a museum</td>",
                           "<td>Output 1, FAN_ON_OFF</td><td>ON</td><td>not moved</td><td>belt</td>"})
    EXPECT_TRUE(Has(record, text)) << text;
  const std::string csv = configuration::WriteRecordCsv(unit.input);
  for (const char* text :
       {",Fault,<in manual>,,Open,", ",Hint,close,,Accepted; A. Bee; 2026-11-22 14:05 UTC; a museum,",
        "\"Output 1, FAN_ON_OFF\",ON,,not moved; belt; C. Dee; 2026-11-23 08:00 UTC,"})
    EXPECT_TRUE(Has(csv, text)) << text;
}

TEST(AsLeftRecord, LaysTablesOutAsThePagesAre) {
  Unit unit(tests::kAssigned);
  const std::string record = configuration::WriteRecord(unit.input);
  for (const char* text :
       {">Offset</th><th scope=\"col\" class=\"n\">Low limit</th><th scope=\"col\" class=\"n\">High "
        "limit</th>",
        "<th scope=\"row\">Space temp</th><td class=\"n\" data-field=\"fAlarm.txtAlarm(0)\">3.000 ",
        "<td class=\"n off\" data-field=\"fPID.txtPressure(0)\">",
        "<th scope=\"row\">Min heating time</th><td class=\"n\" "
        "data-field=\"fHeatCool.txtminHeatPeriod\">4 "})
    EXPECT_TRUE(Has(record, text)) << text;
}

TEST(AsLeftRecord, HasAPlaceForEveryFunctionAndListsTheOthers) {
  using configuration::record::IsUnassigned, configuration::record::PlaceOf;
  for (const std::string_view name : host::kOutputFunctions)
    EXPECT_NE(IsUnassigned(name), PlaceOf(name) != nullptr) << name;
  for (const auto& function : host::InputFunctions())
    EXPECT_NE(IsUnassigned(function.name), PlaceOf(function.name) != nullptr) << function.name;
  Unit unit(tests::kAssigned);
  unit.At("fControlOutput", "cboOutput(4)").content = "UNASSIGNED";
  unit.At("fControlOutput", "cboOutput(2)").content = "NEW_FUNCTION";
  unit.At("fControlOutput", "cboOutput(0)").content = "HEAT_COOL_VALVE_MOD";
  unit.At("fControlOutput", "chkOver(0)").content = "1";
  unit.At("fControlOutput", "txtValue(0)").shown = "35.0";
  unit.input.sensors.resize(1);
  const std::string record = configuration::WriteRecord(unit.input);
  for (const char* text :
       {"Not assigned: O5<", "in this drawing: O3 NEW_FUNCTION (DIGITAL), in manual: ON<",
        "Heating: O1 Heat/cool valve DIGITAL in manual: 35.0 %, O2 Stage 1 DIGITAL, O7 Modulating PWM;",
        "Cooling: O1 Heat/cool valve DIGITAL in manual: 35.0 %, O4 Stage 2 DIGITAL;",
        "Space: I1 Temperature STD_THERMISTOR, I4 CO2 Level, I5 Humidity;"})
    EXPECT_TRUE(Has(record, text)) << text;
}

TEST(AsLeftRecord, DrawsSetpointsAsTheyAre) {
  Unit unit(tests::kAssigned);
  const Snapshot sound = unit.snapshot;
  const struct {
    const char *page, *control, *content, *text;
  } cases[] = {
      {"fHeatCool", "txtSetPoint(3)", "23", "<p>Occupied/Bypass: heating is set higher than cooling.</p>"},
      {"fHeatCool", "txtSetPoint(3)", "22.5", nullptr},  // equal
      {"fHeatCool", "txtSetPoint(4)", "", "<p>Standby, Heating: &quot;&quot; cannot be drawn.</p>"},
      {"fHeatCool", "txtSetPoint(4)", "1e300", "<p>Standby, Heating: &quot;1e300&quot; cannot be drawn.</p>"},
      {"fHeatCool", "txtMinDischCool", "41", "<p>Supply temp: the minimum is higher than the maximum.</p>"},
      {"fAlarm", "txtAlarm(2)", "36", "<p>Return temp: the low alarm limit is higher than the high one.</p>"},
  };
  for (const auto& [page, control, content, text] : cases) {
    unit.snapshot = sound;
    unit.At(page, control).content = unit.At(page, control).shown = content;
    const std::string record = configuration::WriteRecord(unit.input);
    std::map<std::string, int> fields;
    EXPECT_EQ(Fault(record, fields), "");
    EXPECT_FALSE(Has(record, "width=\"-")) << content;
    EXPECT_TRUE(!text || Has(record, text)) << content;
    EXPECT_EQ(Has(record, "higher than"), text && Has(text, "higher than")) << content;
  }
  unit.snapshot.values.clear();
  const std::string empty = configuration::WriteRecord(unit.input);
  EXPECT_TRUE(Has(empty, "<p>Standby, Heating: not recorded.</p>"));
  EXPECT_FALSE(Has(empty, "setpoints-text")) << "nothing to draw";
}

TEST(AsLeftRecord, TellsWhatChangedSinceAnEarlierOne) {
  Unit unit(tests::kAssigned);
  const auto caption = [](const configuration::Value& value) { return "The " + value.control; };
  Document earlier = configuration::ToDocument(unit.snapshot, caption);
  earlier.head.time = "2026-10-02T06:00:00Z";
  unit.input.earlier = &earlier;
  EXPECT_TRUE(Has(configuration::WriteRecord(unit.input), "No value is different."));
  const auto entry = [&](std::string_view control) {
    return std::ranges::find(earlier.entries, control, &configuration::Entry::control);
  };
  entry("txtPIDTemp(0)")->content = "30.5";
  entry("txtPIDTemp(1)")->content = "0.30000";  // the same number
  entry("chkPID")->content = "0";
  entry("txtminHeatPeriod")->control = "txtGone";
  unit.input.numbers = base::Numbers(',');
  unit.input.shown = [](auto, auto control, auto content) {
    return control == "chkPID" ? "OFF" : std::string(content);
  };
  const std::string record = configuration::WriteRecord(unit.input);
  const std::size_t start = record.find(">Changes since the record of 2026-10-02</h2>");
  ASSERT_NE(start, std::string::npos);
  const std::string section = record.substr(start, record.find("<h2", start) - start);
  for (const char* text :
       {"Space Temperature, Proportional Gain</th><td>30.5 % / °C</td><td>25.0000 % / °C</td>",
        "limitation</th><td>OFF</td><td>ON</td>",
        "Min heating time</th><td>not recorded then</td><td>4 min</td>",
        "The txtminHeatPeriod</th><td>4 min</td><td>not there any more</td>"})
    EXPECT_TRUE(Has(section, text)) << text;
  EXPECT_FALSE(Has(section, "Dead Band"));
  earlier.head.imperial = true;
  EXPECT_TRUE(Has(configuration::WriteRecord(unit.input), "cannot be compared"));
}

TEST(AsLeftRecord, FindsItsTextsInEveryLanguage) {
  Unit unit(tests::kAssigned);
  const auto listener = std::make_shared<Listener>();
  shell::Strings listening([&] { return automation::Object(listener); });
  listening.ReloadStrings();
  RecordInput input{.snapshot = unit.snapshot,
                    .pages = unit.titles,
                    .strings = listening,
                    .numbers = unit.input.numbers,
                    .request = {"J. Weber", "Hamburg", "note"},
                    .time = unit.input.time,
                    .verified = true,
                    .sensors = unit.input.sensors,
                    .signals = unit.input.signals};
  Document earlier = configuration::ToDocument(unit.snapshot, [](const auto&) { return ""; });
  configuration::WriteRecordCsv(input);
  configuration::WriteRecord(input);
  input.earlier = &earlier;
  Unit::SaySomething(input);
  input.verified = false;
  configuration::WriteRecord(input);
  earlier.entries.front().control = "txtGone";
  for (const Value& value : unit.snapshot.values) {
    if (value.caption.unit == "°C")
      unit.At(value.page, value.control).content = value.control == "txtSetPoint(0)" ? "-9" : "99";
  }
  const auto assign = [&](std::string_view page, const std::string& control, std::string_view function) {
    unit.At(page, control).content = function;
    configuration::WriteRecord(input);
  };
  for (const std::string_view name : host::kOutputFunctions) assign("fControlOutput", "cboOutput(0)", name);
  for (const auto& function : host::InputFunctions()) assign("fHardwareInput", "cboInput(0)", function.name);
  unit.At("fHardwareInput", "cboInput(0)").content = "NEW_FUNCTION";
  unit.snapshot.head.imperial = true;
  unit.At("fHeatCool", "txtSetPoint(1)").content = "none";
  unit.At("fHeatCool", "txtSetPoint(2)").page = "";
  configuration::WriteRecord(input);
  ASSERT_GT(listener->asked.size(), 110u);
  for (const auto& file :
       std::filesystem::directory_iterator(std::filesystem::path(SIM_DATA_DIR) / "languages")) {
    unit.program.GetStrings().SetLanguage(file.path().stem().string());
    for (const std::string& key : listener->asked) {
      if (unit.program.GetStrings().GetStrings(key) == key)
        ADD_FAILURE() << "lang/" << file.path().filename().string() << " lacks \"" << key << '"';
    }
  }
}

}  // namespace
