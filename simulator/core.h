// What all objects of one building share: catalogue, template, store, faults, the list of devices and the
// open sessions. HostObject is the base of every class that the host shows: it holds the core and reports
// each call to the faults.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/local_object.h"
#include "base/error.h"
#include "simulator/building.h"
#include "simulator/refusal.h"
#include "simulator/store.h"
#include "simulator/template.h"

namespace simulator {

struct DeviceRecord {
  std::string key;
  std::string location;
  std::string programId;
  std::string version;
};

/// A language of the shared language component: its texts by section and key, and the type face for them.
struct LanguageTexts {
  std::string font;
  std::map<std::string, std::vector<std::pair<std::string, std::string>>, std::less<>> sections;
};

struct Session {
  bool open = false;
  // Who it is; two sessions of the same identity work on the same kind of block.
  std::string interfaceName;
  std::int32_t lmoIndex = 0;
  std::string programId;

  std::map<std::string, automation::Object, std::less<>> devices;  // by key; made when first asked for
  automation::Object device;                                       // the one last taken
  std::string deviceKey;                                           // its key; empty before
  std::string transactionDevice;  // key of the device whose transaction is open, or empty
};

struct Core {
  explicit Core(const BuildingOptions& options);

  const DeviceRecord& Record(std::string_view deviceKey) const;
  /// The stored value as this device's transaction sees it, or `initial` when it was never written.
  const Fields& ValueOf(std::string_view deviceKey, const std::string& key, const Fields& initial) const;
  /// Throws base::Error naming the first stored value of the device that does not fit `device`.
  void CheckStored(const DeviceValues& stored, const DeviceTemplate& device) const;
  /// Throws base::Error naming the file when it cannot be read.
  const LanguageTexts& TextsOf(const std::string& language);

  base::Numbers numbers;
  TypeCatalogue catalogue;
  std::string templateJson;
  DeviceTemplate deviceTemplate;
  Store store;
  simulator::Faults faults;
  SessionLimits limits;
  std::string serverVersion;
  std::string makerPrefix;
  std::string networkName;
  std::string ipAddress;
  std::int32_t port = 0;
  std::map<std::string, std::filesystem::path, std::less<>> languages;  // English without a file
  std::vector<DeviceRecord> devices;
  std::vector<Session*> sessions;
  std::vector<std::string> log;

 private:
  void ReadBuilding(const std::filesystem::path& file);
  void ListLanguages(const std::filesystem::path& folder);

  std::map<std::string, LanguageTexts, std::less<>> texts_;  // of the languages that were asked for
};

/// Puts the variable's type and, where it has one, its SCPTnvType property into `values`.
void SetVariableType(const TypeCatalogue& catalogue, const VariableTemplate& variable,
                     const std::string& type, DeviceValues& values);

/// The type name of "scope.name" or "name".
std::string_view BareType(std::string_view type);

template <class T>
class HostObject : public automation::LocalClass<T> {
 public:
  explicit HostObject(std::shared_ptr<Core> core) : core_(std::move(core)) {}

  void BeforeCall(std::string_view member) { core_->faults.Before(T::kClassName, member); }

 protected:
  Core& GetCore() const { return *core_; }
  const std::shared_ptr<Core>& SharedCore() const { return core_; }

  /// Runs `action`; what the building's own parts throw becomes a refusal of this object.
  template <class Action>
  static decltype(auto) Refusing(Action action) {
    try {
      return action();
    } catch (const base::Error& error) {
      Refuse(error.what());
    }
  }

 private:
  std::shared_ptr<Core> core_;
};

}  // namespace simulator
