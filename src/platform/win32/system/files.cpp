#include "platform/win32/system/files.h"

#include <limits>

#include <windows.h>
// After windows.h, which it needs.
#include <shlobj.h>

#include "base/error.h"
#include "platform/win32/system/handle.h"
#include "platform/win32/system/text.h"

namespace win32 {
namespace {

[[noreturn]] void Fail(const std::string& path) {
  throw base::Error("The file " + path + " cannot be read: " + LastErrorText());
}

}  // namespace

bool FileExists(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

std::string DocumentsFolder() {
  wchar_t* path = nullptr;
  const HRESULT result = SHGetKnownFolderPath(FOLDERID_Documents, KF_FLAG_DEFAULT, nullptr, &path);
  const std::string folder = SUCCEEDED(result) ? Utf8(path) : std::string();
  CoTaskMemFree(path);
  return folder;
}

automation::Bytes ReadWholeFile(const std::string& path) {
  const Handle file(CreateFileW(Wide(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.Get() == INVALID_HANDLE_VALUE) Fail(path);
  LARGE_INTEGER size;
  if (!GetFileSizeEx(file.Get(), &size)) Fail(path);
  if (size.QuadPart > std::numeric_limits<std::int32_t>::max())
    throw base::Error("The file " + path + " is too large.");
  automation::Bytes content(static_cast<std::size_t>(size.QuadPart));
  DWORD read = 0;
  if (!ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &read, nullptr)) Fail(path);
  content.resize(read);
  return content;
}

}  // namespace win32
