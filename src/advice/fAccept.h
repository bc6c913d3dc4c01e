// Asks why an advice is right as it is. Owned by the window of advice.
#pragma once

#include <optional>
#include <string>

#include "configuration/dialog.h"

namespace advice {

class fAccept final : public configuration::Question {
 public:
  fAccept(const shell::Platform& platform, const shell::Settings& settings, const shell::Strings& strings);

  void InitStrings();
  /// The reason, never empty; nothing when the person cancelled.
  std::optional<std::string> Ask(const std::string& advice);

 private:
  ui::Label lblAdvice{*this, "lblAdvice"};
  ui::Label lblWho{*this, "lblWho"};
  ui::Label lblReason{*this, "lblReason"};
  ui::TextBox txtReason{*this, "txtReason"};
};

}  // namespace advice
