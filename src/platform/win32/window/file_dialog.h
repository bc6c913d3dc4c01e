// The system's dialog for the name of a file to be saved.
#pragma once

#include "ui/file_dialog.h"

namespace win32 {

class NativeToolkit;

class SaveDialog : public ui::FileDialog {
 public:
  explicit SaveDialog(NativeToolkit& toolkit) : toolkit_(toolkit) {}
  /// Starts in the folder of the proposed name if it has one, in the user's documents where the user may not
  /// write there. A file that cannot be written is told with the system's reason, and another name is asked
  /// for. Throws base::Error when the dialog cannot be shown.
  std::optional<std::string> AskSaveFile(const ui::SaveRequest& request) override;

 private:
  NativeToolkit& toolkit_;
};

}  // namespace win32
