// The windows on the desktop, of this process and of others, by their handles; the same 32 bits name a window
// in every process. The window agent looks at them and brings them to the front. A port: implemented by the
// Windows edge.
#pragma once

#include <cstdint>

namespace plugin {

enum class Sight {
  kGone,    // no such window, or it is not the one that was marked: handles are used again
  kSilent,  // it is there, but its program does not answer
  kNormal,  // or hidden, or minimised
  kMaximized,
};

class DesktopWindows {
 public:
  virtual ~DesktopWindows() = default;
  /// Puts a mark on a window of this process that other processes can see; 0 takes it off.
  virtual void Mark(std::int32_t window, std::int32_t mark) = 0;
  /// What is to be seen of a window that carries `mark`. May wait some seconds for a program that is silent.
  virtual Sight Look(std::int32_t window, std::int32_t mark) = 0;
  /// `command` is one of the system's show commands (3 maximised, 5 show, 9 restore).
  virtual void Show(std::int32_t window, int command) = 0;
  /// Into the band above all normal windows, or out of it, without moving or sizing.
  virtual void SetTopmost(std::int32_t window, bool topmost) = 0;
  /// Brings what the program of a window that is still hidden shows meanwhile to the front, and lets the
  /// program bring the window itself there once it is ready.
  virtual void RaiseLoading(std::int32_t window) = 0;
  /// Makes it the foreground window, on top, with the keyboard.
  virtual void Activate(std::int32_t window) = 0;
};

}  // namespace plugin
