// One device of a host, opened: connected to its network, in a session of its own, with its template loaded.
// The automation class opens the device of the main window in this way; any other device is opened the same.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/object.h"

namespace host {

/// Whose device types a host's catalogue is asked for.
inline constexpr std::string_view kMakerPrefix = "QVR";

/// A step towards the open device that failed. `text` and `arguments` are a text of the tool as its string
/// table takes them, not yet translated; what the host gave as its reason, if it gave one, is nested.
class StepError : public std::runtime_error {
 public:
  StepError(std::string_view text, std::vector<std::string> arguments)
      : std::runtime_error(std::string(text)), arguments_(std::move(arguments)) {}

  const std::vector<std::string>& Arguments() const { return arguments_; }

 private:
  std::vector<std::string> arguments_;
};

/// Runs one step; any fault in it becomes a StepError of `text`.
template <class Step>
auto Try(std::string_view text, const std::vector<std::string>& arguments, Step step) {
  try {
    return step();
  } catch (const std::exception&) {
    std::throw_with_nested(StepError(text, arguments));
  }
}

/// Throws base::Error unless the host answered yes.
void RequireYes(const automation::Value& answer);

/// Which device is to be opened, and how.
struct SessionRequest {
  std::string networkName;
  std::string ipAddress;
  std::int32_t ipPort = 0;
  bool remote = false;
  std::string interfaceName;
  std::string programId;  // who opens the session
  std::string deviceName;
  int lmoIndex = 0;  // place of the functional block among the device's objects, from 0
  std::string commonFilesFolder;
  /// The whole content of a file. Throws base::Error naming the file.
  std::function<automation::Bytes(const std::string&)> readFile;

  /// The network and where its server is, for messages and names.
  std::string NetworkPlace() const;
};

/// A network joined through an object server that is used for nothing else. Its end lets go of both; the
/// host then ends the session, unless somebody else still holds what was taken from here.
class NetworkSession {
 public:
  /// Of the request, the device and what belongs to it are not used but for the block's number. Throws
  /// StepError.
  NetworkSession(automation::Object objectServer, const SessionRequest& request);

  const automation::Object& Server() const { return server_; }
  const automation::Object& Network() const { return network_; }

 private:
  void Connect(const SessionRequest& request);
  void Open(const SessionRequest& request) const;

  // In the order in which they are taken; let go of the other way round.
  automation::Object server_;
  automation::Object network_;
};

/// A device opened there.
class Session : public NetworkSession {
 public:
  /// Throws StepError.
  Session(automation::Object objectServer, const SessionRequest& request);

  const automation::Object& Device() const { return device_; }
  /// The name of the functional block.
  const std::string& BlockName() const { return blockName_; }

 private:
  void FindDevice(const SessionRequest& request);
  void LoadTemplate(const SessionRequest& request);
  void FindBlock(const SessionRequest& request);

  automation::Object device_;
  automation::Object lonMarkObjects_;
  std::string blockName_;
};

}  // namespace host
