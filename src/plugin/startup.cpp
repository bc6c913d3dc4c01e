#include "plugin/startup.h"

#include "base/text.h"
#include "host/contract.h"

namespace plugin {
namespace {

constexpr const char* kFamilyFolder = "\\Apps\\QVR KV\\OvxCommonFiles";
constexpr const char* kHelpFile = "\\HelpFile\\TARN-M Help File.chm";
constexpr const char* kSettingsFolder = "Software\\PELLR\\";

}  // namespace

std::string CommonFilesFolder(const std::string& lonWorksFolder) { return lonWorksFolder + kFamilyFolder; }

shell::Settings MakeSettings(const StartUpFacts& facts, const PlugInDescription& description) {
  shell::Settings settings;
  settings.title = description.displayName;
  settings.applicationFolder = facts.applicationFolder;
  settings.commonFilesFolder = CommonFilesFolder(facts.lonWorksFolder);
  const std::string largeIcon = settings.commonFilesFolder + "\\icon32.ico";
  settings.iconFile = facts.fileExists(largeIcon) ? largeIcon : settings.commonFilesFolder + "\\icon.ico";
  settings.helpFile = facts.applicationFolder + kHelpFile;
  settings.manufacturerId = std::to_string(description.manufacturerId);
  settings.manufacturerName = description.manufacturer;
  settings.requiredServerVersion = description.requiredServerVersion;
  settings.version = facts.identity.Version();
  settings.licences = facts.licences;
  settings.settingsKey = kSettingsFolder + description.manufacturer + "\\" + description.displayName;
  settings.documentsFolder = facts.documentsFolder;
  settings.userName = facts.userName;
  settings.numbers = base::Numbers(facts.decimalSeparator);
  return settings;
}

void RunStandAlone(std::string_view commandLine, const PlugInDescription& description,
                   const std::function<automation::Object(std::string_view)>& createObject) {
  const std::string word = base::Split(base::Lower(base::Trim(commandLine)), " ").front();
  if (word == "/regplugin") RegisterPlugIn(createObject(host::kRegistrationId), description);
  if (word == "/deregplugin") DeregisterPlugIn(createObject(host::kRegistrationId), description);
}

}  // namespace plugin
