// Named sections of the paging file, seen by all programs of the user's session.
#pragma once

#include "plugin/shared_memory.h"

namespace win32 {

class PagedMemory : public plugin::SharedMemory {
 public:
  std::unique_ptr<plugin::SharedSection> Open(std::int32_t size, const std::string& name) override;
  bool Denied() const override { return denied_; }

 private:
  bool denied_ = false;
};

}  // namespace win32
