#include "simulator/object_server.h"

#include <algorithm>

#include "base/text.h"
#include "simulator/collection.h"
#include "simulator/device.h"
#include "simulator/members.h"

namespace simulator {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

constexpr char kOk[] = "OK";
constexpr char kNetworkError[] = "ERROR_NETWORK";
constexpr char kMaxClients[] = "ERROR_MAX_CLIENTS";
constexpr char kInstanceExists[] = "ERROR_PLUGIN_INSTANCE";

bool SameIdentity(const Session& left, const Session& right) {
  return left.lmoIndex == right.lmoIndex && base::EqualsNoCase(left.interfaceName, right.interfaceName) &&
         base::EqualsNoCase(left.programId, right.programId);
}

}  // namespace

constexpr automation::MemberOf<AppDevices> AppDevices::kMembers[] = {
    {"Count",
     [](AppDevices& self, const Arguments&) -> Value {
       return static_cast<std::int32_t>(self.GetCore().devices.size());
     }},
    {"Item", nullptr, nullptr,
     [](AppDevices& self, const Arguments& arguments) -> Value { return self.Take(arguments[0]); }},
};

Object AppDevices::Take(const Value& wanted) {
  Core& core = GetCore();
  if (!session_->open) Refuse("The session has ended.");
  const auto nameOf = [&core](std::size_t place) -> std::string_view {
    return core.store.Device(core.devices[place].key).name;
  };
  const std::size_t place = FindItem("AppDevices", wanted, core.devices.size(), nameOf);
  const std::string& key = core.devices[place].key;
  for (const Session* other : core.sessions) {
    if (other != session_.get() && other->deviceKey == key) {
      Refuse("The device \"" + std::string(nameOf(place)) + "\" is open in another session.");
    }
  }
  Object& device = session_->devices[key];
  if (!device) device = Object(std::make_shared<Device>(SharedCore(), key));
  session_->device = device;
  session_->deviceKey = key;
  return device;
}

constexpr automation::MemberOf<Network> Network::kMembers[] = {
    {"Name", [](Network& self, const Arguments&) -> Value { return self.GetCore().networkName; }},
    {"OpenSession", nullptr, nullptr, Run<&Network::OpenSession>},
    {"AppDevices", Run<&Network::Devices>},
    {"BeginTransaction", nullptr, nullptr, Run<&Network::Begin>},
    {"CommitTransaction", nullptr, nullptr, Run<&Network::Commit>},
    {"CancelTransaction", nullptr, nullptr, Run<&Network::Cancel>},
};

Network::~Network() {
  Core& core = GetCore();
  if (!session_->transactionDevice.empty()) {
    core.store.Cancel(session_->transactionDevice);
    core.log.push_back("A session ended within a transaction of \"" +
                       core.store.Device(session_->transactionDevice).name +
                       "\"; the transaction was cancelled.");
  }
  std::erase(core.sessions, session_.get());
  *session_ = Session();
}

std::string Network::OpenSession(const Arguments& arguments) {
  Core& core = GetCore();
  const SessionLimits& limits = core.limits;
  if (!limits.answer.empty()) return limits.answer;
  if (!base::EqualsNoCase(arguments[0].AsText(), core.networkName)) return kNetworkError;
  if (session_->open) return kInstanceExists;
  Session wanted;
  wanted.open = true;
  wanted.interfaceName = arguments[2].AsText();
  wanted.lmoIndex = arguments[3].AsWhole();
  wanted.programId = arguments[4].AsText();
  if (static_cast<int>(core.sessions.size()) >= limits.clients) return kMaxClients;
  const auto same = std::ranges::count_if(
      core.sessions, [&wanted](const Session* session) { return SameIdentity(*session, wanted); });
  const auto most = limits.sameBlock > 0 ? limits.sameBlock : std::ssize(core.devices);
  if (same >= most) return kInstanceExists;
  *session_ = std::move(wanted);
  core.sessions.push_back(session_.get());
  return kOk;
}

Object Network::Devices() {
  if (!session_->open) Refuse("No session is open on the network.");
  if (!devices_) devices_ = Object(std::make_shared<AppDevices>(SharedCore(), session_));
  return devices_;
}

void Network::Begin() {
  if (session_->deviceKey.empty()) Refuse("A transaction needs a device; take one from AppDevices first.");
  if (!session_->transactionDevice.empty()) Refuse("A transaction is open already.");
  Refusing([&] { GetCore().store.Begin(session_->deviceKey); });
  session_->transactionDevice = session_->deviceKey;
  GetCore().faults.After(kClassName, "BeginTransaction");
}

void Network::Commit() {
  End(&Store::Commit);
  GetCore().faults.After(kClassName, "CommitTransaction");
}

void Network::Cancel() {
  End(&Store::Cancel);
  GetCore().faults.After(kClassName, "CancelTransaction");
}

void Network::End(void (Store::*end)(const std::string&)) {
  if (session_->transactionDevice.empty()) Refuse("No transaction is open.");
  const std::string device = std::exchange(session_->transactionDevice, {});
  Refusing([&] { (GetCore().store.*end)(device); });
}

constexpr automation::MemberOf<ObjectServer> ObjectServer::kMembers[] = {
    {"RefreshCatalog", nullptr, nullptr,
     [](ObjectServer& self, const Arguments& arguments) -> Value {
       return base::EqualsNoCase(arguments[0].AsText(), self.GetCore().makerPrefix);
     }},
    {"Connect", nullptr, nullptr, Run<&ObjectServer::Connect>},
    {"Device",
     [](ObjectServer& self, const Arguments&) -> Value {
       const std::shared_ptr<Session> session = self.session_.lock();
       return session ? session->device : Object();
     }},
    {"Version", [](ObjectServer& self, const Arguments&) -> Value { return self.GetCore().serverVersion; }},
};

Object ObjectServer::Connect(const Arguments& arguments) {
  const Core& core = GetCore();
  if (!base::EqualsNoCase(arguments[0].AsText(), core.networkName) ||
      arguments[1].AsText() != core.ipAddress || arguments[2].AsWhole() != core.port) {
    return {};
  }
  auto network = std::make_shared<Network>(SharedCore());
  session_ = network->GetSession();
  return Object(std::move(network));
}

}  // namespace simulator
