// The platform's save-file dialog. A port: implemented by the Windows edge.
#pragma once

#include <optional>
#include <string>

namespace ui {

struct SaveRequest {
  std::string filter;  // caption and pattern pairs, all separated by "|"
  std::string proposedName;
  unsigned flags = 0;  // the platform's OFN_ flags
};

class FileDialog {
 public:
  virtual ~FileDialog() = default;
  /// The chosen file's full name, or nothing when the person cancelled.
  virtual std::optional<std::string> AskSaveFile(const SaveRequest& request) = 0;
};

}  // namespace ui
