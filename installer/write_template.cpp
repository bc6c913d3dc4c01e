// usage: write_template FOLDER    writes the device template, under the name by which the tool looks for it
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string_view>

#include "base/error.h"
#include "simulator/catalogue.h"
#include "simulator/files.h"
#include "simulator/template.h"

int main(int count, char** arguments) {
  try {
    if (count != 2) throw base::Error("usage: write_template FOLDER");
    const std::filesystem::path data = SIM_DATA_DIR;
    const std::string json = simulator::ReadWholeFile(data / "device.json");
    const simulator::TypeCatalogue catalogue(data / "types.json");
    const simulator::DeviceTemplate device = simulator::ReadTemplate(json, catalogue);
    const automation::Bytes bytes = simulator::PackTemplate(json);
    simulator::ReplaceFile(
        std::filesystem::path(arguments[1]) / simulator::TemplateFileName(device.programId, device.version),
        {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "write_template: %s\n", error.what());
    return 1;
  }
}
