// usage: write_template FOLDER OTHERS    writes the device template to FOLDER, and to OTHERS what the virtual
// building's units of other program versions load, under the names by which the tool looks for them
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "base/error.h"
#include "simulator/building.h"
#include "simulator/catalogue.h"
#include "simulator/files.h"
#include "simulator/template.h"

int main(int count, char** arguments) {
  try {
    if (count != 3) throw base::Error("usage: write_template FOLDER OTHERS");
    const std::filesystem::path data = SIM_DATA_DIR;
    const simulator::TypeCatalogue catalogue(data / "types.json");
    const simulator::DeviceTemplate device =
        simulator::ReadTemplate(simulator::ReadWholeFile(data / "device.json"), catalogue);
    const simulator::Building building({data, {}, base::Numbers(), {}});
    const automation::Bytes bytes = building.TemplateBytes();
    const std::string_view content(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const std::string name = simulator::TemplateFileName(device.programId, device.version);
    simulator::ReplaceFile(std::filesystem::path(arguments[1]) / name, content);
    for (const simulator::DeviceInfo& unit : building.Devices()) {
      if (unit.templateFileName == name) continue;
      simulator::ReplaceFile(std::filesystem::path(arguments[2]) / unit.templateFileName, content);
    }
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "write_template: %s\n", error.what());
    return 1;
  }
}
