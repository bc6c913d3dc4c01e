#include "pages/io/fNetworkInput.h"

#include <algorithm>
#include <utility>

namespace pages {
namespace {

enum Group { kCommands, kSpace, kUnit, kOutdoor };
constexpr const char* kGroups[] = {"Commands", "Space and terminals", "Rooftop unit", "Outdoor air"};

struct Input {
  const char* variable;
  Group group;
};
// The order of the flags, and of reading and writing.
constexpr Input kInputs[] = {
    {"nviOccCmd", kCommands},     {"nviApplicMode", kCommands},
    {"nviHotWater", kUnit},       {"nviOutdoorRH", kOutdoor},
    {"nviOutdoorEnth", kOutdoor}, {"nviSetPtOffset", kSpace},
    {"nviShedding", kCommands},   {"nviSlave", kCommands},
    {"nviWaterTemp", kUnit},      {"nviMixedAirTemp", kUnit},
    {"nviReturnTemp", kUnit},     {"nviTerminalLoad", kSpace},
    {"nviCO2", kSpace},           {"nviFanState", kUnit},
    {"nviDuctPressure", kUnit},   {"nviEconoEnable", kCommands},
    {"nviEmergCmd", kCommands},   {"nviSupplyTemp", kUnit},
    {"nviSupplyPress", kUnit},    {"nviSpaceTemp", kSpace},
    {"nviSpaceRH", kSpace},       {"nviSpaceEnth", kSpace},
    {"nviOutdoorTemp", kOutdoor},
};
constexpr std::size_t kOccCmd = 0;
constexpr std::size_t kEmergCmd = 16;

// Configuration properties of a variable; "nviEmergCmd" has one more before them.
constexpr int kReceiveTime = 1;
constexpr int kEmergencyValue = 1;
constexpr int kEmergencyReceiveTime = 2;

// Of the rooftop object.
constexpr int kOptionsProperty = 48;
constexpr std::string_view kOptionsFormat = "UCPTobjectOptions";
constexpr int kFlagsProperty = 49;
constexpr std::string_view kFlagsFormat = "UCPTnetInputOptions";

constexpr const char* kOccupancyControls[] = {"txtStartTime", "fraOptimum", "lblStartTime",
                                              "lblUnitStartTime", "chkOptimum"};

}  // namespace

fNetworkInput::fNetworkInput(const shell::PageContext& context, const shell::PagePlace& place)
    : NetworkPage(context, place, "Network Input") {
  static_assert(std::size(kInputs) == kVariableCount && std::size(kGroups) == kGroupCount);
  for (const Field& field : Fields()) Watch(field.box);
  for (std::size_t i = 0; i < kVariableCount; ++i) txtnvi[i].onFocus = [this, i] { row_ = i; };
  Watch(chkInput);
  SetSource(kFlagsFormat, chkInput);
  for (std::size_t i = kVariableCount; i < kFlagCount; ++i) chkInput[i].SetVisible(false);
  cmdChangeType.onClick = [this] { Guarded("ChangeType", [this] { ChangeTypes(); }); };
  BuildLayout();
}

ui::Node fNetworkInput::GroupBox(std::size_t group) {
  using ui::Empty, ui::Item, ui::Line;
  std::vector<ui::Node> cells = {Empty(), Item(lblHeartbeat[group]), Empty(), Item(lblTypes[group])};
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    if (kInputs[i].group != group) continue;
    cells.insert(cells.end(), {Item(lblNvi[i]), Line({Item(txtnvi[i]), Item(lblSec[i])}), Item(chkInput[i]),
                               Item(lblType[i])});
    if (i != kEmergCmd) continue;
    cells.insert(cells.end(),
                 {Item(lblEmergCmd), Line({Item(txtEmergCmd), Item(lblEmergSec)}), Empty(), Empty()});
  }
  return ui::Box(fraGroup[group], ui::Grid(4, std::move(cells)));
}

void fNetworkInput::BuildLayout() {
  std::vector<ui::Node> unshown;
  for (std::size_t i = kVariableCount; i < kFlagCount; ++i) unshown.push_back(ui::Item(chkInput[i]));
  const auto commands = ui::Line({ui::Item(cmdChangeType), ui::Overlay(std::move(unshown))});
  SetLayout(ui::Line({
      ui::GrowX(ui::AlignGrids(ui::Stack({GroupBox(kCommands), GroupBox(kSpace)}))),
      ui::GrowX(ui::AlignGrids(ui::Stack({GroupBox(kUnit), GroupBox(kOutdoor), commands}))),
  }));
}

void fNetworkInput::InitStrings() {
  for (std::size_t group = 0; group < kGroupCount; ++group)
    fraGroup[group].SetText(Translate(kGroups[group]));
  SetTexts(lblHeartbeat, Translate("Heartbeat"));
  SetTexts(lblTypes, Translate("Type"));
  for (std::size_t i = 0; i < kVariableCount; ++i) lblNvi[i].SetText(kInputs[i].variable);
  SetTexts(lblSec, Translate("sec"));
  SetTexts(chkInput, Translate("Persistent"), 0, kVariableCount - 1);
  lblEmergCmd.SetText(Translate("Emergency hold time"));
  lblEmergSec.SetText(Translate("sec"));
  cmdChangeType.SetText(Translate("Change type"));
}

std::vector<NetworkPage::Field> fNetworkInput::Fields() {
  std::vector<Field> fields;
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    const int number = i == kEmergCmd ? kEmergencyReceiveTime : kReceiveTime;
    fields.push_back({txtnvi[i], kInputs[i].variable, number, "SCPTmaxRcvTime", 1});
  }
  fields.push_back({txtEmergCmd, kInputs[kEmergCmd].variable, kEmergencyValue, {}, 1});
  return fields;
}

host::Property& fNetworkInput::Flags() { return Context().device.RoofTopProperties[kFlagsProperty]; }

void fNetworkInput::Fill() {
  ReadFields(Fields());
  // The option record of other pages is set up here too, though the flags are a property of their own.
  NamingProperty(kOptionsFormat,
                 [this] { Context().device.RoofTopProperties[kOptionsProperty].Bind(kOptionsFormat); });
  NamingProperty(kFlagsFormat, [this] {
    Flags().Bind(kFlagsFormat);
    const base::Record flags(Flags().Read(), kFlagsFormat);
    for (std::size_t i = 0; i < kFlagCount; ++i) {
      WhenRead([&box = chkInput[i], set = flags.Field(i) == "1"] { box.SetChecked(set); });
    }
  });
  ReadTypes();
  WhenRead([this] { UpdateOptionsPage(); });
}

bool fNetworkInput::Write() {
  if (!IsChanged()) return true;
  // A variable may take defaults with its new type, so this comes first.
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    if (chosen_[i].empty()) continue;
    const char* name = kInputs[i].variable;
    NamingProperty(name, [&] { Variable(name).ChangeType(chosen_[i], Source(lblType[i])); });
  }
  WriteFields(Fields());
  NamingProperty(kFlagsFormat, [this] {
    Flags().Bind(kFlagsFormat);
    Flags().Change(kFlagsFormat, host::kHostPrecision, [this](host::Edit& flags) {
      for (std::size_t i = 0; i < kFlagCount; ++i) SetField(flags, i, chkInput[i].Checked(), chkInput[i]);
    });
  });
  return true;
}

void fNetworkInput::Saved() {
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    if (!chosen_[i].empty()) types_[i] = std::exchange(chosen_[i], {});
  }
}

void fNetworkInput::ReadTypes() {
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    const char* name = kInputs[i].variable;
    NamingProperty(name, [&] {
      WhenRead([this, i, type = Variable(name).Type()] {
        types_[i] = type;
        chosen_[i].clear();
        ShowType(i);
      });
    });
  }
}

const std::string& fNetworkInput::TypeOf(std::size_t i) const {
  return chosen_[i].empty() ? types_[i] : chosen_[i];
}

std::vector<std::string> fNetworkInput::AllowedTypes(std::size_t i) {
  const char* name = kInputs[i].variable;
  return NamingProperty(name, [&] { return Variable(name).AllowedTypes(); });
}

void fNetworkInput::ChangeTypes() {
  std::vector<ChangeableVariable> variables;
  std::vector<std::size_t> places;
  std::size_t first = 0;
  for (std::size_t i = 0; i < kVariableCount; ++i) {
    std::vector<std::string> allowed = AllowedTypes(i);
    if (allowed.size() < 2) continue;
    if (i == row_) first = places.size();
    places.push_back(i);
    variables.push_back({kInputs[i].variable, types_[i], TypeOf(i), std::move(allowed)});
  }
  if (places.empty()) return Warn(Translate("This device does not allow another type for any variable."));
  if (!dialog_) dialog_ = std::make_unique<fChangeType>(Context());
  const auto chosen = dialog_->Open(std::move(variables), first);
  for (std::size_t k = 0; k < places.size(); ++k) TakeType(places[k], chosen[k].type);
  UpdateOptionsPage();
}

// Back to the type that the device has leaves its name there as it is, scope prefix included.
void fNetworkInput::TakeType(std::size_t i, const std::string& type) {
  if (host::BareType(type) == host::BareType(TypeOf(i))) return;
  const bool back = host::BareType(type) == host::BareType(types_[i]);
  chosen_[i] = back ? std::string() : type;
  ShowType(i);
  MarkChanged();
}

std::vector<fields::Field> fNetworkInput::ListFields(const fields::Translate& translate) {
  std::vector<fields::Field> fields = NetworkPage::ListFields(translate);
  for (std::size_t i = 0; i < kVariableCount; ++i) fields.push_back(TypeField(i));
  return fields;
}

fields::Field fNetworkInput::TypeField(std::size_t i) {
  fields::Field field;
  field.page = Name();
  field.name = lblType[i].Name();
  field.kind = fields::Kind::kEntry;
  field.control = &lblType[i];
  field.cursor = &txtnvi[i];  // the dialog opens with the variable whose row the keyboard is in
  field.caption = [this, i] { return fields::CaptionOf(lblType[i]); };
  field.content = [this, i] { return host::BareType(TypeOf(i)); };
  field.shown = [](std::string_view type) { return std::string(type); };
  field.take = [this, i](std::string_view type) { return ChooseType(i, std::string(type)); };
  return field;
}

// The device is asked what it allows only when a type is to change.
std::string fNetworkInput::ChooseType(std::size_t i, const std::string& type) {
  if (type == host::BareType(TypeOf(i))) return {};
  try {
    const std::vector<std::string> allowed = AllowedTypes(i);
    const auto found = std::ranges::find(allowed, type, host::BareType);
    if (type != host::BareType(types_[i]) && found == allowed.end()) {
      return Translate("This device does not allow the type %s1% for %s2%.", {type, kInputs[i].variable});
    }
    TakeType(i, found == allowed.end() ? type : *found);
    UpdateOptionsPage();
    return {};
  } catch (const std::exception& error) {
    return shell::DescribeError(error);
  }
}

void fNetworkInput::UpdateOptionsPage() {
  host::SetOccupancyType(Context().device, TypeOf(kOccCmd));
  const shell::ISubForm* page = Context().pages.FindPage("fOptions");
  if (!page) return;
  for (const char* name : kOccupancyControls) {
    for (ui::Control* control : page->Group(name)) control->SetEnabled(Context().device.OccupancyIsStandard);
  }
}

}  // namespace pages
