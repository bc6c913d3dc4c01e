// The settings of a hardware input or output that no box shows: the properties that the sensor and actuator
// dialogs edit, as whole texts in the format of their own name, and the type of its variable. They are read
// only when somebody wants the whole configuration: once, and again when they are called outdated or a dialog
// or a save may have changed them. Owned by the inputs page and the outputs page.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fields/field.h"
#include "host/device_tree.h"

namespace pages {

class HardwareSettings {
 public:
  /// One input or output. `variable` is empty where it has none.
  struct Owner {
    std::function<std::string()> caption;  // "Input 1"
    host::PropertyCollection* properties;
    host::VariableCollection* variables;
    std::string variable;
    ui::Control* cursor;  // opens the dialog
  };

  /// `shown` are the properties that the page itself shows. `onEdit` runs when a content was taken.
  HardwareSettings(std::string page, std::vector<Owner> owners, std::vector<int> shown,
                   std::function<void()> onEdit)
      : page_(std::move(page)),
        owners_(std::move(owners)),
        shown_(std::move(shown)),
        onEdit_(std::move(onEdit)) {}

  /// Reads those that are not known. Throws automation::Error; what was read before stays.
  void Read();
  /// The device may hold others than those read: the next Read asks again.
  void Outdated() { outdated_ = true; }
  /// Those read so far.
  std::vector<fields::Field> Fields(const fields::Translate& translate);

  /// Writes those that were taken. Throws automation::Error.
  void Write() const;
  /// They are in the device.
  void Saved();
  void DropEdits();

 private:
  struct Setting {
    std::size_t owner;
    int number;  // of the property; 0: the type of the variable
    std::string name;
    std::string held = {}, present = {};
    std::string type = {};  // the variable's new one as the host names it
  };
  host::Property& PropertyOf(const Setting& setting) const;
  host::NetworkVariable& VariableOf(const Setting& setting) const;
  void FindAll();
  std::string ReadHeld(const Setting& setting) const;
  std::string FieldName(const Setting& setting) const;
  fields::Field FieldOf(Setting& setting, const fields::Translate& translate);
  std::string Take(Setting& setting, const std::string& content, const fields::Translate& translate);
  std::string AllowedType(const Setting& setting, const std::string& type) const;
  void WriteOne(const Setting& setting) const;

  std::string page_;
  std::vector<Owner> owners_;
  std::vector<int> shown_;
  std::function<void()> onEdit_;
  std::vector<Setting> settings_;  // none: never read
  bool outdated_ = true;
};

}  // namespace pages
