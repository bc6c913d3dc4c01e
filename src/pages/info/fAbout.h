// The about page: the maker's control that shows which tool this is, who makes it, and whose libraries are in
// it.
#pragma once

#include "host/contract.h"
#include "pages/info/hosted_page.h"

namespace pages {

class fAbout final : public HostedPage {
 public:
  fAbout(const shell::PageContext& context, const shell::PagePlace& place)
      : HostedPage(context, place, "About", "ctlAbout", host::kAboutId) {}

 private:
  void Initialize(const automation::Object& control) override {
    const shell::Settings& settings = Context().settings;
    control.Call(host::kInitialize, settings.title, settings.version, settings.manufacturerName,
                 settings.licences);
  }
};

}  // namespace pages
