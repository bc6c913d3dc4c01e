// What the pages of control parameters have in common: the changed flag, the watched boxes, format binding,
// reading and writing records of the rooftop object, the shared option record, and the guard that turns a
// run-time error into a logged message. A page derives from it and adds its tables, controls, layout and
// rules.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/record.h"
#include "shell/page.h"

namespace pages {

/// Whether a property's format name ends in the unit suffix ("#SI" metric, "#US" imperial).
enum class Units { kNone, kSuffixed };

/// One configuration property of the rooftop object as a page uses it.
struct PropertyFormat {
  int number;
  std::string_view type;  // the format name without its unit suffix
  Units units;
  int metricPrecision;  // decimals
  int imperialPrecision;
};

/// "1" or "0", as the fields of an option record hold it.
constexpr std::string_view FlagText(bool flag) { return flag ? "1" : "0"; }

class ControlPage : public shell::ISubForm {
 public:
  bool IsChanged() final { return changed_; }
  void EndWriteValue() final { changed_ = false; }
  int HelpIndex() final { return helpTopic_; }
  /// Drops unsaved edits by filling again; a page without edits is left as it is.
  void RefreshPage() final;
  void ReInitializeStrings() final;
  void FillValue() final;
  bool WriteValue() final;

 protected:
  /// `location` names the page in messages, `pageNumber` is its place in the page table plus 1.
  ControlPage(std::string pageClass, std::string location, int pageNumber, int helpTopic,
              const shell::PageContext& context);

  // What a page adds. Each may throw; the guard around it reports.
  virtual void InitStrings() = 0;
  virtual void Fill() = 0;
  /// Answers whether the page's rules passed; a rule that fails reports itself.
  virtual bool Write() = 0;

  const shell::PageContext& Context() const { return context_; }
  bool IsImperial() const { return context_.device.IsImperial; }
  std::string Translate(std::string_view text) const { return context_.strings.GetStrings(text); }
  void MarkChanged() { changed_ = true; }

  /// Edits mark the page changed; leaving the box checks that it holds a number.
  void Watch(ui::TextBox& box);
  template <class T, std::size_t N>
  void Watch(const ui::ControlArray<T, N>& controls) {
    for (std::size_t i = 0; i < N; ++i) Watch(controls[i]);
  }
  /// A click marks the page changed.
  template <class T>
  requires requires(T& control) { control.Click(); }
  void Watch(T& control) {
    control.onClick = [this] { MarkChanged(); };
  }

  /// Sets the format names of the properties in the order of the table, in the unit system in use.
  void BindFormats(std::span<const PropertyFormat> table);
  /// Sets the precision and reads the value as a record.
  base::Record ReadRecord(const PropertyFormat& property);
  /// Read-modify-write: `change` replaces fields of the present value, all others are written back as they
  /// were read.
  void ChangeRecord(const PropertyFormat& property, const std::function<void(base::Record&)>& change);

  /// The option record that several pages share; each touches only its own fields.
  base::Record ReadOptions();
  void ChangeOptions(const std::function<void(base::Record&)>& change);

  /// Field 0 of the function that is assigned to each control output, for outputs 1 to 7.
  std::vector<std::string> AssignedFunctions();

 private:
  const automation::Object& Property(int number) { return context_.device.RoofTopProperties[number]; }
  bool Guarded(std::string_view routine, const std::function<bool()>& work);

  shell::PageContext context_;
  std::string location_;
  int pageNumber_;
  int helpTopic_;
  bool changed_ = false;
};

inline void Enable(ui::Control& control, bool enabled) { control.SetEnabled(enabled); }
template <class T, std::size_t N>
void Enable(const ui::ControlArray<T, N>& controls, bool enabled) {
  for (std::size_t i = 0; i < N; ++i) controls[i].SetEnabled(enabled);
}
/// Enables or disables controls and arrays of controls together.
template <class... Controls>
void EnableAll(bool enabled, Controls&... controls) {
  (Enable(controls, enabled), ...);
}

}  // namespace pages
