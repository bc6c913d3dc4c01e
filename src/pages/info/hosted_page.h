// A page without values of its own, filled by one control of the maker. The control is created when the page
// is first shown, so that it costs nothing while the tool loads; that it is missing on the machine fails the
// loading all the same. A control that fails later leaves the reason in its place, and is tried again when
// the page is shown again.
#pragma once

#include <string>
#include <string_view>

#include "shell/page.h"

namespace pages {

class HostedPage : public shell::ISubForm {
 public:
  ~HostedPage() override;

  /// The control takes its texts when it is created, which is when the page is shown next.
  void ReInitializeStrings() final { Remove(); }
  bool ReadValue() final { return true; }
  void ShowValue() final {}
  bool WriteValue() final { return true; }
  void RefreshPage() final {}
  bool IsChanged() final { return false; }
  void EndWriteValue() final {}
  void PageShown() final;

 protected:
  /// `location` names the page in messages.
  HostedPage(const shell::PageContext& context, const shell::PagePlace& place, std::string location,
             std::string controlName, std::string_view programId);

  /// Hands the control what it shows. May throw; the page reports.
  virtual void Initialize(const automation::Object& control) = 0;
  const shell::PageContext& Context() const { return context_; }

 private:
  void Remove();
  /// What the control reports by its event.
  void Heard(const std::string& text);
  /// The message of a fault while the control initialises.
  std::string Initializing(const std::string& fault) const;
  /// Logs the fault, once while it stays the same, and shows it in the control's place.
  void Told(const std::string& fault, const std::string& message, std::string_view routine);
  void ShowFault(const std::string& fault);

  shell::PageContext context_;
  std::string programId_;
  std::string location_;
  automation::Object control_;
  bool initializing_ = false;
  std::string lastFault_;

  ui::ControlSite site_;
  ui::Label lblFault_{*this, "lblFault"};
};

}  // namespace pages
