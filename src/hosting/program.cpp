#include "hosting/host_contract.h"
#include "hosting/plugin_api.h"

namespace hosting {

Program::Program(const shell::Platform& platform, const PlugInDescription& description,
                 const shell::Settings& settings, std::span<const shell::PageEntry> pageTable,
                 std::function<void()> quit)
    : platform_(platform),
      description_(description),
      settings_(settings),
      strings_([&platform] { return platform.createObject(host::kLanguageId); }),
      pageTable_(pageTable),
      quit_(std::move(quit)) {}

shell::fMain& Program::MakeWindow() {
  window_ = std::make_unique<shell::fMain>(platform_, settings_, strings_, pageTable_, quit_);
  return *window_;
}

void Program::HostLetGo() {
  if (!window_) return quit_();
  if (!window_->Visible() && !window_->Ending()) window_->EndPlugIn();
}

}  // namespace hosting
