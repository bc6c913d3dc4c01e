// The root of what a host offers, and the sessions on its network. A client connects, opens a session on the
// network object it gets, takes a device from AppDevices and works on it in transactions. A session ends, and
// an open transaction with it, when the client lets its network object go. A device is open in one session at
// a time.
#pragma once

#include <memory>
#include <string>

#include "simulator/core.h"

namespace simulator {

/// AppDevices: the devices of the network, for one session.
class AppDevices : public HostObject<AppDevices> {
 public:
  AppDevices(std::shared_ptr<Core> core, std::shared_ptr<Session> session)
      : HostObject(std::move(core)), session_(std::move(session)) {}

  static constexpr std::string_view kClassName = "AppDevices";
  /// Count; Item(number from 1, or name): opens the device; refused while another session has it open.
  static const automation::MemberOf<AppDevices> kMembers[2];

 private:
  automation::Object Take(const automation::Value& wanted);

  std::shared_ptr<Session> session_;
};

class Network : public HostObject<Network> {
 public:
  using HostObject::HostObject;
  ~Network() override;

  static constexpr std::string_view kClassName = "Network";
  /// Name; OpenSession(networkName, remote, interfaceName, lmoIndex, programId); AppDevices;
  /// BeginTransaction, CommitTransaction, CancelTransaction, which act on the device last taken.
  static const automation::MemberOf<Network> kMembers[6];

  const std::shared_ptr<Session>& GetSession() const { return session_; }

 private:
  std::string OpenSession(const automation::Arguments& arguments);
  automation::Object Devices();
  void Begin();
  void Commit();
  void Cancel();
  void End(void (Store::*end)(const std::string&));

  std::shared_ptr<Session> session_ = std::make_shared<Session>();
  automation::Object devices_;
};

class ObjectServer : public HostObject<ObjectServer> {
 public:
  using HostObject::HostObject;

  static constexpr std::string_view kClassName = "ObjectServer";
  /// RefreshCatalog(makerPrefix); Connect(networkName, ipAddress, port): nothing when they are not this
  /// network's; Device: the one last taken in the session of the network last connected, or nothing; Version.
  static const automation::MemberOf<ObjectServer> kMembers[4];

 private:
  automation::Object Connect(const automation::Arguments& arguments);

  std::weak_ptr<Session> session_;
};

}  // namespace simulator
