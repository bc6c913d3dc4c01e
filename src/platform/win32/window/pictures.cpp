#include "platform/win32/window/pictures.h"

// After windows.h, which it needs.
#include <shellapi.h>
#include <shlobj.h>

#include "platform/win32/system/process.h"

namespace win32 {
namespace {

struct Level {
  int level;
  LPCWSTR icon;
};

constexpr int kInformation = 64;
constexpr int kExclamation = 48;

// Order of the places in the image list.
const Level kLevels[] = {{kInformation, IDI_INFORMATION}, {kExclamation, IDI_WARNING}, {0, IDI_ERROR}};
constexpr int kErrorPlace = 2;

IconHandle SystemIcon(LPCWSTR name, int width, int height) {
  const HANDLE shared = LoadImageW(nullptr, name, IMAGE_ICON, width, height, LR_SHARED);
  return IconHandle(shared ? CopyIcon(static_cast<HICON>(shared)) : nullptr);
}

// The system's picture of a document stands for the log.
IconHandle DocumentIcon(int width, int height) {
  SHSTOCKICONINFO info = {};
  info.cbSize = sizeof info;
  if (SUCCEEDED(SHGetStockIconInfo(SIID_DOCASSOC, SHGSI_ICON | SHGSI_SMALLICON, &info)) && info.hIcon)
    return IconHandle(info.hIcon);
  return SystemIcon(IDI_INFORMATION, width, height);
}

ImageList EmptyList(int width, int height) {
  return ImageList(ImageList_Create(width, height, ILC_COLOR32 | ILC_MASK, 1, 2));
}

}  // namespace

Pictures::Pictures(int dpi)
    : dpi_(dpi),
      width_(System(SM_CXSMICON)),
      height_(System(SM_CYSMICON)),
      levels_(EmptyList(width_, height_)),
      spacer_(EmptyList(1, height_)) {
  for (const Level& level : kLevels) {
    ImageList_AddIcon(levels_.Get(), SystemIcon(level.icon, width_, height_).Get());
  }
  const IconHandle icons[] = {DocumentIcon(width_, height_), SystemIcon(IDI_ERROR, width_, height_),
                              SystemIcon(IDI_WARNING, width_, height_)};
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    // A button takes a list of one picture for all its states.
    buttons_[i] = EmptyList(width_, height_);
    ImageList_AddIcon(buttons_[i].Get(), icons[i].Get());
  }
}

const Pictures::WindowIcons& Pictures::Window(const std::string& file) {
  if (file.empty()) return Window(ProgramPath());
  const auto [entry, added] = windowIcons_.try_emplace(file);
  WindowIcons& icons = entry->second;
  HICON large = nullptr;
  HICON small = nullptr;
  const auto sizes = static_cast<UINT>(MAKELONG(System(SM_CXICON), width_));
  const bool found = added && SHDefExtractIconW(Wide(file).c_str(), 0, 0, &large, &small, sizes) == S_OK;
  // Where there is no such file the handles mean nothing.
  if (found) icons = {IconHandle(large), IconHandle(small)};
  return icons.large || file == ProgramPath() ? icons : Window(ProgramPath());
}

int Pictures::LevelPlace(int level) {
  if (level == 0) return -1;
  for (int place = 0; place < kErrorPlace; ++place) {
    if (kLevels[place].level == level) return place;
  }
  return kErrorPlace;
}

HIMAGELIST Pictures::Button(int picture) const {
  return picture >= 1 && picture <= static_cast<int>(buttons_.size())
             ? buttons_[static_cast<std::size_t>(picture - 1)].Get()
             : nullptr;
}

}  // namespace win32
