#include "pages/info/hosted_page.h"

#include <utility>

#include "host/contract.h"
#include "logger/message_logger.h"

namespace pages {
namespace {

constexpr int kSiteWidth = 280;  // dialog units
constexpr int kSiteHeight = 150;
// Routines in messages.
constexpr std::string_view kLoad = "Load";
constexpr std::string_view kInitialize = "Initialize";

}  // namespace

HostedPage::HostedPage(const shell::PageContext& context, const shell::PagePlace& place, std::string location,
                       std::string controlName, std::string_view programId)
    : ISubForm(place),
      context_(context),
      programId_(programId),
      location_(std::move(location)),
      site_(*this, std::move(controlName), kSiteWidth, kSiteHeight) {
  SetLayout(ui::Overlay({ui::Grow(ui::Item(site_)), ui::Grow(ui::Stack({ui::Item(lblFault_)}))}));
  ShowFault({});
  try {
    context_.platform.controls.Check(programId_);
  } catch (const std::exception& error) {
    shell::ReportError(context_, kLoad, location_, error);
  }
}

HostedPage::~HostedPage() { Remove(); }

void HostedPage::PageShown() {
  if (control_) return;
  const ui::WaitPointer pointer(context_.platform.loop);
  ShowFault({});
  initializing_ = true;
  try {
    control_ = context_.platform.controls.Create(site_, programId_,
                                                 [this](const std::string& text) { Heard(text); });
    Initialize(control_);
    lastFault_.clear();
  } catch (const std::exception& error) {
    const bool created = static_cast<bool>(control_);
    Remove();
    const std::string fault = shell::DescribeError(error);
    Told(fault, created ? Initializing(fault) : fault, created ? kInitialize : kLoad);
  }
  initializing_ = false;
}

std::string HostedPage::Initializing(const std::string& fault) const {
  return context_.strings.GetStrings("Initializing the form") + "\r\n" + fault;
}

void HostedPage::Remove() {
  if (const automation::Object control = std::exchange(control_, {})) {
    try {
      control.Call(host::kFinish);
    } catch (const std::exception&) {
      // It ends anyhow.
    }
  }
  context_.platform.controls.Destroy(site_);
}

void HostedPage::Heard(const std::string& text) {
  context_.messages.AddMessage(initializing_ ? Initializing(text) : text,
                               initializing_ ? kInitialize : site_.Name(), location_, logger::kError);
}

void HostedPage::Told(const std::string& fault, const std::string& message, std::string_view routine) {
  ShowFault(fault);
  if (std::exchange(lastFault_, fault) == fault) return;
  context_.messages.AddMessage(message, routine, location_, logger::kError);
}

void HostedPage::ShowFault(const std::string& fault) {
  site_.SetVisible(fault.empty());
  lblFault_.SetVisible(!fault.empty());
  if (fault.empty()) return lblFault_.SetText("");
  lblFault_.SetText(context_.strings.FormatStrings("This page cannot be shown: %s%", {fault}));
}

}  // namespace pages
