#include "plugin/plugin_description.h"

#include "host/contract.h"
#include "host/session.h"

namespace plugin {
namespace {

void Fill(const automation::Object& target, const DescriptionRecord& record) {
  for (const auto& [member, value] : record) target.Put(member, value);
}

automation::Object Described(const automation::Object& registration, const PlugInDescription& description) {
  const automation::Object object =
      automation::RequireObject(registration.Call(host::kNewDescription), host::kNewDescription);
  Fill(object, description.plugIn);
  Fill(object.Child(host::kDeviceCommand), description.deviceCommand);
  Fill(object.Child(host::kBlockCommand), description.blockCommand);
  Fill(object.Child(host::kDeviceType), description.deviceType);
  return object;
}

}  // namespace

std::string ProgramIdentity::Version() const {
  return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(revision);
}

PlugInDescription BuildDescription(const ProgramIdentity& identity) {
  PlugInDescription description;
  description.manufacturer = "Veldran, Inc";
  description.requiredServerVersion = "2.7";
  description.displayName = "KV-TARN Configuration";
  description.manufacturerId = 17;
  description.plugIn = {
      {"ProductName", identity.productName},
      {"CompanyName", identity.companyName},
      {"ManufacturerID", description.manufacturerId},
      {"ManufacturerName", description.manufacturer},
      {"RequiredServerVersion", description.requiredServerVersion},
      {"Description", "Configures KV-TARN device"},
      {"DescriptionVersion", 1},
      {"DisplayName", description.displayName},
      {"ApiClass", "OVXPlugInAPI"},
      {"ServerProgId", "QVRKvTARNCfg.LNSPlugInAPI"},
      {"ProjectName", "QVRKvTARNCfg"},
      {"RegistrationScope", 2},
      {"Version", identity.Version()},
      // Flags and identifiers whose meaning belongs to the framework.
      {"Flag1", 3},
      {"Flag2", -1},
      {"Flag3", -1},
      {"Flag4", 1},
      {"Flag5", 5},
      {"Flag6", 2},
  };
  description.deviceCommand = {
      {"Name", "QVR " + description.displayName + " Device Configure"},
      {"Description", "Configuration of the RoofTop device"},
  };
  description.blockCommand = {
      {"Name", "QVR RoofTopObject Configure"},
      {"Description", "Configuration of the RoofTop LonMarkObject"},
      {"BlockType", "RoofTopObject"},
      {"BlockNumber", 8030},
  };
  description.deviceType = {
      {"ProgramId", "8000AB0C12340001"},
      {"MakerPrefix", std::string(host::kMakerPrefix)},
      {"Name", "QVR KV " + description.displayName},
  };
  return description;
}

void RegisterPlugIn(const automation::Object& registration, const PlugInDescription& description) {
  registration.Call(host::kRegister, Described(registration, description));
}

void DeregisterPlugIn(const automation::Object& registration, const PlugInDescription& description) {
  registration.Call(host::kDeregister, Described(registration, description));
}

}  // namespace plugin
