// The as-left record over the virtual building: written for each unit, in both unit systems, in two
// languages.
#include <filesystem>
#include <set>

#include "configuration/desk.h"
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
    std::string words(text.substr(0, start));
    for (const char* entity : {"&amp;", "&lt;", "&gt;", "&quot;"})
      words = base::ReplaceAll(words, entity, " ");
    if (words.find('&') != words.npos) return "stray & in " + words;
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

void ExpectIn(std::string_view text, std::initializer_list<const char*> parts) {
  for (const char* part : parts) EXPECT_TRUE(Has(text, part)) << part;
}

/// The whole tool over one unit; its records may speak otherwise than itself.
struct Unit : tests::Tool {
  explicit Unit(const char* name, const shell::Strings* recordStrings = nullptr)
      : device(name), strings(recordStrings ? *recordStrings : program.GetStrings()) {
    Open(device);
    Take();
  }
  /// What the unit holds, in the language and units in use.
  void Take() {
    snapshot.head = Companion<configuration::Desk>().MakeHead();
    snapshot.values.clear();
    for (const fields::Field* field : Main().Pending().Fields())
      snapshot.values.push_back(
          configuration::ValueOf(*field, input.numbers, Main().Pending().DeviceContent(*field)));
    titles.clear();
    for (const shell::PageEntry& entry : Main().Pages().Table())
      titles.push_back({std::string(entry.pageClass), program.GetStrings().GetStrings(entry.title)});
    input.pages = titles;
    const auto types = [this](const std::string& object, int count, const char* type) {
      std::vector<std::string> stored;
      for (int i = 1; i <= count; ++i)
        stored.push_back(base::Upper(building.StoredText(device, object + std::to_string(i), 2, type)));
      return stored;
    };
    input.sensors = types("HardwareInput", 6, "UCPTsensorType");
    input.signals = types("HardwareOutput", 7, "UCPThardwareSignalType");
  }
  /// The record, which must be well-formed.
  std::string Record() {
    const std::string record = configuration::WriteRecord(input);
    marked.clear();
    EXPECT_EQ(Fault(record, marked), "");
    return record;
  }
  void SaySomething() {
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

  std::string device;
  const shell::Strings& strings;
  Snapshot snapshot;
  std::map<std::string, int> marked;  // fields of the last record
  std::vector<configuration::PageTitle> titles;
  RecordInput input{.snapshot = snapshot,
                    .pages = {},
                    .strings = strings,
                    .numbers = base::Numbers('.'),
                    .request = {"J. Weber", "Harbour Street 12\nHamburg", ""},
                    .time = "2026-11-22 14:05",
                    .verified = true,
                    .advice = std::vector<configuration::AdviceLine>()};
};

TEST(AsLeftRecord, HoldsEveryFieldOnceInEveryUnitAndLanguage) {
  for (const char* device : {tests::kAssigned, tests::kUnassigned, tests::kPressure}) {
    Unit unit(device);
    for (const auto& [language, code, imperial] :
         {std::tuple("English", "en", false), {"English", "en", true}, {"German", "de", false}}) {
      unit.Find<ui::OptionButton>(imperial ? "optUnit(1)" : "optUnit(0)").Click();
      unit.UseLanguage(language);
      unit.Take();
      const std::string record = unit.Record();
      EXPECT_EQ(unit.marked.size(), unit.snapshot.values.size());
      for (const Value& value : unit.snapshot.values)
        EXPECT_EQ(unit.marked[value.page + "." + value.control], 1) << value.page << "." << value.control;
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
  const std::string record = unit.Record();
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
  unit.SaySomething();
  ExpectIn(unit.Record(), {"<td>Fault</td><td>&lt;in manual&gt;</td><td>moves</td>",
                           "<td>close</td><td>A. Bee</td><td>2026-11-22 14:05 UTC</td><td>a museum</td>",
                           "<td>Output 1, FAN_ON_OFF</td><td>ON</td><td>not moved</td><td>belt</td>"});
  ExpectIn(configuration::WriteRecordCsv(unit.input),
           {",Fault,<in manual>,,Open,", ",Hint,close,,Accepted; A. Bee; 2026-11-22 14:05 UTC; a museum,",
            "\"Output 1, FAN_ON_OFF\",ON,,not moved; belt; C. Dee; 2026-11-23 08:00 UTC,"});
}

TEST(AsLeftRecord, LaysTablesOutAsThePagesAreWithAPlaceForEveryFunction) {
  Unit unit(tests::kAssigned);
  ExpectIn(unit.Record(),
           {">Offset</th><th scope=\"col\" class=\"n\">Low limit</th><th scope=\"col\" class=\"n\">High "
            "limit</th>",
            "<th scope=\"row\">Space temp</th><td class=\"n\" data-field=\"fAlarm.txtAlarm(0)\">3.000 ",
            "<td class=\"n off\" data-field=\"fPID.txtPressure(0)\">",
            "<th scope=\"row\">Min heating time</th><td class=\"n\" "
            "data-field=\"fHeatCool.txtminHeatPeriod\">4 "});
  using configuration::record::IsUnassigned, configuration::record::PlaceOf;
  for (const std::string_view name : host::kOutputFunctions)
    EXPECT_NE(IsUnassigned(name), PlaceOf(name) != nullptr) << name;
  for (const auto& function : host::InputFunctions())
    EXPECT_NE(IsUnassigned(function.name), PlaceOf(function.name) != nullptr) << function.name;
  unit.At("fControlOutput", "cboOutput(4)").content = "UNASSIGNED";
  unit.At("fControlOutput", "cboOutput(2)").content = "NEW_FUNCTION";
  unit.At("fControlOutput", "cboOutput(0)").content = "HEAT_COOL_VALVE_MOD";
  unit.At("fControlOutput", "chkOver(0)").content = "1";
  unit.At("fControlOutput", "txtValue(0)").shown = "35.0";
  unit.input.sensors.resize(1);
  ExpectIn(unit.Record(),
           {"Not assigned: O5<", "in this drawing: O3 NEW_FUNCTION (DIGITAL), in manual: ON<",
            "Heating: O1 Heat/cool valve DIGITAL in manual: 35.0 %, O2 Stage 1 DIGITAL, O7 Modulating PWM;",
            "Cooling: O1 Heat/cool valve DIGITAL in manual: 35.0 %, O4 Stage 2 DIGITAL;",
            "Space: I1 Temperature STD_THERMISTOR, I4 CO2 Level, I5 Humidity;"});
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
    const std::string record = unit.Record();
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
  ExpectIn(section, {"Space Temperature, Proportional Gain</th><td>30.5 % / °C</td><td>25.0000 % / °C</td>",
                     "limitation</th><td>OFF</td><td>ON</td>",
                     "Min heating time</th><td>not recorded then</td><td>4 min</td>",
                     "The txtminHeatPeriod</th><td>4 min</td><td>not there any more</td>"});
  EXPECT_FALSE(Has(section, "Dead Band"));
  earlier.head.imperial = true;
  EXPECT_TRUE(Has(configuration::WriteRecord(unit.input), "cannot be compared"));
}

TEST(AsLeftRecord, FindsItsTextsInEveryLanguage) {
  const auto listener = std::make_shared<Listener>();
  shell::Strings listening([&] { return automation::Object(listener); });
  listening.ReloadStrings();
  Unit unit(tests::kAssigned, &listening);
  RecordInput& input = unit.input;
  input.request.note = "note";
  Document earlier = configuration::ToDocument(unit.snapshot, [](const auto&) { return ""; });
  configuration::WriteRecordCsv(input);
  configuration::WriteRecord(input);
  input.earlier = &earlier;
  unit.SaySomething();
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
