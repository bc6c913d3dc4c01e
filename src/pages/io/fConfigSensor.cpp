#include "pages/io/fConfigSensor.h"

namespace pages {
namespace {

constexpr EditingControl kControls[] = {
    {"ctlSensorNV1", "MVConfigSensor.ctlSensorNV", 260, 46},
    {"ctlSensorHardware1", "MVConfigSensor.ctlSensorHardware", 260, 150},
};

}  // namespace

fConfigSensor::fConfigSensor(const shell::PageContext& context)
    : ConfigDialog("fConfigSensor", "Sensor Configuration", Writes::kWhenChanged, kControls, context) {}

}  // namespace pages
