#include "pages/page_table.h"

#include "pages/control/fFanValve.h"
#include "pages/control/fPID.h"
#include "pages/info/fAbout.h"
#include "pages/info/fManage.h"
#include "pages/io/fControlOutput.h"
#include "pages/io/fHardwareInput.h"

namespace pages {
namespace {

template <class Page>
std::unique_ptr<shell::ISubForm> Create(const shell::PageContext& context, int helpTopic) {
  return std::make_unique<Page>(context, helpTopic);
}

constexpr shell::PageEntry kTable[] = {
    {"Inputs", "Object Inputs", "fHardwareInput", 14, true, Create<fHardwareInput>},
    {"Outputs", "Object Outputs", "fControlOutput", 19, true, Create<fControlOutput>},
    {"Fan-Valve", "Fan-Valve", "fFanValve", 44, true, Create<fFanValve>},
    {"PID", "PID", "fPID", 45, true, Create<fPID>},
    {"Object Manage", "Object Manage", "fManage", 69, false, Create<fManage>},
    {"About", "About", "fAbout", 3, false, Create<fAbout>},
};

}  // namespace

std::span<const shell::PageEntry> PageTable() { return kTable; }

}  // namespace pages
