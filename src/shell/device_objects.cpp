#include "shell/device_objects.h"

#include <algorithm>

#include "base/error.h"
#include "base/text.h"
#include "hosting/host_contract.h"

namespace shell {
namespace {

using automation::Object;

Object ItemOf(const Object& collection, int number) { return collection.Child(host::kItem, number); }

KeyedCollection<NetworkVariable> VariablesOf(const Object& lonMarkObject) {
  KeyedCollection<NetworkVariable> variables;
  const Object collection = lonMarkObject.Child(host::kNetworkVariables);
  const int count = collection.Whole(host::kCount);
  for (int i = 1; i <= count; ++i) {
    NetworkVariable variable;
    variable.object = ItemOf(collection, i);
    const std::string name = variable.object.Text(host::kName);
    variables.Add(name, std::move(variable));
  }
  return variables;
}

PropertyCollection PropertiesOf(const Object& object) {
  return PropertyCollection(object.Child(host::kConfigProperties));
}

// Collects "name1" to "nameN" and their properties and variables; entry 0 of the tables stays empty.
template <std::size_t N>
void LoadHardware(DeviceObjects& tree, const std::string& name, std::vector<Object>& objects,
                  std::array<PropertyCollection, N>& properties,
                  std::array<KeyedCollection<NetworkVariable>, N>& variables) {
  for (std::size_t i = 1; i < N; ++i) objects.push_back(tree.LonMarkObjectsByName[name + std::to_string(i)]);
  for (std::size_t i = 1; i < N; ++i) {
    properties[i] = PropertiesOf(objects[i - 1]);
    variables[i] = VariablesOf(objects[i - 1]);
  }
}

}  // namespace

bool CaseBlind::operator()(std::string_view left, std::string_view right) const {
  return base::Upper(left) < base::Upper(right);
}

template <class T>
T& KeyedCollection<T>::operator[](std::string_view name) {
  if (T* item = Find(name)) return *item;
  throw base::Error("The device has no object named \"" + std::string(name) + "\".");
}

template class KeyedCollection<Object>;
template class KeyedCollection<NetworkVariable>;

const Object& PropertyCollection::operator[](int number) {
  if (!collection_) throw base::Error("There are no configuration properties at entry 0.");
  const auto found = properties_.find(number);
  if (found != properties_.end()) return found->second;
  return properties_.emplace(number, ItemOf(collection_, number)).first->second;
}

PropertyCollection& NetworkVariable::ConfigProperties() {
  if (!fetched_) {
    properties_ = PropertiesOf(object);
    fetched_ = true;
  }
  return properties_;
}

void LoadDeviceObjects(const Object& objectServer, DeviceObjects& tree) {
  tree.Device = objectServer.Child(host::kDevice);
  const Object lonMarkObjects = tree.Device.Child(host::kLonMarkObjects);
  const int count = lonMarkObjects.Whole(host::kCount);
  for (int i = 1; i <= count; ++i) {
    const Object object = ItemOf(lonMarkObjects, i);
    tree.LonMarkObjectsByName.Add(object.Text(host::kName), object);
  }
  tree.NodeObject = tree.LonMarkObjectsByName["NodeObject"];
  tree.NodeProperties = PropertiesOf(tree.NodeObject);
  tree.NodeVariables = VariablesOf(tree.NodeObject);
  tree.RoofTopObject = tree.LonMarkObjectsByName["RoofTopObject"];
  tree.RoofTopProperties = PropertiesOf(tree.RoofTopObject);
  tree.RoofTopVariables = VariablesOf(tree.RoofTopObject);
  LoadHardware(tree, "HardwareInput", tree.HardwareInputs, tree.InputProperties, tree.InputVariables);
  LoadHardware(tree, "HardwareOutput", tree.HardwareOutputs, tree.OutputProperties, tree.OutputVariables);
  for (std::size_t k = 0; k < tree.ControlOutputNames.size(); ++k) {
    tree.ControlOutputNames[k] = "nvoCtrlOutput" + std::to_string(k + 1);
  }
}

void CheckIfOccupency(DeviceObjects& tree) {
  const auto parts = base::Split(tree.RoofTopVariables["nviOccCmd"].object.Text(host::kMvFormatType), ".");
  tree.OccupancyIsStandard = (parts.size() > 1 ? parts[1] : parts[0]) == "SNVT_occupancy";
}

}  // namespace shell
