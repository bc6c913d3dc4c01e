// A controller as the host shows it: its name, place and program, and the LonMark objects that come into
// being when a client loads the template through AddLmo. LonMarkObjects is one live collection, empty before
// that.
#pragma once

#include <memory>
#include <string>

#include "simulator/collection.h"
#include "simulator/core.h"

namespace simulator {

/// The words of LonMarkObject::State.
inline constexpr char kEnabled[] = "ENABLED";
inline constexpr char kDisabled[] = "DISABLED";

class LonMarkObject : public HostObject<LonMarkObject> {
 public:
  LonMarkObject(std::shared_ptr<Core> core, std::string deviceKey, const ObjectTemplate& definition);

  static constexpr std::string_view kClassName = "LonMarkObject";
  /// Name; ConfigProperties; NetworkVariables; State: "ENABLED" or "DISABLED", a write changes it (the node
  /// object, through which the others are reached, stays enabled); Test(): runs the self-test of an enabled
  /// object; TestResult: "PASSED", "FAILED: why", or empty before the first test.
  static const automation::MemberOf<LonMarkObject> kMembers[6];

 private:
  ObjectState Current() const;
  void Keep(const ObjectState& state);
  void ChangeState(const std::string& state);
  void Test();
  std::string Diagnosis() const;

  std::string deviceKey_;
  std::string name_;
  automation::Object properties_;
  automation::Object variables_;
};

/// What a device says of its program: the template's file name is made of it.
class DeviceInterface : public HostObject<DeviceInterface> {
 public:
  DeviceInterface(std::shared_ptr<Core> core, std::string deviceKey)
      : HostObject(std::move(core)), deviceKey_(std::move(deviceKey)) {}

  static constexpr std::string_view kClassName = "DeviceInterface";
  /// ProgramId; Version ("3.1").
  static const automation::MemberOf<DeviceInterface> kMembers[2];

 private:
  const DeviceRecord& Record() const { return GetCore().Record(deviceKey_); }

  std::string deviceKey_;
};

class Device : public HostObject<Device> {
 public:
  Device(std::shared_ptr<Core> core, std::string deviceKey);

  static constexpr std::string_view kClassName = "Device";
  /// Name (a write renames; another device's name is refused); Location; interface; LonMarkObjects;
  /// AddLmo(lmoIndex, programId, fileName, bytes): false, with the reason in the building's log, when the
  /// template is unreadable, is for another program or version, has no object lmoIndex + 1 or does not fit
  /// the values that are stored.
  static const automation::MemberOf<Device> kMembers[5];

 private:
  const std::string& Name() const { return GetCore().store.Device(deviceKey_).name; }
  void Rename(const std::string& name);
  bool Load(std::int32_t lmoIndex, const std::string& fileName, const automation::Bytes& bytes);

  std::string deviceKey_;
  std::shared_ptr<CollectionItems> objects_ = std::make_shared<CollectionItems>();
  automation::Object collection_;
  automation::Object interface_;
};

}  // namespace simulator
