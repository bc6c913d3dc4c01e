#include "pages/control/control_page.h"

#include <utility>

#include "automation/error.h"
#include "base/error.h"
#include "hosting/host_contract.h"
#include "shell/field_check.h"

namespace pages {
namespace {

// Read with its bare name by every page; the precision stays as the host has it.
constexpr PropertyFormat kOptions = {48, "UCPTobjectOptions", Units::kNone, 0, 0};

constexpr int kFunctionProperty =
    3;  // of a control output variable: the function assigned on the outputs page

// Repeats a fault with the property's name, unless the host has named it already.
template <class Work>
auto Named(const PropertyFormat& property, Work work) {
  const auto named = [&property](const std::string& description) {
    const std::string type(property.type);
    return description.find(type) == std::string::npos ? type + ": " + description : description;
  };
  try {
    return work();
  } catch (const automation::Error& error) {
    throw automation::Error(error.Code(), named(error.Description()), error.Source());
  } catch (const base::Error& error) {
    throw base::Error(named(error.what()));
  }
}

}  // namespace

ControlPage::ControlPage(std::string pageClass, std::string location, int pageNumber, int helpTopic,
                         const shell::PageContext& context)
    : ISubForm(std::move(pageClass)),
      context_(context),
      location_(std::move(location)),
      pageNumber_(pageNumber),
      helpTopic_(helpTopic) {}

bool ControlPage::Guarded(std::string_view routine, const std::function<bool()>& work) {
  try {
    return work();
  } catch (const std::exception& error) {
    shell::ReportError(context_, routine, location_, error);
    return false;
  }
}

void ControlPage::ReInitializeStrings() {
  Guarded("InitStrings " + Name(), [this] {
    context_.strings.ReloadStrings();
    InitStrings();
    return true;
  });
}

void ControlPage::FillValue() {
  Guarded("FillValue", [this] {
    Fill();
    changed_ = false;
    context_.flags.lastFilledPage = pageNumber_;
    return true;
  });
}

bool ControlPage::WriteValue() {
  return Guarded("WriteValue", [this] { return Write(); });
}

void ControlPage::RefreshPage() {
  const ui::WaitPointer pointer(context_.loop);
  if (changed_) FillValue();
}

void ControlPage::Watch(ui::TextBox& box) {
  box.onChange = [this] { MarkChanged(); };
  box.onLeave = [this, &box] {
    return shell::IsValidNumber(context_.prompts, context_.settings, box.Text());
  };
}

void ControlPage::BindFormats(std::span<const PropertyFormat> table) {
  const std::string_view suffix = IsImperial() ? "#US" : "#SI";
  for (const PropertyFormat& property : table) {
    std::string format(property.type);
    if (property.units == Units::kSuffixed) format += suffix;
    Named(property, [&] { Property(property.number).Put(host::kFormatName, format); });
  }
}

base::Record ControlPage::ReadRecord(const PropertyFormat& property) {
  return Named(property, [&] {
    const automation::Object& object = Property(property.number);
    object.Put(host::kPrecision, IsImperial() ? property.imperialPrecision : property.metricPrecision);
    return base::Record(object.Text(host::kValue));
  });
}

void ControlPage::ChangeRecord(const PropertyFormat& property,
                               const std::function<void(base::Record&)>& change) {
  Named(property, [&] {
    const automation::Object& object = Property(property.number);
    base::Record record(object.Text(host::kValue));
    change(record);
    object.Put(host::kValue, record.Join());
  });
}

base::Record ControlPage::ReadOptions() {
  BindFormats({&kOptions, 1});
  return Named(kOptions, [this] { return base::Record(Property(kOptions.number).Text(host::kValue)); });
}

void ControlPage::ChangeOptions(const std::function<void(base::Record&)>& change) {
  BindFormats({&kOptions, 1});
  ChangeRecord(kOptions, change);
}

std::vector<std::string> ControlPage::AssignedFunctions() {
  std::vector<std::string> functions;
  for (const std::string& name : context_.device.ControlOutputNames) {
    shell::NetworkVariable& output = context_.device.RoofTopVariables[name];
    const std::string value = output.ConfigProperties()[kFunctionProperty].Text(host::kValue);
    functions.emplace_back(base::Record(value).Field(0));
  }
  return functions;
}

}  // namespace pages
