// Controls of other makers inside the tool's windows: the system's own control container (atl.dll) creates an
// ActiveX control in a ControlSite, gives it its place and closes it with the window. Of its events the tool
// wants one, Failed(text). Created by the composition root, after the toolkit.
#pragma once

#include <map>
#include <memory>

#include "platform/win32/window/message_loop.h"
#include "platform/win32/window/toolkit.h"
#include "ui/control_host.h"

namespace win32 {

class ActiveXHost : public ui::ControlHost, private MessageFilter {
 public:
  ActiveXHost(NativeToolkit& toolkit, MessageLoop& loop);
  ~ActiveXHost() override;

  /// A control that the site holds already is destroyed first. The object outlives its window, but shows
  /// nothing then.
  automation::Object Create(ui::ControlSite& site, const std::string& programId,
                            std::function<void(const std::string&)> onFailed) override;
  void Check(const std::string& programId) override;
  void Destroy(ui::ControlSite& site) override;

 private:
  struct Hosted;

  /// Keys belong to the control first, which knows its own tab steps and shortcuts.
  bool Translate(MSG& message) override;
  static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                   DWORD_PTR self);

  NativeToolkit& toolkit_;
  MessageLoop& loop_;
  // By the container's window, which is the site's one child.
  std::map<HWND, std::unique_ptr<Hosted>> hosted_;
};

}  // namespace win32
