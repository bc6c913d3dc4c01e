#include "pages/info/fManage.h"

#include "host/contract.h"

namespace pages {

fManage::fManage(const shell::PageContext& context, int helpTopic)
    : HostedPage("fManage", "ctlObjectManager", host::kObjectManagerId, "Manage", helpTopic, context) {}

void fManage::Initialize(const automation::Object& control) {
  control.Call(host::kInitialize, Context().strings.GetStrings("RoofTop Configuration"), Context().network,
               Context().objectServer);
}

}  // namespace pages
