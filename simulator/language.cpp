#include "simulator/language.h"

#include <chrono>
#include <ctime>

#include "simulator/collection.h"

namespace simulator {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

/// Days since 30 December 1899, in local time.
double Now() {
  const std::time_t time = std::time(nullptr);
  const std::tm local = *std::localtime(&time);
  using namespace std::chrono;
  const sys_days today{year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday};
  const auto days = (today - sys_days{year(1899) / 12 / 30}).count();
  const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
  return static_cast<double>(days) + seconds / 86400.0;
}

}  // namespace

constexpr automation::MemberOf<Language> Language::kMembers[] = {
    {"Section", nullptr, nullptr,
     [](Language& self, const Arguments& arguments) -> Value { return self.Section(arguments[0].AsText()); }},
    {"LastChange", [](Language& self, const Arguments&) -> Value { return self.Kept().languageChanged; }},
    {"Languages", [](Language& self, const Arguments&) -> Value { return self.Languages(); }},
    {"Language", [](Language& self, const Arguments&) -> Value { return self.Kept().language; },
     [](Language& self, const Value& value) { self.Choose(value.AsText()); }},
    {"Font", [](Language& self, const Arguments&) -> Value { return self.InUse().font; }},
};

// The store may name a language whose texts were taken away since.
const LanguageTexts& Language::InUse() const {
  const std::string& kept = Kept().language;
  return Refusing([&]() -> const LanguageTexts& {
    return GetCore().TextsOf(GetCore().languages.contains(kept) ? kept : "English");
  });
}

Object Language::Section(const std::string& name) const {
  CollectionItems items;
  const auto& sections = InUse().sections;
  if (const auto section = sections.find(name); section != sections.end()) {
    for (const auto& [key, text] : section->second) items.push_back({key, text});
  }
  return MakeCollection(SharedCore(), "Section " + name, std::move(items));
}

Object Language::Languages() const {
  CollectionItems items;
  for (const auto& [name, file] : GetCore().languages) items.push_back({name, name});
  return MakeCollection(SharedCore(), "Languages", std::move(items));
}

void Language::Choose(const std::string& language) {
  if (!GetCore().languages.contains(language)) Refuse("There is no language \"" + language + "\".");
  Refusing([&] {
    GetCore().store.ChangeContent([&](StoreContent& content) {
      content.language = language;
      content.languageChanged = Now();
    });
  });
}

}  // namespace simulator
