// Keeps the values of all devices, the registered plug-ins and the language choice in one JSON file, or in
// memory only. A device holds just the values that were ever written; the others are the defaults of its
// template. A transaction is a working copy of one device: cancel drops it, commit replaces the file in one
// step and then the values. Whatever is written outside a transaction is committed at once. Several processes
// may keep one file: each replaces only what it changes itself.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/building.h"
#include "simulator/catalogue.h"

namespace simulator {

/// What management knows of a LonMark object beside its values.
struct ObjectState {
  bool enabled = true;
  std::string test = {};  // result of the last self-test; empty before the first

  bool operator==(const ObjectState&) const = default;
};

struct DeviceValues {
  std::string name;
  std::map<std::string, Fields, std::less<>> values;  // by PropertyTemplate::key or VariableTemplate::key
  std::map<std::string, ObjectState, std::less<>> objects = {};  // by name; only those that differ from new
  std::optional<std::string> location = {};  // of a unit that a person added; building.json has the others'

  bool operator==(const DeviceValues&) const = default;
};

struct StoreContent {
  std::map<std::string, DeviceValues, std::less<>> devices;  // by the key that building.json or AddUnit gives
  std::set<std::string, std::less<>> removed;                // keys of devices that were taken away
  int unitsMade = 0;                                         // by AddUnit; no key is given twice
  std::vector<RegisteredPlugIn> plugIns;
  std::string language = "English";
  double languageChanged = 0;  // days, as the platform's date type counts; 0: never
};

class Store {
 public:
  /// Reads the file if it is there. Throws base::Error naming the file when it is not a store.
  explicit Store(std::filesystem::path file);

  /// Takes in what another process has written since. A device that it has removed stays known here, for
  /// those who hold it, but is not written again and cannot be changed. Throws as the constructor.
  void Refresh();

  const StoreContent& Committed() const { return content_; }
  /// The device as its transaction sees it, or as committed when none is open.
  const DeviceValues& Device(std::string_view device) const;

  /// A device that the file did not bring; not written to the file before the next commit.
  void AddDevice(const std::string& device, DeviceValues values);

  /// Changes one device, inside its transaction or committed at once.
  void Change(const std::string& device, const std::function<void(DeviceValues&)>& change);
  /// Changes anything else, committed at once. Throws base::Error, with nothing changed, when the file
  /// refuses.
  void ChangeContent(const std::function<void(StoreContent&)>& change);

  bool InTransaction(std::string_view device) const { return working_.contains(device); }
  /// Throws base::Error when a transaction of this device is open already or the file cannot be read.
  void Begin(const std::string& device);
  /// Both throw base::Error when no transaction is open. A commit that the file refuses ends the transaction
  /// like a cancel, leaves file and values as they were, and throws base::Error.
  void Commit(const std::string& device);
  void Cancel(const std::string& device) { TakeWorking(device); }

 private:
  DeviceValues TakeWorking(const std::string& device);

  std::filesystem::path file_;
  std::optional<std::string> fileText_;  // as last read or written here
  StoreContent content_;
  std::map<std::string, DeviceValues, std::less<>> working_;
};

}  // namespace simulator
