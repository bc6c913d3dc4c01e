#include "pages/page_table.h"

#include "pages/control/fAlarm.h"
#include "pages/control/fFanValve.h"
#include "pages/control/fGeneral.h"
#include "pages/control/fHeatCool.h"
#include "pages/control/fOptions.h"
#include "pages/control/fPID.h"
#include "pages/info/fAbout.h"
#include "pages/info/fManage.h"
#include "pages/io/fControlOutput.h"
#include "pages/io/fHardwareInput.h"
#include "pages/io/fNetworkInput.h"
#include "pages/io/fNetworkOutput.h"

namespace pages {
namespace {

template <class Page>
std::unique_ptr<shell::ISubForm> Create(const shell::PageContext& context, const shell::PagePlace& place) {
  return std::make_unique<Page>(context, place);
}

constexpr shell::PageEntry kTable[] = {
    {"Inputs", "Object Inputs", "fHardwareInput", 14, true, Create<fHardwareInput>},
    {"Outputs", "Object Outputs", "fControlOutput", 19, true, Create<fControlOutput>},
    {"Heating-Cooling", "Heating-Cooling", "fHeatCool", 22, true, Create<fHeatCool>},
    {"Fan-Valve", "Fan-Valve", "fFanValve", 44, true, Create<fFanValve>},
    {"PID", "PID", "fPID", 45, true, Create<fPID>},
    // The blank belongs to the caption: with it the two are different keys of the string table.
    {"Alarm ", "Alarm", "fAlarm", 50, true, Create<fAlarm>},
    {"General Settings", "General Settings", "fGeneral", 51, true, Create<fGeneral>},
    {"Options", "Options", "fOptions", 59, true, Create<fOptions>},
    {"Network Input", "Network Input", "fNetworkInput", 64, true, Create<fNetworkInput>},
    {"Network Output", "Network Output", "fNetworkOutput", 68, true, Create<fNetworkOutput>},
    {"Object Manage", "Object Manage", "fManage", 69, false, Create<fManage>},
    {"About", "About", "fAbout", 3, false, Create<fAbout>},
};

}  // namespace

std::span<const shell::PageEntry> PageTable() { return kTable; }

}  // namespace pages
