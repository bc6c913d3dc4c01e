// The window agent: publishes the handle of a main window in shared memory under a name, and finds a window
// that another process published there and brings it to the front. Every tool process has one; by it the
// window that is already open on a device is raised instead of opening a second one.
//
// The entry is only a hint: a window counts as open when it still exists and carries the mark of its name.
// What a process that died left behind, or a handle that now belongs to another window, is never raised.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "plugin/desktop_windows.h"
#include "plugin/shared_memory.h"

namespace plugin {

/// The name under which a tool publishes the window that it has open on a device. Readable at the front, and
/// different for any two devices or networks, also when cleaning makes their readable parts the same. Hosts
/// find a network or device in any case of its letters, so the name is the same in all of them.
std::string PublishedName(const std::string& program, const std::string& network, const std::string& device);

class CWindowAgent {
 public:
  CWindowAgent(SharedMemory& memory, DesktopWindows& windows) : memory_(memory), windows_(windows) {}
  CWindowAgent(const CWindowAgent&) = delete;
  CWindowAgent& operator=(const CWindowAgent&) = delete;

  /// The error event: a number as the message log has it (16, an error), class, routine, message.
  std::function<void(int number, std::string_view className, std::string_view routine,
                     std::string_view message)>
      onError;

  /// Opens or creates the section of `size` bytes under the cleaned name, in place of the one that was open.
  bool OpenAndMapPaged(std::int32_t size, const std::string& name);
  /// Closes the section. False, after the error event, when the system refuses or none is open.
  bool UnMapFile();

  /// A window that loads is hidden, and not to be shown by others.
  enum class Phase { kOpen, kLoading };
  /// Publishes a window of this process under `name`, until Withdraw or the agent's end, which must come
  /// before the window's. A failure is told by the error event.
  void WindowHandleInMemory(const std::string& name, std::int32_t handle, Phase phase = Phase::kOpen);
  /// The published window has loaded. Harmless when none is.
  void Loaded();
  /// The published window is no longer there to be found. Harmless when none is.
  void Withdraw();

  enum class Found { kNoWindow, kRaised, kNoAnswer, kOtherRights };
  /// Brings the window published under `name` to the front, also a minimised or hidden one, and keeps its
  /// handle; a maximised one stays so. Of one that still loads, what its program shows meanwhile.
  Found RaisePublished(const std::string& name);

  /// Shows a window and forces it in front of other programs' windows; takes a third of a second. Mode 1
  /// shows the window `handle` as it is, mode 2 restores it, mode 3 restores the one that the agent keeps;
  /// all maximise it instead when asked. True in modes 1 and 2 only. Any other mode touches no window.
  bool ShowWindowByHandle(std::int16_t mode, std::int32_t handle, bool maximise);

  std::uintptr_t MappingHandle() const { return section_ ? section_->Handle() : 0; }
  void* ViewAddress() const { return section_ ? section_->View() : nullptr; }
  const std::string& MappingName() const { return mappingName_; }
  std::int32_t WindowHandle() const { return windowHandle_; }

 private:
  void Report(std::string_view routine, std::string_view message) const;
  std::int32_t WindowHandleFromMemory(const std::string& name);
  /// `size` bytes of the view, or null where there are none.
  void* At(std::int32_t offset, std::size_t size) const;
  template <class T>
  void PutBytes(std::int32_t offset, const T& value);
  template <class T>
  void GetBytes(std::int32_t offset, T& value) const;

  SharedMemory& memory_;
  DesktopWindows& windows_;
  std::unique_ptr<SharedSection> section_;
  std::string mappingName_;
  std::int32_t mappingSize_ = 0;  // bytes
  std::int32_t windowHandle_ = 0;
};

}  // namespace plugin
