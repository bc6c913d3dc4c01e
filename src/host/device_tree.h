// The device object tree: references to the host's objects of the device being configured, taken once while
// the main window loads. It holds no values: every read and write goes to the host at the moment it is made.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"
#include "host/property.h"

namespace host {

/// The configuration properties of one object, reached by the device's fixed numbers from 1. Each property
/// object is fetched from the host once.
class PropertyCollection {
 public:
  PropertyCollection() = default;
  /// `owner` is the name of the LonMark object or variable.
  PropertyCollection(automation::Object collection, std::string owner, Journal& journal)
      : collection_(std::move(collection)), owner_(std::move(owner)), journal_(&journal) {}

  /// Throws automation::Error for a number that the object does not have, and base::Error for the entry 0 of
  /// the input and output tables, which is never filled.
  Property& operator[](int number);
  /// How many there are. Throws automation::Error.
  int Count() const;

 private:
  automation::Object collection_;
  std::string owner_;
  Journal* journal_ = nullptr;
  std::map<int, Property> properties_;
};

/// One network variable with its own configuration properties.
class NetworkVariable {
 public:
  NetworkVariable(automation::Object object, std::string name, Journal& journal)
      : object_(std::move(object)), name_(std::move(name)), journal_(&journal) {}

  PropertyCollection& ConfigProperties();

  // All throw automation::Error when the host refuses.

  /// Its type in the device, with a scope prefix where the host gives one.
  std::string Type() const;
  /// The types that it can be given, as the host names them; may be empty.
  std::vector<std::string> AllowedTypes() const;
  /// Gives it another type and notes that in the journal, while it is open. `control` is where it was chosen.
  void ChangeType(std::string_view type, std::string_view control = {});

 private:
  automation::Object object_;
  std::string name_;
  Journal* journal_;
  std::optional<PropertyCollection> properties_;
};

/// The network variables of one LonMark object, keyed by name. The host's own collection is keyed too, so
/// each variable is fetched from it by its name when it is first asked for: most of a device's variables
/// never are.
class VariableCollection {
 public:
  VariableCollection() = default;
  VariableCollection(automation::Object lonMarkObject, Journal& journal)
      : owner_(std::move(lonMarkObject)), journal_(&journal) {}

  /// Throws automation::Error for a name that the object does not have.
  NetworkVariable& operator[](const std::string& name);

 private:
  automation::Object owner_;
  Journal* journal_ = nullptr;
  automation::Object collection_;
  std::map<std::string, NetworkVariable> variables_;
};

// Where the node object keeps the location of its device.
inline constexpr int kLocationProperty = 2;
inline constexpr std::string_view kLocationFormat = "SCPTlocation";

struct DeviceObjects {
  static constexpr int kInputs = 6;
  static constexpr int kOutputs = 7;

  automation::Object Device;
  automation::Object LonMarkObjectsByName;  // the host's collection, which takes names
  automation::Object NodeObject;
  automation::Object RoofTopObject;
  PropertyCollection NodeProperties;
  VariableCollection NodeVariables;
  PropertyCollection RoofTopProperties;
  VariableCollection RoofTopVariables;
  std::vector<automation::Object> HardwareInputs;
  // Indexed by the input's or output's own number; entry 0 exists and is never filled.
  std::array<PropertyCollection, kInputs + 1> InputProperties;
  std::array<VariableCollection, kInputs + 1> InputVariables;
  std::vector<automation::Object> HardwareOutputs;
  std::array<PropertyCollection, kOutputs + 1> OutputProperties;
  std::array<VariableCollection, kOutputs + 1> OutputVariables;
  // Entry k names the variable that carries output k + 1.
  std::array<std::string, kOutputs> ControlOutputNames;
  bool IsImperial = false;  // false: metric ("#SI") formats, true: imperial ("#US")
  // "nviOccCmd" is of type "SNVT_occupancy". By the type's name when the tree is loaded; by the number of its
  // type when the options page is filled, which says the opposite; and by the name again when the network
  // inputs page is filled, which comes after it, and with each type chosen there. So the name wins, but for
  // an options page that is filled alone.
  bool OccupancyIsStandard = false;
};

/// Fills the tree from the host's object server; the unit flag is left as it is. What is written through the
/// tree notes itself in `journal`, which outlives it. Throws automation::Error or base::Error when a host
/// call fails or an object of the device template is missing.
void LoadDeviceObjects(const automation::Object& objectServer, DeviceObjects& tree, Journal& journal);

/// The name of a variable's type without a scope prefix before a ".".
std::string BareType(std::string_view type);

/// Sets OccupancyIsStandard from a type of "nviOccCmd", which need not be in the device yet.
void SetOccupancyType(DeviceObjects& tree, std::string_view type);

/// Sets OccupancyIsStandard from the type that "nviOccCmd" has in the device.
void CheckIfOccupency(DeviceObjects& tree);

}  // namespace host
