// What the windows beside the main one have in common: their place on the platform, their texts, and what
// they say to the person.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "shell/platform.h"
#include "shell/settings.h"
#include "shell/strings.h"
#include "ui/form.h"

namespace shell {

class ToolWindow : public ui::Window {
 public:
  ~ToolWindow() override {
    if (platform_.toolkit) platform_.toolkit->Discard(*this);
  }

 protected:
  ToolWindow(std::string name, const Platform& platform, const Settings& settings, const Strings& strings)
      : Window(std::move(name)), platform_(platform), settings_(settings), strings_(strings) {
    iconFile = settings.iconFile;
  }

  /// Makes the native window unless it is there.
  void Realize() {
    if (platform_.toolkit && !GetWindowPeer()) platform_.toolkit->Realize(*this);
  }
  /// The same, half as wide again: for a list of sentences.
  void RealizeWide() {
    if (!platform_.toolkit || GetWindowPeer()) return;
    Realize();
    const ui::Bounds place = GetBounds();
    Resize(place.width * 3 / 2, place.height);
  }

  /// In the language in use; placeholders are replaced by `arguments`, as they are.
  std::string Text(std::string_view english) const { return strings_.GetStrings(english); }
  std::string Text(std::string_view english, const std::vector<std::string>& arguments) const {
    return strings_.GetStrings(english, arguments);
  }
  void SetTexts(std::initializer_list<std::pair<ui::Control*, const char*>> captions) const {
    for (const auto& [control, caption] : captions) control->SetText(Text(caption));
  }
  /// A notice in a box, with the name of the tool.
  void Say(const std::string& text, ui::Icon icon) const {
    platform_.prompts.Ask({text, settings_.title, ui::Buttons::kOk, icon});
  }

  const Platform& platform_;
  const Settings& settings_;
  const Strings& strings_;
};

}  // namespace shell
