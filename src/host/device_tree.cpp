#include "host/device_tree.h"

#include "automation/error.h"
#include "base/error.h"
#include "base/text.h"
#include "host/contract.h"

namespace host {
namespace {

using automation::Object;

// The object behind a member; a fault tells which object was asked for what.
template <class... Key>
Object Fetch(const Object& object, const std::string& name, std::string_view member, const Key&... key) {
  try {
    return object.Child(member, key...);
  } catch (const automation::Error& error) {
    std::string asked = name + "." + std::string(member);
    ((asked += "(" + key + ")"), ...);
    throw automation::Error(error.Code(), asked + ": " + error.Description(), error.Source());
  }
}

Object FetchByName(const Object& lonMarkObjects, const std::string& name) {
  return Fetch(lonMarkObjects, std::string(kLonMarkObjects), kItem, name);
}

PropertyCollection PropertiesOf(const Object& object, const std::string& name, Journal& journal) {
  return {Fetch(object, name, kConfigProperties), name, journal};
}

// Collects "name1" to "nameN" with their properties and variables; entry 0 of the tables stays empty.
template <std::size_t N>
void LoadHardware(const Object& lonMarkObjects, const std::string& name, std::vector<Object>& objects,
                  std::array<PropertyCollection, N>& properties, std::array<VariableCollection, N>& variables,
                  Journal& journal) {
  for (std::size_t i = 1; i < N; ++i) {
    objects.push_back(FetchByName(lonMarkObjects, name + std::to_string(i)));
  }
  for (std::size_t i = 1; i < N; ++i) {
    properties[i] = PropertiesOf(objects[i - 1], name + std::to_string(i), journal);
    variables[i] = VariableCollection(objects[i - 1], journal);
  }
}

}  // namespace

Property& PropertyCollection::operator[](int number) {
  if (!collection_) throw base::Error("There are no configuration properties at entry 0.");
  const auto found = properties_.find(number);
  if (found != properties_.end()) return found->second;
  Property property(collection_.Child(kItem, number), owner_, number, *journal_);
  return properties_.emplace(number, std::move(property)).first->second;
}

int PropertyCollection::Count() const { return collection_.Get(kCount).AsWhole(); }

PropertyCollection& NetworkVariable::ConfigProperties() {
  if (!properties_) properties_ = PropertiesOf(object_, name_, *journal_);
  return *properties_;
}

std::string NetworkVariable::Type() const { return object_.Text(kMvFormatType); }

std::vector<std::string> NetworkVariable::AllowedTypes() const {
  std::vector<std::string> types = base::Split(object_.Text(kAllowedTypes), " ");
  std::erase(types, "");
  return types;
}

void NetworkVariable::ChangeType(std::string_view type, std::string_view control) {
  if (journal_->IsOpen()) {
    journal_->Note({.object = name_,
                    .before = BareType(Type()),
                    .text = BareType(type),
                    .fields = {{0, std::string(control)}},
                    .read = [object = object_](bool) { return BareType(object.Text(kMvFormatType)); }});
  }
  object_.Put(kMvFormatType, type);
}

NetworkVariable& VariableCollection::operator[](const std::string& name) {
  const auto found = variables_.find(name);
  if (found != variables_.end()) return found->second;
  if (!collection_) collection_ = owner_.Child(kNetworkVariables);
  NetworkVariable variable(collection_.Child(kItem, name), name, *journal_);
  return variables_.emplace(name, std::move(variable)).first->second;
}

void LoadDeviceObjects(const Object& objectServer, DeviceObjects& tree, Journal& journal) {
  tree.Device = Fetch(objectServer, "ObjectServer", kDevice);
  tree.LonMarkObjectsByName = Fetch(tree.Device, std::string(kDevice), kLonMarkObjects);
  tree.NodeObject = FetchByName(tree.LonMarkObjectsByName, "NodeObject");
  tree.NodeProperties = PropertiesOf(tree.NodeObject, "NodeObject", journal);
  tree.NodeVariables = VariableCollection(tree.NodeObject, journal);
  tree.RoofTopObject = FetchByName(tree.LonMarkObjectsByName, "RoofTopObject");
  tree.RoofTopProperties = PropertiesOf(tree.RoofTopObject, "RoofTopObject", journal);
  tree.RoofTopVariables = VariableCollection(tree.RoofTopObject, journal);
  LoadHardware(tree.LonMarkObjectsByName, "HardwareInput", tree.HardwareInputs, tree.InputProperties,
               tree.InputVariables, journal);
  LoadHardware(tree.LonMarkObjectsByName, "HardwareOutput", tree.HardwareOutputs, tree.OutputProperties,
               tree.OutputVariables, journal);
  for (std::size_t k = 0; k < tree.ControlOutputNames.size(); ++k) {
    tree.ControlOutputNames[k] = "nvoCtrlOutput" + std::to_string(k + 1);
  }
}

std::string BareType(std::string_view type) {
  const auto parts = base::Split(type, ".");
  return parts.size() > 1 ? parts[1] : parts[0];
}

void SetOccupancyType(DeviceObjects& tree, std::string_view type) {
  tree.OccupancyIsStandard = BareType(type) == "SNVT_occupancy";
}

void CheckIfOccupency(DeviceObjects& tree) {
  SetOccupancyType(tree, tree.RoofTopVariables["nviOccCmd"].Type());
}

}  // namespace host
