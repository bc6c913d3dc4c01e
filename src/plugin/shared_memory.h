// Memory under a name that all programs of the user's session can open, as the window agent needs it. A port:
// implemented by the Windows edge with sections of the paging file, and by plain memory blocks in tests.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace plugin {

/// A section that is open and mapped; its end unmaps and closes it. The system forgets a section, and what is
/// in it, when the last program has closed it or ended.
class SharedSection {
 public:
  virtual ~SharedSection() = default;
  /// The number by which the system knows the open section.
  virtual std::uintptr_t Handle() const = 0;
  /// Where the section lies in this process; null after Unmap.
  virtual void* View() const = 0;
  /// Unmaps and closes. False when the system refuses: everything is as before.
  virtual bool Unmap() = 0;
};

class SharedMemory {
 public:
  virtual ~SharedMemory() = default;
  /// Creates a section of `size` bytes, all zero, or opens the one of that name, and maps all of it for
  /// reading and writing. Null when the system refuses or the section there is smaller.
  virtual std::unique_ptr<SharedSection> Open(std::int32_t size, const std::string& name) = 0;
  /// True when the last Open found a section that only programs with other rights may open.
  virtual bool Denied() const = 0;
};

}  // namespace plugin
