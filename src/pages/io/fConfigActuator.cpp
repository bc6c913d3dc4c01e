#include "pages/io/fConfigActuator.h"

namespace pages {
namespace {

constexpr EditingControl kControls[] = {
    {"ctlConfigActuator1", "MVConfigActuator.ctlConfigActuator", 240, 120},
};

}  // namespace

fConfigActuator::fConfigActuator(const shell::PageContext& context)
    : ConfigDialog("fConfigActuator", "Actuator Configuration",
                   "An error as occured while writing the value in the database", kControls, context) {}

}  // namespace pages
