#include "host/device_tree.h"

#include "base/error.h"
#include "base/text.h"
#include "host/contract.h"

namespace host {
namespace {

using automation::Object;

PropertyCollection PropertiesOf(const Object& object) {
  return PropertyCollection(object.Child(kConfigProperties));
}

// Collects "name1" to "nameN" with their properties and variables; entry 0 of the tables stays empty.
template <std::size_t N>
void LoadHardware(const Object& lonMarkObjects, const std::string& name, std::vector<Object>& objects,
                  std::array<PropertyCollection, N>& properties,
                  std::array<VariableCollection, N>& variables) {
  for (std::size_t i = 1; i < N; ++i) {
    objects.push_back(lonMarkObjects.Child(kItem, name + std::to_string(i)));
  }
  for (std::size_t i = 1; i < N; ++i) {
    properties[i] = PropertiesOf(objects[i - 1]);
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
    properties_ = PropertiesOf(object);
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
  tree.Device = objectServer.Child(kDevice);
  tree.LonMarkObjectsByName = tree.Device.Child(kLonMarkObjects);
  tree.NodeObject = tree.LonMarkObjectsByName.Child(kItem, "NodeObject");
  tree.NodeProperties = PropertiesOf(tree.NodeObject);
  tree.NodeVariables = VariableCollection(tree.NodeObject);
  tree.RoofTopObject = tree.LonMarkObjectsByName.Child(kItem, "RoofTopObject");
  tree.RoofTopProperties = PropertiesOf(tree.RoofTopObject);
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
