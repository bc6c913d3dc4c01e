#include "pages/io/fConfigActuator.h"

namespace pages {
namespace {

constexpr EditingControl kControls[] = {
    {"ctlConfigActuator1", "MVConfigActuator.ctlConfigActuator", 240, 120},
};

}  // namespace

fConfigActuator::fConfigActuator(const shell::PageContext& context)
    : ConfigDialog("fConfigActuator", "Actuator Configuration", Writes::kAlways, kControls, context) {}

}  // namespace pages
