// What all pages with device values have in common: the changed flag, the watched boxes, and the guard that
// turns a run-time error into a logged message. A page derives from it (or from ControlPage) and adds its
// tables, controls, layout and rules.
#pragma once

#include <functional>
#include <initializer_list>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/page.h"

namespace pages {

using shell::NamingProperty;

/// "1" or "0", as the fields of an option record hold it.
constexpr std::string_view FlagText(bool flag) { return flag ? "1" : "0"; }

/// How the unit of a quantity is written in each of the two systems.
struct UnitNames {
  std::string_view metric;
  std::string_view imperial;
};
constexpr UnitNames kTemperatureUnit = {"°C", "°F"};
constexpr UnitNames kPressureUnit = {"Pa", "\" WC"};

class PageBase : public shell::ISubForm {
 public:
  bool IsChanged() final { return changed_; }
  void EndWriteValue() final;
  /// Drops unsaved edits by filling again; a page without edits is left as it is.
  void RefreshPage() final;
  void ReInitializeStrings() final;
  bool ReadValue() final;
  void ShowValue() final;
  bool WriteValue() final;
  void TakenBack() final;
  std::vector<fields::Field> ListFields(const fields::Translate& translate) override;

 protected:
  /// `location` names the page in messages.
  PageBase(const shell::PageContext& context, const shell::PagePlace& place, std::string location)
      : ISubForm(place), context_(context), location_(std::move(location)) {}

  // What a page adds. Each may throw; the guard around it reports.
  virtual void InitStrings() = 0;
  /// Reads all values from the host, and leaves what shows them to WhenRead and ShowText.
  virtual void Fill() = 0;
  /// Answers whether the page's rules passed; a rule that fails reports itself.
  virtual bool Write() = 0;
  /// What Write has written of an edited page is in the device now.
  virtual void Saved() {}

  /// Nothing is edited any more: what the page keeps beside its controls is as after a fill.
  virtual void DropEdits() {}

  const shell::PageContext& Context() const { return context_; }
  const std::string& Location() const { return location_; }
  bool IsImperial() const { return context_.device.IsImperial; }
  std::string Translate(std::string_view text) const { return context_.strings.GetStrings(text); }
  std::string Translate(std::string_view text, const std::vector<std::string>& arguments) const {
    return context_.strings.FormatStrings(text, arguments);
  }
  /// Each control shows its caption, translated.
  void SetCaptions(std::initializer_list<std::pair<ui::Control*, std::string_view>> captions) const;
  void MarkChanged(bool changed = true) {
    changed_ = changed;
    if (onEdit) onEdit();
  }

  /// Only while Fill runs: what is to be done, in this order, once everything has been read. Steps call the
  /// host for nothing that the page needs.
  void WhenRead(std::function<void()> step) { steps_.push_back(std::move(step)); }
  void ShowText(ui::Control& control, std::string_view text) {
    WhenRead([&control, kept = std::string(text)] { control.SetText(kept); });
  }
  /// In labels and arrays of labels: the unit in the system in use.
  template <class... Labels>
  void ShowUnit(const UnitNames& unit, Labels&... labels) {
    WhenRead([this, &unit, &labels...] { (SetUnit(unit, labels), ...); });
  }

  /// A message box with the application title and an OK button.
  void Warn(const std::string& text, ui::Icon icon = ui::Icon::kExclamation);

  /// A rule of the page failed in a write: logs why, sets the shared write-error flag and lets the controls
  /// be marked.
  void RefuseWrite(const std::string& reason, std::initializer_list<const ui::Control*> controls = {});

  /// Where a value was typed or chosen, as the journal names it.
  std::string Source(const ui::Control& control) const { return Name() + "." + control.Name(); }
  /// Puts what a control holds into a field of a value that is being written.
  void SetField(host::Edit& edit, std::size_t place, const ui::TextBox& box) const;
  void SetField(host::Edit& edit, std::size_t place, bool flag, const ui::Control& control) const {
    edit.Set(place, FlagText(flag), Source(control));
  }

  /// A word that the device always has, in upper case. Throws base::Error when the host gives none: taken for
  /// a value it would be stored as one.
  std::string ReadWord(const host::Property& property) const;

  /// A control of another page, for rules between pages; nothing when that page is not loaded.
  const ui::Control* FindControl(std::string_view pageClass, std::string_view name) const;

  /// Which property or variable of the device holds what the controls show.
  void SetSource(std::string_view source, std::initializer_list<const ui::Control*> controls) {
    for (const ui::Control* control : controls) sources_[control] = source;
  }
  template <class T, std::size_t N>
  void SetSource(std::string_view source, const ui::ControlArray<T, N>& controls) {
    for (std::size_t i = 0; i < N; ++i) sources_[&controls[i]] = source;
  }

  /// Runs `work` and answers yes; an error in it is reported with the location of the page, and the answer is
  /// no.
  bool Guarded(std::string_view routine, const std::function<void()>& work);

  /// Edits mark the page changed; leaving the box checks that it holds a number, or what the device or the
  /// program gave: a host may write its numbers in another notation than the user's.
  void Watch(ui::TextBox& box);
  /// A click marks the page changed.
  template <class T>
  requires requires(T& control) { control.onClick; }
  void Watch(T& control) {
    control.onClick = [this] { MarkChanged(); };
  }
  template <class T, std::size_t N>
  void Watch(const ui::ControlArray<T, N>& controls) {
    for (std::size_t i = 0; i < N; ++i) Watch(controls[i]);
  }
  /// Controls and arrays of controls together.
  template <class... Controls>
  void WatchAll(Controls&... controls) {
    (Watch(controls), ...);
  }

 private:
  /// With room for the other one: a change of units moves nothing.
  void SetUnit(const UnitNames& unit, ui::Label& label) const;
  template <std::size_t N>
  void SetUnit(const UnitNames& unit, const ui::LabelArray<N>& labels) const {
    for (std::size_t i = 0; i < N; ++i) SetUnit(unit, labels[i]);
  }

  shell::PageContext context_;
  std::string location_;
  bool changed_ = false;
  std::vector<std::function<void()>> steps_;
  std::map<const ui::Control*, std::string> sources_;
  // What each watched box showed after the last fill, and what the program has filled in since.
  std::map<const ui::TextBox*, std::set<std::string>> given_;
};

template <class T, std::size_t N>
void SetTexts(const ui::ControlArray<T, N>& controls, std::string_view text, std::size_t first = 0,
              std::size_t last = N - 1) {
  for (std::size_t i = first; i <= last; ++i) controls[i].SetText(text);
}

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
