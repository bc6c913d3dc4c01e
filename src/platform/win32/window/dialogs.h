// What the system itself shows for the tool: message boxes, its dialogs for the name of a file, and HTML
// Help.
#pragma once

#include <windows.h>

#include "shell/help.h"
#include "ui/file_dialog.h"
#include "ui/prompts.h"

namespace win32 {

class NativeToolkit;

class MessagePrompts : public ui::Prompts {
 public:
  explicit MessagePrompts(NativeToolkit& toolkit) : toolkit_(toolkit) {}
  ui::Answer Ask(const ui::Prompt& prompt) override;

 private:
  NativeToolkit& toolkit_;
};

class FileNameDialog : public ui::FileDialog {
 public:
  explicit FileNameDialog(NativeToolkit& toolkit) : toolkit_(toolkit) {}
  /// Starts in the folder of the proposed name if it has one, in the user's documents where the user may not
  /// write there. A file that cannot be written is told with the system's reason, and another name is asked
  /// for. Throws base::Error when the dialog cannot be shown.
  std::optional<std::string> AskSaveFile(const ui::FileRequest& request) override {
    return Ask(request, true);
  }
  std::optional<std::string> AskOpenFile(const ui::FileRequest& request) override {
    return Ask(request, false);
  }

 private:
  std::optional<std::string> Ask(const ui::FileRequest& request, bool toSave);
  NativeToolkit& toolkit_;
};

/// HTML Help is loaded when help is first asked for: a machine without it loses the help and nothing else.
class HtmlHelpViewer : public shell::HelpViewer {
 public:
  HtmlHelpViewer() = default;
  /// Closes the help windows that were opened.
  ~HtmlHelpViewer() override;
  HtmlHelpViewer(const HtmlHelpViewer&) = delete;
  HtmlHelpViewer& operator=(const HtmlHelpViewer&) = delete;

  shell::HelpOutcome Show(const std::string& target, unsigned command, int topic) override;

 private:
  using Entry = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

  static Entry Load();

  Entry entry_ = nullptr;
};

}  // namespace win32
