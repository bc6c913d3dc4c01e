#include <gtest/gtest.h>

#include "platform/win32/system/handle.h"
#include "platform/win32/system/process.h"
#include "platform/win32/system/registry.h"
#include "platform/win32/system/text.h"

namespace {

using base::RegistryRoot;

struct UserSettings : testing::Test {
  const std::string key = "Software\\TarnTest\\Settings";
  win32::WindowsRegistry registry;
  ~UserSettings() override { RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\TarnTest"); }
};

TEST_F(UserSettings, TextsComeBackAndCarryNoClosingNul) {
  for (const char* text : {"1", "", "Größe °C", "two words"}) {
    EXPECT_EQ(base::WriteRegistryString(registry, RegistryRoot::kCurrentUser, key, "Measure", text),
              "Success");
    EXPECT_EQ(registry.Read(RegistryRoot::kCurrentUser, key, "Measure"), text);
  }
  win32::RegistryKey opened;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, win32::Wide(key).c_str(), 0, KEY_READ, opened.Put()),
            ERROR_SUCCESS);
  DWORD type = 0;
  DWORD bytes = 0;
  RegQueryValueExW(opened.Get(), L"Measure", nullptr, &type, nullptr, &bytes);
  EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
  EXPECT_EQ(bytes, 9 * sizeof(wchar_t));
}

TEST_F(UserSettings, WhatOthersWroteIsReadUpToItsNul) {
  const auto read = [&] {
    return base::ReadRegistryString(registry, RegistryRoot::kCurrentUser, key, "Raw");
  };
  EXPECT_EQ(read(), "");
  const std::tuple<DWORD, const wchar_t*, DWORD, const char*> cases[] = {{REG_DWORD, L"ab", 4, ""},
                                                                         {REG_EXPAND_SZ, L"text", 10, ""},
                                                                         {REG_SZ, L"text", 10, "text"},
                                                                         {REG_SZ, L"one\0two.", 14, "one"}};
  for (const auto& [type, data, bytes, text] : cases) {
    RegSetKeyValueW(HKEY_CURRENT_USER, win32::Wide(key).c_str(), L"Raw", type, data, bytes);
    EXPECT_EQ(read(), text) << type;
  }
  EXPECT_EQ(registry.Read(RegistryRoot::kCurrentUser, key, "Raw"), std::string("one\0two", 7));
  EXPECT_FALSE(registry.Read(RegistryRoot::kCurrentUser, key + "\\Missing", "x"));
}

TEST(UserLocale, AnswersItsItemsAndNothingForUnknownOnes) {
  win32::WindowsLocale locale;
  const std::string measure = locale.GetLocaleString(base::kLocaleMeasure);
  EXPECT_TRUE(measure == "0" || measure == "1") << measure;
  EXPECT_FALSE(locale.GetLocaleString(base::kLocaleDecimal).empty());
  EXPECT_EQ(locale.GetLocaleString(0xFFF), "");

  // Short date, one blank, long time, each as the user's settings have it.
  SYSTEMTIME now;
  GetLocalTime(&now);
  wchar_t date[80] = L"";
  GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, &now, nullptr, date, 80, nullptr);
  const std::string general = locale.GeneralDateNow();
  EXPECT_TRUE(general.starts_with(win32::Utf8(date) + " ")) << general;
  EXPECT_NE(general.find(':'), std::string::npos) << general;
}

TEST(Utf, CarriesEverythingAndReplacesWhatIsNoText) {
  for (const auto& text : {std::string("°F \xF0\x9F\x8C\xA1"), std::string("a\0b", 3), std::string()})
    EXPECT_EQ(win32::Utf8(win32::Wide(text)), text);
  EXPECT_EQ(win32::Wide("a\xFFz"), L"a\xFFFDz");
  EXPECT_EQ(win32::Utf8(L"a\xD800z"), "a\xEF\xBF\xBDz");
}

TEST(SystemErrors, AlwaysShowTheNumber) {
  EXPECT_TRUE(win32::SystemText(ERROR_ACCESS_DENIED).ends_with(" (5)"));
  EXPECT_TRUE(win32::SystemText(DISP_E_MEMBERNOTFOUND).ends_with(" (0x80020003)"));
  EXPECT_EQ(win32::SystemText(static_cast<HRESULT>(0x8ABC1234)), "Error (0x8ABC1234)");
}

}  // namespace
