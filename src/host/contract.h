// What the tool expects of a host: every program id, member name and answer that it uses, in this one place.
// Whoever connects another host adapts this header and nothing else. All members are called late-bound, by
// name.
//
//   object server   RefreshCatalog(makerPrefix) yes/no; Device
//                   Connect(networkName, ipAddress, port) network or nothing
//   network         OpenSession(networkName, remote, interfaceName, lmoIndex, programId) status
//                   AppDevices; BeginTransaction(), CommitTransaction(), CancelTransaction()
//   collection      Count; Item(number from 1, or name); kNoSuchItem tells that there is none
//   device          Name (read, write); Location; interface -> ProgramId, Version; LonMarkObjects;
//                   AddLmo(lmoIndex, programId, fileName, bytes) yes/no
//   LonMark object  Name; ConfigProperties; NetworkVariables
//   variable        Name; MvFormatType (read, write); AllowedTypes (separated by blanks); ConfigProperties
//   property        Name; formatName (write); Precision (write); Value (read, write)
//   registration    NewDescription(); Register(description); Deregister(description)
//   description     the values of the plug-in; records of more: DeviceCommand, BlockCommand, DeviceType
//   language        Section(name); LastChange (date); Languages; Language (read, write); Font
//   editing control Initialize(device, number, choices or signal); IsChanged; WriteValue() yes/no; Finish();
//                   event Failed(text)
//   object manager  Initialize(application text, network, object server); Finish(); event Failed(text)
//   about control   Initialize(product, version, maker, licences); Finish(); licences: a table with one line
//                   for each library, cells separated by "|", the first line their titles
//
// A host that can, calls the system's CoAllowSetForegroundWindow on the tool's object before SendCommand.
#pragma once

#include <cstdint>
#include <string_view>

namespace host {

// Program ids.
inline constexpr std::string_view kObjectServerId = "MVPlugInLib.ObjectServer";
inline constexpr std::string_view kRegistrationId = "MVPlugInLib.Registration";
inline constexpr std::string_view kLanguageId = "MVLanguage.Language";
inline constexpr std::string_view kObjectManagerId = "MVSingleObjectManager.ObjectManager";
inline constexpr std::string_view kAboutId = "MVAbout.About";

// Object server.
inline constexpr std::string_view kRefreshCatalog = "RefreshCatalog";
inline constexpr std::string_view kConnect = "Connect";
inline constexpr std::string_view kDevice = "Device";

// Network.
inline constexpr std::string_view kOpenSession = "OpenSession";
inline constexpr std::string_view kAppDevices = "AppDevices";
inline constexpr std::string_view kBeginTransaction = "BeginTransaction";
inline constexpr std::string_view kCommitTransaction = "CommitTransaction";
inline constexpr std::string_view kCancelTransaction = "CancelTransaction";

// Collections.
inline constexpr std::string_view kCount = "Count";
inline constexpr std::string_view kItem = "Item";
// How Item says that there is no such one: DISP_E_BADINDEX, or the error 5 (unknown key) or 9 (number out of
// range) that collections of the Visual Basic run-time are documented to raise. Any other failure, such as a
// host that is busy, says nothing about the item.
inline constexpr std::uint32_t kNoSuchItem[] = {0x8002000B, 0x800A0005, 0x800A0009};

// Device, LonMark object, network variable, configuration property.
inline constexpr std::string_view kName = "Name";
inline constexpr std::string_view kLocation = "Location";
inline constexpr std::string_view kInterface = "interface";
inline constexpr std::string_view kProgramId = "ProgramId";
inline constexpr std::string_view kVersion = "Version";
inline constexpr std::string_view kLonMarkObjects = "LonMarkObjects";
inline constexpr std::string_view kAddLmo = "AddLmo";
inline constexpr std::string_view kConfigProperties = "ConfigProperties";
inline constexpr std::string_view kNetworkVariables = "NetworkVariables";
inline constexpr std::string_view kMvFormatType = "MvFormatType";
inline constexpr std::string_view kAllowedTypes = "AllowedTypes";
inline constexpr std::string_view kFormatName = "formatName";
inline constexpr std::string_view kPrecision = "Precision";
inline constexpr std::string_view kValue = "Value";

// Registration.
inline constexpr std::string_view kNewDescription = "NewDescription";
inline constexpr std::string_view kRegister = "Register";
inline constexpr std::string_view kDeregister = "Deregister";
inline constexpr std::string_view kDeviceCommand = "DeviceCommand";
inline constexpr std::string_view kBlockCommand = "BlockCommand";
inline constexpr std::string_view kDeviceType = "DeviceType";

// Language component.
inline constexpr std::string_view kSection = "Section";
inline constexpr std::string_view kLastChange = "LastChange";
inline constexpr std::string_view kLanguages = "Languages";
inline constexpr std::string_view kLanguage = "Language";
inline constexpr std::string_view kFont = "Font";

// The maker's controls.
inline constexpr std::string_view kInitialize = "Initialize";
inline constexpr std::string_view kIsChanged = "IsChanged";
inline constexpr std::string_view kWriteValue = "WriteValue";
inline constexpr std::string_view kFinish = "Finish";

// Answers of OpenSession.
inline constexpr std::string_view kSessionOk = "OK";
inline constexpr std::string_view kSessionMaxClients = "ERROR_MAX_CLIENTS";
inline constexpr std::string_view kSessionInstanceExists = "ERROR_PLUGIN_INSTANCE";

}  // namespace host
