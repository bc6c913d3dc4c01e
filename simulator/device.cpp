#include "simulator/device.h"

#include "base/text.h"
#include "simulator/members.h"
#include "simulator/property.h"
#include "simulator/units.h"

namespace simulator {

using automation::Arguments;
using automation::Value;

namespace {

constexpr char kNodeObject[] = "NodeObject";
constexpr char kInputObject[] = "HardwareInput";

}  // namespace

constexpr automation::MemberOf<LonMarkObject> LonMarkObject::kMembers[] = {
    {"Name", [](LonMarkObject& self, const Arguments&) -> Value { return self.name_; }},
    {"ConfigProperties", [](LonMarkObject& self, const Arguments&) -> Value { return self.properties_; }},
    {"NetworkVariables", [](LonMarkObject& self, const Arguments&) -> Value { return self.variables_; }},
    {"State",
     [](LonMarkObject& self, const Arguments&) -> Value {
       return self.Current().enabled ? kEnabled : kDisabled;
     },
     [](LonMarkObject& self, const Value& value) { self.ChangeState(value.AsText()); }},
    {"Test", nullptr, nullptr, Run<&LonMarkObject::Test>},
    {"TestResult", [](LonMarkObject& self, const Arguments&) -> Value { return self.Current().test; }},
};

LonMarkObject::LonMarkObject(std::shared_ptr<Core> core, std::string deviceKey,
                             const ObjectTemplate& definition)
    : HostObject(std::move(core)),
      deviceKey_(std::move(deviceKey)),
      name_(definition.name),
      properties_(MakeProperties(SharedCore(), deviceKey_, definition.name, definition.properties)) {
  CollectionItems items;
  for (const VariableTemplate& variable : definition.variables) {
    auto object = std::make_shared<NetworkVariable>(SharedCore(), deviceKey_, variable);
    items.push_back({variable.name, automation::Object(std::move(object))});
  }
  variables_ = MakeCollection(SharedCore(), "NetworkVariables of " + name_, std::move(items));
}

ObjectState LonMarkObject::Current() const {
  const auto& objects = GetCore().store.Device(deviceKey_).objects;
  const auto found = objects.find(name_);
  return found == objects.end() ? ObjectState() : found->second;
}

void LonMarkObject::Keep(const ObjectState& state) {
  if (state == Current()) return;
  Refusing([&] {
    GetCore().store.Change(deviceKey_, [&](DeviceValues& device) { device.objects[name_] = state; });
  });
}

void LonMarkObject::ChangeState(const std::string& state) {
  if (state != kEnabled && state != kDisabled) {
    Refuse("There is no state \"" + state + "\"; the states are " + kEnabled + " and " + kDisabled + ".");
  }
  if (name_ == kNodeObject && state == kDisabled) {
    Refuse("NodeObject cannot be disabled: the other objects are reached through it.");
  }
  ObjectState next = Current();
  next.enabled = state == kEnabled;
  Keep(next);
}

void LonMarkObject::Test() {
  ObjectState next = Current();
  if (!next.enabled) Refuse(name_ + " is disabled; enable it before the test.");
  const std::string fault = Diagnosis();
  next.test = fault.empty() ? "PASSED" : "FAILED: " + fault;
  Keep(next);
}

// The one fault that the controller can find by itself.
std::string LonMarkObject::Diagnosis() const {
  if (!name_.starts_with(kInputObject)) return {};
  const auto value = [this](const char* property) {
    return properties_.Child("Item", property).Text("Value");
  };
  const std::string function = value("UCPTroofTopInputType");
  if (function == "UNUSED" || value("UCPTsensorType") != "DISCONNECTED") return {};
  return "no sensor for " + function;
}

constexpr automation::MemberOf<DeviceInterface> DeviceInterface::kMembers[] = {
    {"ProgramId", [](DeviceInterface& self, const Arguments&) -> Value { return self.Record().programId; }},
    {"Version", [](DeviceInterface& self, const Arguments&) -> Value { return self.Record().version; }},
};

constexpr automation::MemberOf<Device> Device::kMembers[] = {
    {"Name", [](Device& self, const Arguments&) -> Value { return self.Name(); },
     [](Device& self, const Value& value) { self.Rename(value.AsText()); }},
    {"Location",
     [](Device& self, const Arguments&) -> Value { return self.GetCore().Record(self.deviceKey_).location; }},
    {"interface", [](Device& self, const Arguments&) -> Value { return self.interface_; }},
    {"LonMarkObjects", [](Device& self, const Arguments&) -> Value { return self.collection_; }},
    {"AddLmo", nullptr, nullptr,
     [](Device& self, const Arguments& arguments) -> Value {
       return self.Load(arguments[0].AsWhole(), arguments[2].AsText(), arguments[3].AsBytes());
     }},
};

Device::Device(std::shared_ptr<Core> core, std::string deviceKey)
    : HostObject(std::move(core)),
      deviceKey_(std::move(deviceKey)),
      collection_(std::make_shared<Collection>(SharedCore(), "LonMarkObjects", objects_)),
      interface_(std::make_shared<DeviceInterface>(SharedCore(), deviceKey_)) {}

void Device::Rename(const std::string& name) {
  if (name == Name()) return;
  Refusing([&] {
    CheckUnitName(GetCore(), name, deviceKey_);
    GetCore().store.Change(deviceKey_, [&](DeviceValues& device) { device.name = name; });
  });
}

bool Device::Load(std::int32_t lmoIndex, const std::string& fileName, const automation::Bytes& bytes) {
  Core& core = GetCore();
  try {
    const std::string json = UnpackTemplate(bytes);
    // Nearly always the building's own, which is known already.
    const DeviceTemplate device =
        json == core.templateJson ? core.deviceTemplate : ReadTemplate(json, core.catalogue);
    const DeviceRecord& record = core.Record(deviceKey_);
    if (!base::EqualsNoCase(device.programId, record.programId) || device.version != record.version) {
      throw base::Error("The device template is for program " + device.programId + " version " +
                        device.version + ", not " + record.programId + " version " + record.version + ".");
    }
    if (lmoIndex < 0 || lmoIndex >= static_cast<std::int64_t>(device.objects.size())) {
      throw base::Error("The device template has no object with index " + std::to_string(lmoIndex) + ".");
    }
    core.CheckStored(core.store.Device(deviceKey_), device);
    CollectionItems items;
    for (const ObjectTemplate& definition : device.objects) {
      auto object = std::make_shared<LonMarkObject>(SharedCore(), deviceKey_, definition);
      items.push_back({definition.name, automation::Object(std::move(object))});
    }
    *objects_ = std::move(items);
    return true;
  } catch (const base::Error& error) {
    core.log.push_back(Name() + ", " + fileName + ": " + error.what());
    return false;
  }
}

}  // namespace simulator
