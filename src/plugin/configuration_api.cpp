#include "plugin/configuration_api.h"

#include "base/error.h"
#include "base/files.h"
#include "base/text.h"
#include "configuration/unit_file.h"
#include "configuration/unit_list.h"
#include "host/contract.h"
#include "shell/words.h"

namespace plugin {

using automation::Arguments;
using configuration::Difference;
using configuration::Document;

namespace {

/// Who opens the session, as the host is told.
constexpr const char* kWhoOpens = "QVRKvTARNCfg.Configuration";

}  // namespace

// The members in the order of the type library; a caller's member id is the place in the table plus 1.
struct ConfigurationMembers {
  using Api = ConfigurationApi;
  using Answer = automation::Value;

  /// A member that takes the name of a file.
  template <auto work>
  static Answer OnFile(Api& api, const Arguments& arguments) {
    return api.Run([&] { return (api.*work)(arguments[0].AsText()); });
  }
  static Answer Open(Api& api, const Arguments& arguments) {
    const host::SessionRequest request = {
        .networkName = arguments[0].AsText(),
        .ipAddress = arguments[1].AsText(),
        .ipPort = arguments[2].AsWhole(),
        .remote = false,
        .interfaceName = {},
        .programId = kWhoOpens,
        .deviceName = arguments[3].AsText(),
        .lmoIndex = arguments[4].AsWhole(),
        .commonFilesFolder = api.program_.GetSettings().commonFilesFolder,
        .readFile = api.program_.GetPlatform().readFile,
    };
    return api.Run([&] { api.Open(request); });
  }
  static Answer Close(Api& api, const Arguments&) {
    return api.Run([&] { api.Close(); });
  }
  static Answer Units(Api& api, const Arguments&) {
    return api.Run([&] { return api.Units(); });
  }
  static Answer Imperial(Api& api, const Arguments&) { return api.imperial_; }
  static void SetImperial(Api& api, const Answer& value) {
    const bool imperial = value.AsBool();
    api.Run([&] {
      if (imperial != api.imperial_) api.RequireApplied();
      api.imperial_ = imperial;
    });
  }
  static Answer Apply(Api& api, const Arguments& arguments) {
    const std::string file =
        arguments.Count() == 0 || arguments[0].IsEmpty() ? std::string() : arguments[0].AsText();
    return api.Run([&] { return Answer(api.Apply(file)); });
  }
  static Answer Value(Api& api, const Arguments& arguments) {
    return api.Run([&] { return Answer(api.Value(arguments[0].AsText(), arguments[1].AsText())); });
  }
  static void SetValue(Api& api, const Arguments& arguments) {
    api.Run([&] { api.SetValue(arguments[0].AsText(), arguments[1].AsText(), arguments[2]); });
  }
};

const automation::MemberOf<ConfigurationApi> ConfigurationApi::kMembers[9] = {
    {"Open", nullptr, nullptr, ConfigurationMembers::Open},
    {"Close", nullptr, nullptr, ConfigurationMembers::Close},
    {"Units", ConfigurationMembers::Units},
    {"Imperial", ConfigurationMembers::Imperial, ConfigurationMembers::SetImperial},
    {"Save", nullptr, nullptr, ConfigurationMembers::OnFile<&ConfigurationApi::Save>},
    {"Compare", nullptr, nullptr, ConfigurationMembers::OnFile<&ConfigurationApi::Compare>},
    {"Apply", nullptr, nullptr, ConfigurationMembers::Apply},
    {"Record", nullptr, nullptr, ConfigurationMembers::OnFile<&ConfigurationApi::Record>},
    {"Value", ConfigurationMembers::Value, nullptr, nullptr, ConfigurationMembers::SetValue},
};

ConfigurationApi::ConfigurationApi(Program& program)
    : program_(program),
      english_([] { return automation::Object(); }),
      quiet_(nullptr, program.GetPlatform().loop, english_) {
  program_.Attach();
}

ConfigurationApi::~ConfigurationApi() {
  unit_.reset();
  program_.Detach();
}

template <class Work>
automation::Value ConfigurationApi::Run(Work work) {
  const std::string& title = program_.GetSettings().title;
  if (program_.Busy())
    throw automation::Error(automation::kApplicationDefined,
                            "The configuration tool is busy. Please try again when it has finished.", title);
  program_.Needed();
  const Program::Unattended unattended(program_);
  try {
    if constexpr (std::is_void_v<decltype(work())>) {
      work();
      return {};
    } else {
      return work();
    }
  } catch (const std::exception& error) {
    throw automation::Error(automation::kApplicationDefined, shell::InWords(english_, error), title);
  }
}

configuration::OpenUnit& ConfigurationApi::UnitIn(bool imperial) {
  if (!unit_) throw base::Error("No unit is open.");
  if (unclear_ || imperial != unit_->Imperial()) Load(imperial);
  return *unit_;
}

void ConfigurationApi::RequireApplied() const {
  if (filled_) throw base::Error("Values that were put in are not applied. Apply them, or close the unit.");
}

void ConfigurationApi::Load(bool imperial) {
  RequireApplied();
  unit_.reset();
  unit_ = std::make_unique<configuration::OpenUnit>(desk_->Surroundings(), english_, request_, imperial);
  unclear_ = false;
}

void ConfigurationApi::Open(const host::SessionRequest& request) {
  unit_.reset();
  filled_ = false;
  host_ = program_.GetPlatform().createObject(host::kObjectServerId);
  if (!desk_)
    desk_ = std::make_unique<configuration::UnitDesk>(
        configuration::UnseenPages::Surroundings{program_.GetPlatform(), program_.GetSettings(),
                                                 program_.PageTable(), quiet_},
        english_);
  request_ = request;
  if (!request.deviceName.empty()) Load(imperial_);
}

void ConfigurationApi::Close() {
  unit_.reset();
  filled_ = false;
  host_ = {};
}

automation::Value ConfigurationApi::Units() {
  if (!desk_) throw base::Error("No network is open.");
  auto units = configuration::ListUnits(program_.GetPlatform(), request_);
  if (unit_) configuration::NameInView(units, request_.deviceName);
  automation::List names;
  for (const configuration::UnitEntry& unit : units) {
    if (!unit.name.empty()) names.emplace_back(unit.name);
  }
  return names;
}

void ConfigurationApi::Save(const std::string& file) {
  RequireApplied();
  Unit().ReadSettings();
  Document document = desk_->ToDocument(Unit().TakeAllDigits());
  document.sections = configuration::UnitFile(program_.GetSettings(), request_, configuration::kNotes).Read();
  base::ReplaceFile(base::PathOf(file), configuration::Write(document));
}

Document ConfigurationApi::ReadDocument(const std::string& file) {
  // In the units that it is in: the file may ask for others.
  configuration::OpenUnit& unit = UnitIn(unit_ && unit_->Imperial());
  return configuration::Read(base::ReadFile(base::PathOf(file), configuration::kLargestFile),
                             unit.MakeHead().programId);
}

configuration::OpenUnit& ConfigurationApi::UnitFor(const Document& document) {
  configuration::OpenUnit& unit = UnitIn(document.head.imperial);
  unit.ReadSettings();
  return unit;
}

configuration::Selection ConfigurationApi::Everything() const {
  configuration::Selection selection;
  for (const shell::PageEntry& entry : program_.PageTable())
    selection.pages.insert(std::string(entry.pageClass));
  return selection;
}

automation::Value ConfigurationApi::Compare(const std::string& file) {
  const Document document = ReadDocument(file);
  configuration::Selection selection = Everything();
  selection.ofOneUnit = true;
  automation::List lines;
  for (const Difference& one : UnitFor(document).Compare(document, selection))
    lines.emplace_back(automation::List{one.page, one.name, one.here, one.there});
  return lines;
}

std::int32_t ConfigurationApi::Apply(const std::string& file) {
  const auto mayGoOn = [this] { return !program_.Ending(); };
  if (file.empty()) return filled_ ? Ended(desk_->Save(Unit(), mayGoOn)) : 0;
  RequireApplied();
  const Document document = ReadDocument(file);
  configuration::OpenUnit& unit = UnitFor(document);
  const auto differences = unit.Compare(document, Everything());
  if (differences.empty()) return 0;
  unclear_ = true;  // until it is stored: the next call must not apply what is left of the file
  const std::string refused = desk_->Fill(unit, differences);
  if (!refused.empty()) throw base::Error("Nothing was applied.\r\n" + refused);
  return Ended(desk_->SaveAll(unit, document, Everything(), mayGoOn));
}

std::int32_t ConfigurationApi::Ended(const configuration::UnitDesk::Saved& saved) {
  const host::SaveResult result = saved.save.result;
  if (result == host::SaveResult::kCancelled) throw base::Error("Nothing was applied.\r\n" + saved.told);
  filled_ = false;
  unclear_ = result == host::SaveResult::kUnknown;
  if (saved.notKept)
    throw base::Error("The values were saved, but the unit does not hold all of them.\r\n" + saved.told);
  if (unclear_) throw base::Error("It is not known whether the values were applied.\r\n" + saved.told);
  return static_cast<std::int32_t>(saved.values.size());
}

void ConfigurationApi::Record(const std::string& file) {
  RequireApplied();
  Unit().ReadSettings();
  const std::filesystem::path path = base::PathOf(file);
  const bool table = base::EqualsNoCase(base::PathText(path.extension()), ".csv");
  base::ReplaceFile(path, desk_->Record(Unit(), {}, table));
}

const fields::Field& ConfigurationApi::FieldNamed(const std::string& page, const std::string& field) {
  if (base::EqualsNoCase(page, "Main window") || base::EqualsNoCase(page, configuration::kMainWindow))
    return *Unit().Find(configuration::kMainWindow, configuration::kLocationControl);
  std::string pageClass;
  for (const shell::PageEntry& entry : program_.PageTable()) {
    if (base::EqualsNoCase(page, entry.pageClass) || base::EqualsNoCase(page, base::Trim(entry.listCaption)))
      pageClass = entry.pageClass;
  }
  for (const configuration::Held& held : Unit().Values()) {
    const fields::Field& one = *held.field;
    if (one.page != pageClass) continue;
    if (base::EqualsNoCase(one.name, field) || base::EqualsNoCase(PathOf(one.caption()), field)) return one;
  }
  throw base::Error("There is no field \"" + field + "\" on a page \"" + page + "\".");
}

std::string ConfigurationApi::Value(const std::string& page, const std::string& field) {
  const fields::Field& found = FieldNamed(page, field);
  return configuration::Portable(program_.GetSettings().numbers, found.kind,
                                 configuration::StoredContent(found));
}

void ConfigurationApi::SetValue(const std::string& page, const std::string& field,
                                const automation::Value& content) {
  const fields::Field& found = FieldNamed(page, field);
  const auto* flag = std::get_if<bool>(&content.Get());
  const std::string text = flag ? (*flag ? "1" : "0") : content.AsText();
  const std::string local =
      configuration::Local(program_.GetSettings().numbers, found.kind, text, found.content());
  filled_ = true;
  const auto left = Unit().Fill({{found.page, found.name, local}});
  if (!left.empty())
    throw base::Error(PathOf(found.caption()) + " = " + text + ": " +
                      (left.front().reason.empty() ? "no page shows this field now" : left.front().reason));
}

}  // namespace plugin
