// What each field is called in English, whatever language is in use: in files, which are read anywhere, and
// for scripts. Made once by whoever writes files; asks the host for nothing.
#pragma once

#include <string>

#include "configuration/snapshot.h"
#include "configuration/unseen_pages.h"

namespace configuration {

using shell::kMainWindow;
inline constexpr const char* kLocationControl = "txtLocation";

class EnglishNames {
 public:
  explicit EnglishNames(const UnseenPages::Surroundings& surroundings);

  /// "Space Temperature, Proportional Gain".
  std::string Of(const Value& value);
  Document ToDocument(const Snapshot& snapshot);

 private:
  shell::Strings english_;
  host::Journal journal_;
  automation::Object network_;  // none
  host::Transactions transactions_{network_, journal_};
  UnseenPages pages_;
};

}  // namespace configuration
