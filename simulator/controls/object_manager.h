// The control "MVSingleObjectManager.ObjectManager": the LonMark objects of the device that the host has
// open, with their states. A person enables, disables and tests them; each such order is one transaction of
// the host.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "automation/local_object.h"
#include "simulator/controls/makers_control.h"

namespace controls {

class ObjectManager : public MakersControl, public automation::LocalClass<ObjectManager> {
 public:
  ObjectManager();

  /// Initialize(application, network, objectServer): reads and shows; an error tells in words what is
  /// missing. Finish: lets go of the host.
  static const automation::MemberOf<ObjectManager> kMembers[2];

 private:
  void Initialize(const automation::Arguments& arguments);
  void Finish();
  void Read();
  /// Runs `order` on the objects selected, all or none, and shows what they are then. A refusal is shown and
  /// told.
  void Order(const std::string& done, const std::function<void(const automation::Object&)>& order);
  void InTransaction(const std::function<void(const automation::Object&)>& order) const;
  void ReadAgain();

  automation::Object network_;
  std::vector<automation::Object> objects_;  // in the order of the rows

  ui::Label lblDevice_{GetWindow(), "lblDevice"};
  ui::ListView lvwObjects_{GetWindow(), "lvwObjects"};
  ui::Label lblResult_{GetWindow(), "lblResult"};
  ui::Button cmdEnable_{GetWindow(), "cmdEnable"};
  ui::Button cmdDisable_{GetWindow(), "cmdDisable"};
  ui::Button cmdTest_{GetWindow(), "cmdTest"};
  ui::Button cmdRead_{GetWindow(), "cmdRead"};
};

}  // namespace controls
