// What each of the maker's controls has: a window described as data, and one event. A control is also an
// automation object, through which its container drives it. The Windows part of this folder makes ActiveX
// controls of them.
#pragma once

#include <functional>
#include <string>

#include "ui/form.h"

namespace controls {

class MakersControl {
 public:
  /// The window takes no input before the control has been given something to show.
  explicit MakersControl(const std::string& name) : window_(name) { window_.SetAcceptsInput(false); }
  virtual ~MakersControl() = default;

  ui::Window& GetWindow() { return window_; }

  /// Hears why something that a person asked for did not succeed.
  std::function<void(const std::string& text)> onFailed;

 protected:
  void Fail(const std::string& text) const {
    if (onFailed) onFailed(text);
  }

 private:
  ui::Window window_;
};

}  // namespace controls
