#include "pages/info/fManage.h"

#include "host/contract.h"

namespace pages {

fManage::fManage(const shell::PageContext& context, const shell::PagePlace& place)
    : HostedPage(context, place, "Manage", "ctlObjectManager", host::kObjectManagerId) {}

void fManage::Initialize(const automation::Object& control) {
  control.Call(host::kInitialize, Context().strings.GetStrings("RoofTop Configuration"), Context().network,
               Context().objectServer);
}

}  // namespace pages
