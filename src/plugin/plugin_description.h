// What the plug-in tells the host's plug-in framework about itself: who makes it, what it configures, which
// automation class to create, which commands it offers and which device type it serves. Built once at start;
// the registration component receives it, and the server version check takes the required version from it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "automation/object.h"

namespace plugin {

/// The running program's own identity.
struct ProgramIdentity {
  std::string productName;
  std::string companyName;
  int major = 1;
  int minor = 0;
  int revision = 0;

  std::string Version() const;
};

/// One record of the description: values by member name, in the order in which they are set.
using DescriptionRecord = std::vector<std::pair<std::string, automation::Value>>;

struct PlugInDescription {
  DescriptionRecord plugIn;
  DescriptionRecord deviceCommand;
  DescriptionRecord blockCommand;
  DescriptionRecord deviceType;

  // The values that other rooms read.
  std::string manufacturer;
  std::string requiredServerVersion;
  std::string displayName;
  std::int32_t manufacturerId = 0;
};

PlugInDescription BuildDescription(const ProgramIdentity& identity);

/// Hands the description to the host's registration component, or takes it back. Throws automation::Error.
void RegisterPlugIn(const automation::Object& registration, const PlugInDescription& description);
void DeregisterPlugIn(const automation::Object& registration, const PlugInDescription& description);

}  // namespace plugin
