#include "plugin/window_agent.h"

#include <fmt/format.h>

#include <chrono>
#include <cstring>
#include <thread>

#include "base/text.h"

namespace plugin {
namespace {

constexpr int kErrorNumber = 16;
constexpr std::string_view kClassName = "CWindowAgent";
constexpr std::int32_t kHandleSize = 4;
constexpr std::size_t kReadableSize = 100;  // bytes of a published name before its check sum

// The system's show commands.
constexpr int kShowMaximized = 3;
constexpr int kShow = 5;
constexpr int kRestore = 9;

// Long enough that the window manager has taken it up, so that the window really stands in front.
constexpr std::chrono::milliseconds kTopmostTime{333};

// The same in every program, 32 or 64 bits (FNV-1a).
std::uint64_t CheckSum(std::string_view text) {
  std::uint64_t sum = 0xcbf29ce484222325;
  for (const char byte : text) sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  return sum;
}

// Characters that mean something in names of the system.
std::string CleanName(std::string name) {
  std::erase_if(name, [](char byte) { return byte == '.' || byte == '\\' || byte == '/'; });
  return name;
}

using Phase = CWindowAgent::Phase;

// Never 0, and positive, so that it is the same number as any kind of handle.
std::int32_t MarkOf(const std::string& cleanName, Phase phase) {
  const std::uint64_t sum = CheckSum(phase == Phase::kLoading ? cleanName + "\nloading" : cleanName);
  return static_cast<std::int32_t>((sum & 0x7fffffff) | 1);
}

// In small letters: those of ASCII, and those that Western European languages add (U+00C0 to U+00DE, which
// UTF-8 writes as C3 80 to C3 9E, but for the multiplication sign among them).
std::string SmallLetters(std::string_view text) {
  std::string small = base::Lower(text);
  for (std::size_t i = 1; i < small.size(); ++i) {
    const auto byte = static_cast<unsigned char>(small[i]);
    if (small[i - 1] == '\xC3' && byte >= 0x80 && byte <= 0x9E && byte != 0x97)
      small[i] = static_cast<char>(byte + 0x20);
  }
  return small;
}

}  // namespace

std::string PublishedName(const std::string& program, const std::string& network, const std::string& device) {
  std::string readable = SmallLetters(program + " " + network + " " + device);
  std::size_t size = std::min(readable.size(), kReadableSize);
  while (size < readable.size() && (readable[size] & 0xC0) == 0x80) --size;  // no half character
  readable.resize(size);
  return fmt::format("{} {:016x}", readable,
                     CheckSum(SmallLetters(program + "\n" + network + "\n" + device)));
}

void CWindowAgent::Report(std::string_view routine, std::string_view message) const {
  if (onError) onError(kErrorNumber, kClassName, routine, message);
}

bool CWindowAgent::OpenAndMapPaged(std::int32_t size, const std::string& name) {
  if (section_ && !UnMapFile()) return false;
  const std::string cleanName = CleanName(name);
  section_ = memory_.Open(size, cleanName);
  if (!section_) return false;
  mappingName_ = cleanName;
  mappingSize_ = size;
  return true;
}

bool CWindowAgent::UnMapFile() {
  if (!section_ || !section_->Unmap()) {
    Report("UnMapFile", "Failed to UnMapFile");
    return false;
  }
  section_.reset();
  mappingName_.clear();
  mappingSize_ = 0;
  return true;
}

void* CWindowAgent::At(std::int32_t offset, std::size_t size) const {
  const std::int32_t last = mappingSize_ - static_cast<std::int32_t>(size);
  if (!section_ || offset < 0 || offset > last) return nullptr;
  return static_cast<char*>(section_->View()) + offset;
}

template <class T>
void CWindowAgent::PutBytes(std::int32_t offset, const T& value) {
  static_assert(sizeof(T) == 4 || sizeof(T) == 8);
  if (void* place = At(offset, sizeof value)) std::memcpy(place, &value, sizeof value);
}

template <class T>
void CWindowAgent::GetBytes(std::int32_t offset, T& value) const {
  static_assert(sizeof(T) == 4 || sizeof(T) == 8);
  if (const void* place = At(offset, sizeof value)) std::memcpy(&value, place, sizeof value);
}

void CWindowAgent::WindowHandleInMemory(const std::string& name, std::int32_t handle, Phase phase) {
  if (!OpenAndMapPaged(kHandleSize, name)) return Report("WindowHandleInMemory", "Failed to map file");
  windowHandle_ = handle;
  windows_.Mark(handle, MarkOf(mappingName_, phase));
  PutBytes(0, handle);
}

void CWindowAgent::Loaded() {
  if (section_) windows_.Mark(windowHandle_, MarkOf(mappingName_, Phase::kOpen));
}

void CWindowAgent::Withdraw() {
  if (!section_) return;
  windows_.Mark(windowHandle_, 0);
  windowHandle_ = 0;
  UnMapFile();
}

// The section is closed at once: it must not outlive the process that published in it.
std::int32_t CWindowAgent::WindowHandleFromMemory(const std::string& name) {
  std::int32_t handle = 0;
  if (!OpenAndMapPaged(kHandleSize, name)) return handle;
  GetBytes(0, handle);
  UnMapFile();
  return handle;
}

CWindowAgent::Found CWindowAgent::RaisePublished(const std::string& name) {
  const std::int32_t handle = WindowHandleFromMemory(name);
  windowHandle_ = 0;
  if (memory_.Denied()) return Found::kOtherRights;
  if (handle == 0) return Found::kNoWindow;
  // A window that has loaded between two looks is seen by the second one.
  for (const Phase phase : {Phase::kLoading, Phase::kOpen}) {
    const Sight sight = windows_.Look(handle, MarkOf(CleanName(name), phase));
    if (sight == Sight::kGone) continue;
    windowHandle_ = handle;
    if (sight == Sight::kSilent) return Found::kNoAnswer;
    if (phase == Phase::kLoading) {
      windows_.RaiseLoading(handle);
    } else {
      ShowWindowByHandle(3, 0, sight == Sight::kMaximized);
    }
    return Found::kRaised;
  }
  return Found::kNoWindow;
}

// None of the commands hides or minimises, so the window always comes to the front.
bool CWindowAgent::ShowWindowByHandle(std::int16_t mode, std::int32_t handle, bool maximise) {
  if (mode < 1 || mode > 3) return false;
  const std::int32_t window = mode == 3 ? windowHandle_ : handle;
  windows_.Show(window, maximise ? kShowMaximized : mode == 1 ? kShow : kRestore);
  windows_.SetTopmost(window, true);
  std::this_thread::sleep_for(kTopmostTime);
  windows_.SetTopmost(window, false);
  windows_.Activate(window);
  return mode != 3;
}

}  // namespace plugin
