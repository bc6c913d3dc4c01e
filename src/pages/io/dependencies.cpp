#include "pages/io/dependencies.h"

#include <algorithm>
#include <initializer_list>

#include "pages/io/output_functions.h"

namespace pages {
namespace {

// Conditions, one bit each.
enum Flag : unsigned {
  kBypassDamper = 1u << 0,
  kFanSpeed = 1u << 1,
  kFreshAirDamper = 1u << 2,
  kHumidifier = 1u << 3,
  kHumidifierOnOff = 1u << 4,
  kReturnTemp = 1u << 5,
  kEmergencyContact = 1u << 6,
};

struct FlagFunctions {
  Flag flag;
  std::initializer_list<std::string_view> functions;
};

const FlagFunctions kOutputFlags[] = {
    {kBypassDamper, {"BYPASS_DAMPER_MOD"}},
    {kFanSpeed, {"FAN_SPEED_MOD"}},
    {kFreshAirDamper, {"FRESH_AIR_DAMPER_MOD", "FRESH_AIR_DAMPER_OPEN", "FRESH_AIR_DAMPER_CLOSE"}},
    {kHumidifierOnOff, {"HUMIDIFIER_ON_OFF", "DEHUMIDIFIER_ON_OFF"}},
};

const FlagFunctions kInputFlags[] = {
    {kReturnTemp, {"RETURN_TEMP"}},
    {kEmergencyContact, {"EMERGENCY_CONTACT"}},
};

// Any of the flags enables the controls.
struct DependentGroup {
  std::string_view page;
  unsigned flags;
  std::initializer_list<std::string_view> controls;
};

const DependentGroup kGroups[] = {
    {"fGeneral", kReturnTemp, {"fraTemp", "optTemp"}},
    {"fGeneral",
     kFreshAirDamper,
     {"fraFreshAir", "lblValveOnOff", "txtOutdoor", "txtOutdoorMax", "lblOutDoorMax", "fraMix", "lblAir",
      "txtAirLowLimit", "lblAirUnit", "chkFreshAir", "txtFreshAir", "lblFreshAir", "fraCo2", "txtCO2",
      "fraEcono"}},
    {"fGeneral", kBypassDamper | kFanSpeed, {"fraPress", "txtDuctPressure", "txtMaxPressure", "lblDuct"}},
    {"fGeneral", kHumidifier | kHumidifierOnOff, {"fraHumid", "txtHumidity"}},
    {"fGeneral", kHumidifierOnOff, {"txtHumidityMin", "lblHumidityMin", "lblHumidityMinUnit"}},
    {"fGeneral", kEmergencyContact, {"fraEmergency", "optEmergency"}},
};

template <class Table>
unsigned FlagsOf(const Table& table, std::string_view function) {
  unsigned flags = 0;
  for (const auto& [flag, functions] : table) {
    if (std::ranges::find(functions, function) != functions.end()) flags |= flag;
  }
  return flags;
}

unsigned PresentFlags(const shell::SelectedTypes& selections) {
  unsigned flags = 0;
  for (std::size_t i = 0; i < host::DeviceObjects::kOutputs; ++i) {
    const std::string& function = selections.GetSelectedOutputType(i);
    flags |= FlagsOf(kOutputFlags, function);
    if (function.starts_with("HUMIDIFIER")) flags |= kHumidifier;  // a dehumidifier does not count here
  }
  for (std::size_t i = 0; i < host::DeviceObjects::kInputs; ++i) {
    flags |= FlagsOf(kInputFlags, selections.GetSelectedInputType(i));
  }
  return flags;
}

}  // namespace

void EnableDependentControls(const shell::PageContext& context, const shell::ISubForm& page) {
  const unsigned present = PresentFlags(context.selections);
  for (const DependentGroup& group : kGroups) {
    if (group.page != page.Name()) continue;
    for (const std::string_view name : group.controls) {
      for (ui::Control* control : page.Group(name)) control->SetEnabled((present & group.flags) != 0);
    }
  }
}

void CheckOutputDependencies(const shell::PageContext& context) {
  for (const std::string_view name : {"fGeneral", "fFanValve", "fHeatCool", "fPID"}) {
    if (shell::ISubForm* page = context.pages.FindPage(name)) page->PageShown();
  }
}

}  // namespace pages
