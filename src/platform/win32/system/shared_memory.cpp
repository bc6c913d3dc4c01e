#include "platform/win32/system/shared_memory.h"

#include "platform/win32/system/handle.h"

namespace win32 {
namespace {

struct UnmapView {
  void operator()(void* view) const { UnmapViewOfFile(view); }
};
using MappedView = Owner<void*, UnmapView>;

class PagedSection : public plugin::SharedSection {
 public:
  PagedSection(win32::Handle section, MappedView view)
      : section_(std::move(section)), view_(std::move(view)) {}

  std::uintptr_t Handle() const override { return reinterpret_cast<std::uintptr_t>(section_.Get()); }
  void* View() const override { return view_.Get(); }
  bool Unmap() override {
    if (!UnmapViewOfFile(view_.Get())) return false;
    view_.Release();
    section_.Reset();
    return true;
  }

 private:
  win32::Handle section_;
  MappedView view_;  // ends before its section
};

std::size_t MappedBytes(void* view) {
  MEMORY_BASIC_INFORMATION region = {};
  return VirtualQuery(view, &region, sizeof region) ? region.RegionSize : 0;
}

}  // namespace

std::unique_ptr<plugin::SharedSection> PagedMemory::Open(std::int32_t size, const std::string& name) {
  denied_ = false;
  if (size <= 0) return nullptr;
  Handle section(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                    static_cast<DWORD>(size), Wide(name).c_str()));
  // "CreateFileMappingW" of the platform's documentation: the name exists, and its owner lets only others in.
  // So it is with what a program with administrator's rights made.
  denied_ = !section && GetLastError() == ERROR_ACCESS_DENIED;
  if (!section) return nullptr;
  MappedView view(MapViewOfFile(section.Get(), FILE_MAP_ALL_ACCESS, 0, 0, 0));
  if (!view || MappedBytes(view.Get()) < static_cast<std::size_t>(size)) return nullptr;
  return std::make_unique<PagedSection>(std::move(section), std::move(view));
}

}  // namespace win32
