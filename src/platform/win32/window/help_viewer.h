// HTML Help, loaded when help is first asked for: a machine without it loses the help and nothing else.
#pragma once

#include <windows.h>

#include "shell/help.h"

namespace win32 {

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
