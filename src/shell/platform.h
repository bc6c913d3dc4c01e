// Everything that the tool asks of the platform it runs on, handed down by the composition root.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "automation/object.h"
#include "base/registry.h"
#include "shell/help.h"
#include "ui/control_host.h"
#include "ui/event_loop.h"
#include "ui/file_dialog.h"
#include "ui/form.h"
#include "ui/prompts.h"

namespace shell {

struct Platform {
  ui::Toolkit* toolkit = nullptr;  // none in tests: windows then keep their state without a screen
  ui::Prompts& prompts;
  ui::EventLoop& loop;
  ui::FileDialog& fileDialog;
  HelpViewer& help;
  ui::ControlHost& controls;
  base::Registry& registry;
  base::Locale& locale;
  /// Creates an automation object by its program id. Throws automation::Error naming the id.
  std::function<automation::Object(std::string_view)> createObject;
  /// The whole content of a file. Throws base::Error naming the file.
  std::function<automation::Bytes(const std::string&)> readFile;

  /// The same platform, but `other` is asked.
  Platform Asking(ui::Prompts& other) const {
    return {toolkit, other, loop, fileDialog, help, controls, registry, locale, createObject, readFile};
  }
};

}  // namespace shell
