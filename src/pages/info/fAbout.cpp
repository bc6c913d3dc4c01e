#include "pages/info/fAbout.h"

#include "host/contract.h"

namespace pages {

fAbout::fAbout(const shell::PageContext& context, const shell::PagePlace& place)
    : HostedPage(context, place, "About", "ctlAbout", host::kAboutId) {}

void fAbout::Initialize(const automation::Object& control) {
  const shell::Settings& settings = Context().settings;
  control.Call(host::kInitialize, settings.title, settings.version, settings.manufacturerName,
               settings.licences);
}

}  // namespace pages
