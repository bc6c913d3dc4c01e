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

PropertyCollection PropertiesOf(const Object& object, const std::string& name) {
  return PropertyCollection(Fetch(object, name, kConfigProperties));
}

// Collects "name1" to "nameN" with their properties and variables; entry 0 of the tables stays empty.
template <std::size_t N>
void LoadHardware(const Object& lonMarkObjects, const std::string& name, std::vector<Object>& objects,
                  std::array<PropertyCollection, N>& properties,
                  std::array<VariableCollection, N>& variables) {
  for (std::size_t i = 1; i < N; ++i) {
    objects.push_back(FetchByName(lonMarkObjects, name + std::to_string(i)));
  }
  for (std::size_t i = 1; i < N; ++i) {
    properties[i] = PropertiesOf(objects[i - 1], name + std::to_string(i));
    variables[i] = VariableCollection(objects[i - 1]);
  }
}

}  // namespace

const Object& PropertyCollection::operator[](int number) {
  if (!collection_) throw base::Error("There are no configuration properties at entry 0.");
  const auto found = properties_.find(number);
  if (found != properties_.end()) return found->second;
  return properties_.emplace(number, collection_.Child(kItem, number)).first->second;
}

PropertyCollection& NetworkVariable::ConfigProperties() {
  if (!fetched_) {
    properties_ = PropertyCollection(object.Child(kConfigProperties));
    fetched_ = true;
  }
  return properties_;
}

NetworkVariable& VariableCollection::operator[](const std::string& name) {
  const auto found = variables_.find(name);
  if (found != variables_.end()) return found->second;
  if (!collection_) collection_ = owner_.Child(kNetworkVariables);
  NetworkVariable variable;
  variable.object = collection_.Child(kItem, name);
  return variables_.emplace(name, std::move(variable)).first->second;
}

void LoadDeviceObjects(const Object& objectServer, DeviceObjects& tree) {
  tree.Device = Fetch(objectServer, "ObjectServer", kDevice);
  tree.LonMarkObjectsByName = Fetch(tree.Device, std::string(kDevice), kLonMarkObjects);
  tree.NodeObject = FetchByName(tree.LonMarkObjectsByName, "NodeObject");
  tree.NodeProperties = PropertiesOf(tree.NodeObject, "NodeObject");
  tree.NodeVariables = VariableCollection(tree.NodeObject);
  tree.RoofTopObject = FetchByName(tree.LonMarkObjectsByName, "RoofTopObject");
  tree.RoofTopProperties = PropertiesOf(tree.RoofTopObject, "RoofTopObject");
  tree.RoofTopVariables = VariableCollection(tree.RoofTopObject);
  LoadHardware(tree.LonMarkObjectsByName, "HardwareInput", tree.HardwareInputs, tree.InputProperties,
               tree.InputVariables);
  LoadHardware(tree.LonMarkObjectsByName, "HardwareOutput", tree.HardwareOutputs, tree.OutputProperties,
               tree.OutputVariables);
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
  SetOccupancyType(tree, tree.RoofTopVariables["nviOccCmd"].object.Text(kMvFormatType));
}

}  // namespace host
