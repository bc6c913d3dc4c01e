// The texts of the tool in the language that the user chose for the host's plug-ins. Every shown text is
// written in English in the code and passed through one look-up; a text without a translation simply shows in
// English.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/object.h"

namespace shell {

/// `text` with its placeholders replaced by `arguments`. A placeholder is "%s", an optional argument number
/// counted from 1 (without it the placeholder's own place), and an optional closing "%". Throws base::Error
/// when a placeholder asks for an argument that is not given.
std::string ReplacePlaceholders(std::string_view text, const std::vector<std::string>& arguments);

class Strings {
 public:
  /// `component` gives the host's language component, or nothing when none is installed (English only). Asked
  /// once.
  explicit Strings(std::function<automation::Object()> component);

  /// While one lives, the table counts as young enough: for whoever sets the texts of many windows at once.
  class Hold {
   public:
    explicit Hold(Strings& strings) : strings_(strings) { ++strings_.holds_; }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;
    ~Hold() { --strings_.holds_; }

   private:
    Strings& strings_;
  };

  /// Runs each time that another table was loaded.
  std::function<void()> onLoaded;

  /// Loads the table unless it is younger than the language's last change. Called by every window before it
  /// sets its texts. A component that fails leaves the table as it was.
  void ReloadStrings();

  /// The languages that the component offers, and the one chosen for all plug-ins. Throw automation::Error,
  /// also when there is no component.
  std::vector<std::string> Languages();
  std::string Language();
  /// Chooses a language for all plug-ins and loads its texts. Throws automation::Error when the component
  /// refuses.
  void SetLanguage(std::string_view language);
  /// The type face for the language in use; empty where the component names none.
  const std::string& Font() const { return font_; }

  /// The translation of `text`, found without regard to case and surrounding blanks; without one `text`
  /// itself, exactly as given. Never fails: a component that cannot be asked now counts as one without the
  /// text, and is asked again the next time.
  std::string GetStrings(std::string_view text) const;
  /// The same with its placeholders replaced by `arguments`, as they are. Throws as ReplacePlaceholders does.
  std::string GetStrings(std::string_view text, const std::vector<std::string>& arguments) const {
    return ReplacePlaceholders(GetStrings(text), arguments);
  }

  /// The translation of `text` with its placeholders replaced by the translations of `arguments`. Throws
  /// base::Error when a placeholder asks for an argument that is not given; without arguments the text is
  /// returned with its placeholders left in place.
  std::string FormatStrings(std::string_view text, const std::vector<std::string>& arguments) const;

 private:
  /// The component. Throws automation::Error when there is none.
  automation::Object& Component();
  void Load();
  /// The entry of the table, or nothing when there is none. Throws automation::Error when the component
  /// cannot be asked now.
  std::optional<std::string> LookUp(const std::string& key) const;

  std::function<automation::Object()> createComponent_;
  automation::Object component_;
  bool asked_ = false;
  int holds_ = 0;
  std::string font_;
  double loadTime_ =
      0;  // the platform's date: days since 30 December 1899, local time; 0 before the first load
  automation::Object section_;  // nothing when the table is empty
  /// The entries asked for so far; nothing is a key that the table does not have.
  mutable std::map<std::string, std::optional<std::string>, std::less<>> table_;
};

}  // namespace shell
