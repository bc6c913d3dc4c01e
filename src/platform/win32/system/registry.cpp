#include "platform/win32/system/registry.h"

#include <objbase.h>

#include <iterator>

#include "platform/win32/system/text.h"

namespace win32 {
namespace {

LSTATUS Open(RegistryView view, HKEY hive, const std::string& key, RegistryKey& opened) {
  constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  const REGSAM flag = view == RegistryView::kOwn ? 0 : kOtherView;
  return RegOpenKeyExW(hive, Wide(key).c_str(), 0, KEY_QUERY_VALUE | flag, opened.Put());
}

std::optional<std::string> ReadView(RegistryView view, HKEY hive, const std::string& key,
                                    const std::string& name) {
  RegistryKey opened;
  if (Open(view, hive, key, opened) != ERROR_SUCCESS) return {};
  const std::wstring value = Wide(name);
  for (;;) {
    DWORD type = 0;
    DWORD bytes = 0;
    LSTATUS status = RegQueryValueExW(opened.Get(), value.c_str(), nullptr, &type, nullptr, &bytes);
    if (status != ERROR_SUCCESS || type != REG_SZ) return {};
    std::wstring text((bytes + 1) / sizeof(wchar_t), L'\0');
    status = RegQueryValueExW(opened.Get(), value.c_str(), nullptr, &type,
                              reinterpret_cast<BYTE*>(text.data()), &bytes);
    if (status == ERROR_MORE_DATA) continue;  // somebody lengthened it in between
    if (status != ERROR_SUCCESS || type != REG_SZ) return {};
    text.resize(bytes / sizeof(wchar_t));
    return Utf8(text);
  }
}

}  // namespace

HKEY HiveOf(base::RegistryRoot root) {
  return root == base::RegistryRoot::kCurrentUser ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

std::string GuidText(const GUID& guid) {
  wchar_t text[40] = L"";
  StringFromGUID2(guid, text, static_cast<int>(std::size(text)));
  return Utf8(text);
}

bool HasKey(RegistryView view, HKEY hive, const std::string& key) {
  RegistryKey opened;
  return Open(view, hive, key, opened) == ERROR_SUCCESS;
}

std::string DefaultText(RegistryView view, HKEY hive, const std::string& key) {
  RegistryKey opened;
  if (Open(view, hive, key, opened) != ERROR_SUCCESS) return {};
  DWORD bytes = 0;
  RegGetValueW(opened.Get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &bytes);
  std::wstring text(bytes / sizeof(wchar_t) + 1, L'\0');
  bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  if (RegGetValueW(opened.Get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &bytes) !=
      ERROR_SUCCESS)
    return {};
  return Utf8(text.c_str());
}

std::optional<std::string> WindowsRegistry::Read(base::RegistryRoot root, const std::string& key,
                                                 const std::string& name) {
  // The host may be a program of the other width.
  for (const RegistryView view : {RegistryView::kOwn, RegistryView::kOther}) {
    if (auto text = ReadView(view, HiveOf(root), key, name)) return text;
  }
  return {};
}

bool WindowsRegistry::Write(base::RegistryRoot root, const std::string& key, const std::string& name,
                            const std::string& text) {
  HKEY opened = nullptr;
  if (RegCreateKeyExW(HiveOf(root), Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                      nullptr) != ERROR_SUCCESS) {
    return false;
  }
  // The system lengthens a text by a NUL that it finds behind it, so something else stands there.
  const std::wstring wide = Wide(text) + L'.';
  RegSetValueExW(opened, Wide(name).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(wide.data()),
                 static_cast<DWORD>((wide.size() - 1) * sizeof(wchar_t)));
  return RegCloseKey(opened) == ERROR_SUCCESS;
}

std::string WindowsLocale::GetLocaleString(int item) {
  const auto type = static_cast<LCTYPE>(item);
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, nullptr, 0);
  if (length <= 0) return {};
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), length);
  return Utf8(text.substr(0, text.find(L'\0')));
}

std::string WindowsLocale::GeneralDateNow() {
  SYSTEMTIME now;
  GetLocalTime(&now);
  wchar_t date[128] = L"";
  wchar_t time[128] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, date, static_cast<int>(std::size(date)));
  GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &now, nullptr, time, static_cast<int>(std::size(time)));
  return Utf8(std::wstring(date) + L" " + time);
}

}  // namespace win32
