#include "simulator/controls/editor.h"

#include <algorithm>

#include <fmt/format.h>

#include "base/error.h"
#include "simulator/members.h"

namespace controls {

constexpr automation::MemberOf<Editor> Editor::kMembers[] = {
    {"Initialize", nullptr, nullptr, simulator::Run<&Editor::Initialize>},
    {"IsChanged", simulator::Run<&Editor::IsChanged>},
    {"WriteValue", nullptr, nullptr, simulator::Run<&Editor::WriteValue>},
    {"Finish", nullptr, nullptr, simulator::Run<&Editor::Finish>},
};

void Editor::Initialize(const automation::Arguments& arguments) {
  open_ = false;
  try {
    const automation::Object device = arguments[0].AsObject();
    if (!device) throw base::Error("Initialize needs the device.");
    Open(device, arguments[1].AsWhole(), arguments[2].AsText());
  } catch (...) {
    Finish();
    throw;
  }
  open_ = true;
  GetWindow().SetAcceptsInput(true);
}

bool Editor::IsChanged() {
  return open_ && std::ranges::any_of(Shown(), [](const Binding* binding) { return binding->Changed(); });
}

bool Editor::WriteValue() {
  if (!open_) return true;
  try {
    for (Binding* binding : Shown()) binding->Write();
    return true;
  } catch (const std::exception& error) {
    Fail(error.what());
    return false;
  }
}

void Editor::Finish() {
  open_ = false;
  GetWindow().SetAcceptsInput(false);
}

automation::Object NumberedObject(const automation::Object& device, const std::string& kind, int number,
                                  int count, const std::string& what) {
  if (number < 1 || number > count)
    throw base::Error(
        fmt::format("There is no {0} {1}: the controller has the {0}s 1 to {2}.", what, number, count));
  return device.Child("LonMarkObjects").Child("Item", fmt::format("{}{}", kind, number));
}

}  // namespace controls
