#include "simulator/controls/object_manager.h"

#include "base/error.h"
#include "simulator/members.h"

namespace controls {
namespace {

using automation::Object;

constexpr char kDisabled[] = "DISABLED";
constexpr char kFailed[] = "FAILED";

// Icons of the list: message levels.
constexpr int kWarning = 48;
constexpr int kError = 16;

ui::ListView::Row RowOf(const Object& object) {
  const std::string name = object.Text("Name");
  const std::string state = object.Text("State");
  const std::string result = object.Text("TestResult");
  int icon = state == kDisabled ? kWarning : 0;
  if (result.starts_with(kFailed)) icon = kError;
  return {name, {name, state, result.empty() ? "not tested" : result}, icon};
}

}  // namespace

constexpr automation::MemberOf<ObjectManager> ObjectManager::kMembers[] = {
    {"Initialize", nullptr, nullptr, simulator::Run<&ObjectManager::Initialize>},
    {"Finish", nullptr, nullptr, simulator::Run<&ObjectManager::Finish>},
};

ObjectManager::ObjectManager() : MakersControl("ObjectManager") {
  lvwObjects_.SetColumns({"Object", "State", "Self-test"});
  lvwObjects_.SetMultiSelect(true);
  cmdEnable_.SetText("&Enable");
  cmdDisable_.SetText("&Disable");
  cmdTest_.SetText("&Test");
  cmdRead_.SetText("Read &again");
  const auto setState = [this](const char* done, const char* state) {
    Order(done, [state](const Object& object) { object.Put("State", state); });
  };
  cmdEnable_.onClick = [setState] { setState("enabled", "ENABLED"); };
  cmdDisable_.onClick = [setState] { setState("disabled", kDisabled); };
  cmdTest_.onClick = [this] { Order("tested", [](const Object& object) { object.Call("Test"); }); };
  cmdRead_.onClick = [this] { ReadAgain(); };
  GetWindow().SetLayout(ui::Stack({
      ui::GrowX(ui::Item(lblDevice_)),
      ui::Grow(ui::Item(lvwObjects_)),
      ui::GrowX(ui::Item(lblResult_)),
      ui::Line({ui::Item(cmdEnable_), ui::Item(cmdDisable_), ui::Item(cmdTest_), ui::GrowX(ui::Empty()),
                ui::Item(cmdRead_)}),
  }));
}

void ObjectManager::Initialize(const automation::Arguments& arguments) {
  Finish();
  try {
    network_ = arguments[1].AsObject();
    const Object server = arguments[2].AsObject();
    if (!network_ || !server) throw base::Error("Initialize needs the network and the object server.");
    const Object device = server.Get("Device").AsObject();
    if (!device) throw base::Error("The host has no device open.");
    lblDevice_.SetText(arguments[0].AsText() + ": objects of " + device.Text("Name"));
    const Object objects = device.Child("LonMarkObjects");
    for (std::int32_t number = 1; number <= objects.Whole("Count"); ++number)
      objects_.push_back(objects.Child("Item", number));
    Read();
  } catch (...) {
    Finish();
    throw;
  }
  GetWindow().SetAcceptsInput(true);
}

void ObjectManager::Finish() {
  GetWindow().SetAcceptsInput(false);
  lvwObjects_.SetRows({});
  objects_.clear();
  network_ = {};
}

void ObjectManager::Read() {
  std::vector<ui::ListView::Row> rows;
  for (const Object& object : objects_) rows.push_back(RowOf(object));
  const std::vector<std::size_t> selected = lvwObjects_.Selection();
  lvwObjects_.SetRows(std::move(rows));
  lvwObjects_.SetSelection(selected);
  lvwObjects_.FitColumns();
}

void ObjectManager::Order(const std::string& done, const std::function<void(const Object&)>& order) {
  const std::size_t count = lvwObjects_.Selection().size();
  if (count == 0) return lblResult_.SetText("Select one object or several first.");
  std::string result = std::to_string(count) + (count == 1 ? " object " : " objects ") + done + ".";
  try {
    InTransaction(order);
    Read();
  } catch (const std::exception& error) {
    result = error.what();
    Fail(result);
  }
  lblResult_.SetText(result);
}

void ObjectManager::InTransaction(const std::function<void(const Object&)>& order) const {
  network_.Call("BeginTransaction");
  try {
    for (const std::size_t place : lvwObjects_.Selection()) order(objects_[place]);
  } catch (...) {
    network_.Call("CancelTransaction");
    throw;
  }
  network_.Call("CommitTransaction");
}

void ObjectManager::ReadAgain() {
  lblResult_.SetText("");
  try {
    Read();
  } catch (const std::exception& error) {
    lblResult_.SetText(error.what());
    Fail(error.what());
  }
}

}  // namespace controls
