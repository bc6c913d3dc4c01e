// One stored value of the device and the entry that shows it. A binding reads the value, knows whether the
// entry differs from what was read, and writes only then. Used by the editors of this folder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"
#include "ui/control.h"

namespace controls {

class Binding {
 public:
  virtual ~Binding() = default;

  /// Stands on `member` of `owner` from now on, reads and shows it. A configuration property is read and
  /// written in `format`; other objects have none. Throws automation::Error.
  void Attach(automation::Object owner, std::string member, std::string format = {});

  /// Whether the entry was changed and is another one than the device holds now: what was written within a
  /// transaction that was cancelled counts as a change again.
  bool Changed() const;
  /// Writes the entry if it was changed, and shows what is stored then. Throws automation::Error or
  /// base::Error; the entry stays as it is.
  void Write();

 private:
  virtual bool Differs(const std::string& stored) const = 0;
  /// The stored text with the entry in its place.
  virtual std::string Entered(const std::string& stored) const = 0;
  virtual void Show(const std::string& stored) = 0;

  bool Touched() const { return owner_ && (Differs(first_) || Differs(last_)); }
  std::string Read() const;

  automation::Object owner_;
  std::string member_;
  std::string format_;
  std::string first_;  // as read by Attach
  std::string last_;   // as shown last
};

/// A record whose first fields are shown in boxes, one each; the other fields are carried through.
class BoundFields : public Binding {
 public:
  explicit BoundFields(std::vector<ui::TextBox*> boxes) : boxes_(std::move(boxes)) {}

 private:
  bool Differs(const std::string& stored) const override;
  std::string Entered(const std::string& stored) const override;
  void Show(const std::string& stored) override;

  std::vector<ui::TextBox*> boxes_;
};

/// A stored name and what a person reads instead.
struct Choice {
  std::string name;
  std::string caption;
};

/// A name out of several. A stored one that is not among the choices becomes one, so it is never lost.
class BoundChoice : public Binding {
 public:
  explicit BoundChoice(ui::ListBox& list) : list_(list) {}

  void SetChoices(std::vector<Choice> choices) { choices_ = std::move(choices); }
  /// The name of the selected choice; empty before Attach.
  std::string Selected() const;
  /// Selects without running handlers; another name than the choices' is passed over.
  void Select(std::string_view name);

 private:
  bool Differs(const std::string& stored) const override { return Selected() != stored; }
  std::string Entered(const std::string&) const override { return Selected(); }
  void Show(const std::string& stored) override;

  ui::ListBox& list_;
  std::vector<Choice> choices_;
};

/// Configuration property `number` of a LonMark object.
automation::Object PropertyOf(const automation::Object& lonMarkObject, int number);

/// Its value as text in `format`.
std::string ReadProperty(const automation::Object& property, const std::string& format);

}  // namespace controls
