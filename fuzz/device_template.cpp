// The readers of files that come from elsewhere: a loadable device template, its JSON text, and a type
// catalogue. Each takes a sound one and refuses any other in words.
#include <filesystem>
#include <fstream>
#include <string>

#include "base/error.h"
#include "fuzz/support/input.h"
#include "simulator/catalogue.h"
#include "simulator/template.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const simulator::TypeCatalogue catalogue(SIM_DATA_DIR "/types.json");
  fuzz::Input input(data, size);
  const std::uint8_t kind = input.Byte();
  const auto rest = input.Bytes(size);
  const std::string text(rest.begin(), rest.end());
  switch (kind % 3) {
    case 0:
      fuzz::Takes<base::Error>([&] {
        simulator::ReadTemplate(simulator::UnpackTemplate({rest.begin(), rest.end()}), catalogue);
      });
      fuzz::Takes<base::Error>([&] {
        fuzz::Check(simulator::UnpackTemplate(simulator::PackTemplate(text)) == text,
                    "what is packed comes back");
      });
      break;
    case 1:
      fuzz::Takes<base::Error>([&] { simulator::ReadTemplate(text, catalogue); });
      break;
    default: {
      const auto file = std::filesystem::temp_directory_path() / "tarn_fuzz_types.json";
      std::ofstream(file, std::ios::binary) << text;
      fuzz::Takes<base::Error>([&] { const simulator::TypeCatalogue read(file); });
    }
  }
  return 0;
}
