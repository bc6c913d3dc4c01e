// The shared language component: the texts of each language by section, the language chosen for all plug-ins
// of the host and when it was last changed. The texts come from the data folder's languages, one file each,
// the choice is kept in the store.
#pragma once

#include <string>

#include "simulator/core.h"

namespace simulator {

class Language : public HostObject<Language> {
 public:
  using HostObject::HostObject;

  static constexpr std::string_view kClassName = "Language";
  /// Section(name): collection of texts by key, empty for an unknown section; LastChange: days, as the
  /// platform's date counts; Languages: collection of names; Language: a write of an unknown name is refused;
  /// Font: the font's name.
  static const automation::MemberOf<Language> kMembers[5];

 private:
  const StoreContent& Kept() const { return GetCore().store.Committed(); }
  const LanguageTexts& InUse() const;
  automation::Object Section(const std::string& name) const;
  automation::Object Languages() const;
  void Choose(const std::string& language);
};

}  // namespace simulator
