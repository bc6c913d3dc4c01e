// The virtual building: a small host with several KV-TARN controllers on one network. It owns the type
// catalogue, the device template, the value store and the sessions, and gives out the late-bound objects that
// a host offers: the object server, the registration and the language component. Tests use it natively; the
// Windows host shows the same objects as COM objects. Everything runs on one thread. Objects that were given
// out keep what they need alive.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/object.h"
#include "base/numbers.h"
#include "simulator/faults.h"

namespace simulator {

struct Core;
struct DeviceValues;

/// How many sessions OpenSession lets in.
struct SessionLimits {
  int clients = 8;     // more at a time are answered "ERROR_MAX_CLIENTS"
  int sameBlock = 0;   // sessions with the same interface, block and program; more are answered
                       // "ERROR_PLUGIN_INSTANCE". 0: one for every device of the building
  std::string answer;  // not empty: what OpenSession answers whatever is asked
};

struct BuildingOptions {
  std::filesystem::path dataFolder;  // types.json, device.json, building.json; languages/*.json
  std::filesystem::path storeFile;   // where values are kept; empty: in memory only
  base::Numbers numbers;             // decimal separator of the users
  SessionLimits limits;
  std::string serverVersion = "2.7";
};

struct DeviceInfo {
  std::string name;
  std::string location;  // the host's own location text
  std::string programId;
  std::string version;
  std::string templateFileName;  // PROGRAMID_major_minor.bin
};

/// A plug-in as its registration described it: records by name, each a list of members and values as set.
using RegistrationRecord = std::vector<std::pair<std::string, std::string>>;
struct RegisteredPlugIn {
  std::string id;
  std::vector<std::pair<std::string, RegistrationRecord>> records;
};

class Building {
 public:
  /// Reads the data folder and the store file. Throws base::Error naming the file and what is wrong in it.
  explicit Building(const BuildingOptions& options);

  /// A new object server each time, as every client has its own. Members: RefreshCatalog(makerPrefix),
  /// Connect(networkName, ipAddress, port), Device, Version.
  automation::Object ObjectServer() const;
  /// NewDescription(), Register(description), Deregister(description); see registration.h.
  automation::Object Registration() const;
  /// Section(name), LastChange, Languages, Language, Font; see language.h.
  automation::Object Language() const;

  simulator::Faults& Faults();
  SessionLimits& Limits();

  /// What a host must hand to the tool.
  std::string ServerVersion() const;
  std::string NetworkName() const;
  std::string IpAddress() const;
  std::int32_t Port() const;
  std::vector<DeviceInfo> Devices() const;
  std::vector<RegisteredPlugIn> PlugIns() const;

  /// A further unit as it comes from the factory; and one taken away with all its values. Both are in the
  /// store at once. Throw base::Error in words, with nothing changed; see units.h.
  void AddUnit(std::string_view name, std::string_view location);
  void RemoveUnit(std::string_view name);

  /// The device template in its loadable form, as a file of the name DeviceInfo::templateFileName holds it.
  automation::Bytes TemplateBytes() const;

  /// The committed value, past every session and transaction. `objectName` is a LonMark object
  /// ("RoofTopObject") or a network variable of one ("RoofTopObject/nviCO2"). `precision` -1: the type's own.
  /// Throws automation::Error for an unknown name, number or format.
  std::string StoredText(std::string_view deviceName, std::string_view objectName, int propertyNumber,
                         std::string_view formatName, int precision = -1) const;

  /// "ENABLED" or "DISABLED", and behind a blank the result of the last self-test where there is one; as
  /// committed. Throws automation::Error for an unknown name.
  std::string StateOfObject(std::string_view deviceName, std::string_view objectName) const;

  /// All values of a device as committed, those of its template included, as one text: two are equal when the
  /// device holds the same values.
  std::string StoredDevice(std::string_view deviceName) const;

  /// Sentences of what went wrong without an error: refused templates, ended sessions with an open
  /// transaction.
  const std::vector<std::string>& Log() const;

 private:
  const DeviceValues& Committed(std::string_view deviceName) const;

  std::shared_ptr<Core> core_;
};

}  // namespace simulator
