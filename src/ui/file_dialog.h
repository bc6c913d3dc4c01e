// The platform's save-file dialog. A port: implemented by the Windows edge.
#pragma once

#include <optional>
#include <string>

namespace ui {

struct SaveRequest {
  std::string filter;        // caption and pattern pairs, all separated by "|"
  std::string proposedName;  // its folder only where the person may write there
  unsigned flags = 0;        // the platform's OFN_ flags
};

class FileDialog {
 public:
  virtual ~FileDialog() = default;
  /// The full name of a file that can be written, or nothing when the person cancelled. What cannot be
  /// written is told here.
  virtual std::optional<std::string> AskSaveFile(const SaveRequest& request) = 0;
};

}  // namespace ui
