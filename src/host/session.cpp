#include "host/session.h"

#include "base/error.h"
#include "host/contract.h"
#include "host/device_template.h"

namespace host {

using automation::Object;

void RequireYes(const automation::Value& answer) {
  if (!answer.AsBool()) throw base::Error("The host refused.");
}

std::string SessionRequest::NetworkPlace() const {
  return networkName + " at " + ipAddress + ":" + std::to_string(ipPort);
}

NetworkSession::NetworkSession(Object objectServer, const SessionRequest& request)
    : server_(std::move(objectServer)) {
  Connect(request);
  Open(request);
}

Session::Session(Object objectServer, const SessionRequest& request)
    : NetworkSession(std::move(objectServer), request) {
  FindDevice(request);
  LoadTemplate(request);
  FindBlock(request);
}

void NetworkSession::Connect(const SessionRequest& request) {
  Try("Cannot connect to the network %s%", {request.NetworkPlace()}, [&] {
    network_ = automation::RequireObject(
        server_.Call(kConnect, request.networkName, request.ipAddress, request.ipPort), kConnect);
  });
}

void NetworkSession::Open(const SessionRequest& request) const {
  constexpr std::string_view kFailure = "Network error in first transaction with %s%";
  const std::vector<std::string> address{request.ipAddress};
  const std::string status = Try(kFailure, address, [&] {
    return network_
        .Call(kOpenSession, request.networkName, request.remote, request.interfaceName, request.lmoIndex,
              request.programId)
        .AsText();
  });
  if (status == kSessionMaxClients) throw StepError("Maximum number of plugins reached on %s%", address);
  if (status == kSessionInstanceExists) throw StepError("Plugin instance already exists on %s%", address);
  Try(kFailure, address, [&] {
    if (status != kSessionOk) throw base::Error("The host answered \"" + status + "\".");
  });
}

void Session::FindDevice(const SessionRequest& request) {
  Try("Network error when getting device data with %s%", {request.deviceName}, [&] {
    device_ = Network().Child(kAppDevices).Child(kItem, request.deviceName);
    device_.Put(kName, request.deviceName);
  });
}

void Session::LoadTemplate(const SessionRequest& request) {
  Try("Error loading device template for %s%", {request.deviceName}, [&] {
    const Object identity = device_.Child(kInterface);
    lonMarkObjects_ = device_.Child(kLonMarkObjects);
    const std::string programId = identity.Text(kProgramId);
    const std::string name = TemplateName(programId, identity.Text(kVersion));
    const automation::Bytes content = request.readFile(TemplatePath(request.commonFilesFolder, name));
    RequireYes(device_.Call(kAddLmo, request.lmoIndex, programId, name, content));
  });
}

void Session::FindBlock(const SessionRequest& request) {
  const std::vector<std::string> names{std::to_string(request.lmoIndex), request.deviceName};
  Try("The functional block with index %s1% was not found on %s2%", names, [&] {
    blockName_ = lonMarkObjects_.Child(kItem, request.lmoIndex + 1).Text(kName);
    lonMarkObjects_.Child(kItem, blockName_);  // the block must answer to its name too
  });
}

}  // namespace host
