// The device object tree: references to the host's objects of the device being configured, taken once while
// the main window loads. It holds no values: every read and write goes to the host at the moment it is made.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"

namespace shell {

/// The configuration properties of one object, reached by the device's fixed numbers from 1. Each property
/// object is fetched from the host once.
class PropertyCollection {
 public:
  PropertyCollection() = default;
  explicit PropertyCollection(automation::Object collection) : collection_(std::move(collection)) {}

  /// Throws automation::Error for a number that the object does not have, and base::Error for the entry 0 of
  /// the input and output tables, which is never filled.
  const automation::Object& operator[](int number);

 private:
  automation::Object collection_;
  std::map<int, automation::Object> properties_;
};

/// One network variable with its own configuration properties.
struct NetworkVariable {
  automation::Object object;

  PropertyCollection& ConfigProperties();

 private:
  PropertyCollection properties_;
  bool fetched_ = false;
};

struct CaseBlind {
  using is_transparent = void;
  bool operator()(std::string_view left, std::string_view right) const;
};

/// Objects by name, without regard to case, as the platform's keyed collections compare their keys.
template <class T>
class KeyedCollection {
 public:
  void Add(const std::string& name, T item) { items_.insert_or_assign(name, std::move(item)); }
  T* Find(std::string_view name) {
    const auto found = items_.find(name);
    return found == items_.end() ? nullptr : &found->second;
  }
  /// Throws base::Error naming what is missing.
  T& operator[](std::string_view name);
  std::size_t Count() const { return items_.size(); }

 private:
  std::map<std::string, T, CaseBlind> items_;
};

struct DeviceObjects {
  static constexpr int kInputs = 6;
  static constexpr int kOutputs = 7;

  automation::Object Device;
  KeyedCollection<automation::Object> LonMarkObjectsByName;
  automation::Object NodeObject;
  automation::Object RoofTopObject;
  PropertyCollection NodeProperties;
  KeyedCollection<NetworkVariable> NodeVariables;
  PropertyCollection RoofTopProperties;
  KeyedCollection<NetworkVariable> RoofTopVariables;
  std::vector<automation::Object> HardwareInputs;
  // Indexed by the input's or output's own number; entry 0 exists and is never filled.
  std::array<PropertyCollection, kInputs + 1> InputProperties;
  std::array<KeyedCollection<NetworkVariable>, kInputs + 1> InputVariables;
  std::vector<automation::Object> HardwareOutputs;
  std::array<PropertyCollection, kOutputs + 1> OutputProperties;
  std::array<KeyedCollection<NetworkVariable>, kOutputs + 1> OutputVariables;
  // Entry k names the variable that carries output k + 1.
  std::array<std::string, kOutputs> ControlOutputNames;
  bool IsImperial = false;           // false: metric ("#SI") formats, true: imperial ("#US")
  bool OccupancyIsStandard = false;  // "nviOccCmd" is of type "SNVT_occupancy"
};

/// Fills the tree from the host's object server; the unit flag is left as it is. Throws automation::Error or
/// base::Error when a host call fails or an object of the device template is missing.
void LoadDeviceObjects(const automation::Object& objectServer, DeviceObjects& tree);

/// Sets OccupancyIsStandard from the type of "nviOccCmd", without a scope prefix before a ".".
void CheckIfOccupency(DeviceObjects& tree);

}  // namespace shell
