// The platform's dialogs for the name of a file. A port: implemented by the Windows edge.
#pragma once

#include <optional>
#include <string>

namespace ui {

struct FileRequest {
  std::string filter;        // caption and pattern pairs, all separated by "|"
  std::string proposedName;  // its folder only where the person may write there
  unsigned flags = 0;        // the platform's OFN_ flags, for a file to be saved
};

class FileDialog {
 public:
  virtual ~FileDialog() = default;
  /// The full name of a file that can be written, or nothing when the person cancelled. What cannot be
  /// written is told here.
  virtual std::optional<std::string> AskSaveFile(const FileRequest& request) = 0;
  /// The full name of a file that exists, or nothing when the person cancelled.
  virtual std::optional<std::string> AskOpenFile(const FileRequest& request) = 0;
};

}  // namespace ui
