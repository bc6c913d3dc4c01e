// One of the maker's editing controls without its container: a window described as data over one LonMark
// object of the device, and the members through which a dialog drives it. Values are shown in SI units.
#pragma once

#include <string>
#include <vector>

#include "automation/local_object.h"
#include "simulator/controls/binding.h"
#include "simulator/controls/makers_control.h"

namespace controls {

class Editor : public MakersControl, public automation::LocalClass<Editor> {
 public:
  using MakersControl::MakersControl;

  /// Initialize(device, number, choiceOrSignal): reads and shows; an error tells in words what does not fit.
  /// IsChanged. WriteValue: writes what was changed, within whatever transaction is open; false, after
  /// onFailed has heard why, when the device refuses, and what was entered stays. Finish: lets go of the
  /// device.
  static const automation::MemberOf<Editor> kMembers[4];

 protected:
  /// Reads and shows the object with this number. Throws automation::Error or base::Error.
  virtual void Open(const automation::Object& device, int number, const std::string& choice) = 0;
  /// What a person sees, and what is written, in this order.
  virtual std::vector<Binding*> Shown() = 0;

 private:
  void Initialize(const automation::Arguments& arguments);
  bool IsChanged();
  bool WriteValue();
  void Finish();

  bool open_ = false;
};

/// The object "<kind><number>" of the device. Throws base::Error unless `number` is 1 to `count`; `what`
/// names such an object in the sentence.
automation::Object NumberedObject(const automation::Object& device, const std::string& kind, int number,
                                  int count, const std::string& what);

}  // namespace controls
