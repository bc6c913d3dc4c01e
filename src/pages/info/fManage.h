// The object-manager page: the maker's control for enabling, disabling and testing the device's objects,
// which it does through the host itself.
#pragma once

#include "host/contract.h"
#include "pages/info/hosted_page.h"

namespace pages {

class fManage final : public HostedPage {
 public:
  fManage(const shell::PageContext& context, const shell::PagePlace& place)
      : HostedPage(context, place, "Manage", "ctlObjectManager", host::kObjectManagerId) {}

 private:
  void Initialize(const automation::Object& control) override {
    control.Call(host::kInitialize, Context().strings.GetStrings("RoofTop Configuration"), Context().network,
                 Context().objectServer);
  }
};

}  // namespace pages
