// One configuration property of the device: a value as text, in the format and with the decimals that its
// user sets. Every write is a read-modify-write at high precision that notes itself in the journal: what
// nobody touched goes back as it was read, digits that no page shows included. Taken from the device tree;
// used by the pages and by the main window.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/object.h"
#include "base/record.h"
#include "host/journal.h"

namespace host {

/// The decimals stay as the host has them.
inline constexpr int kHostPrecision = -1;

/// A value on its way to be written: the present fields, of which some are replaced.
class Edit {
 public:
  /// `shown`: decimals with which a page shows the fields; `readShown` reads the value so.
  Edit(std::string_view present, std::string_view name, int shown, const base::Numbers& numbers,
       std::function<std::string()> readShown)
      : record_(present, name), shown_(shown), numbers_(numbers), readShown_(std::move(readShown)) {}

  std::size_t Count() const { return record_.Count(); }
  /// Puts `text` into field `place`, counted from 0. A text that the field shows already leaves it as it is:
  /// words are compared without case, numbers as a page shows them. `control` is where it was typed, for
  /// messages. Throws base::Error when the record is shorter or the text holds a blank.
  void Set(std::size_t place, std::string_view text, std::string_view control = {});

  std::string Text() const { return record_.Join(); }
  const std::vector<WrittenField>& Fields() const { return fields_; }

 private:
  bool Shows(std::size_t place, std::string_view text) const;

  base::Record record_;
  int shown_;
  const base::Numbers& numbers_;
  std::function<std::string()> readShown_;
  std::vector<WrittenField> fields_;
};

class Property {
 public:
  Property(automation::Object object, std::string owner, int number, Journal& journal)
      : object_(std::move(object)), owner_(std::move(owner)), number_(number), journal_(&journal) {}

  // All of these throw automation::Error when the host refuses.

  /// Sets the format in which the value is exchanged: a type name, with its unit suffix if it has one.
  void Bind(std::string_view format);
  /// The value, with as many decimals; or as the host formats it.
  std::string Read(int precision = kHostPrecision) const;
  /// Reads the value at high precision (at the host's own where `shown` is kHostPrecision), lets `change`
  /// replace fields of it and writes the result. `name` is what errors call the value.
  void Change(std::string_view name, int shown, const std::function<void(Edit&)>& change);
  /// Writes a value of which every field is known: each text replaces the field in its place; a value of
  /// another number of fields is replaced as a whole. `controls` are where the texts were typed, in the same
  /// order.
  void Write(std::string_view name, int shown, const std::vector<std::string>& texts,
             const std::vector<std::string>& controls = {});
  /// Writes a text that is no record (a location, a name). Noted, with the text before, only while the
  /// journal is open. `control` is where it was typed.
  void WriteText(std::string_view text, std::string_view control = {});

  /// Its own name, which is also that of its format.
  std::string Name() const;
  const automation::Object& Object() const { return object_; }

 private:
  std::string ReadPresent(int shown) const;
  std::string ReadShown(int shown) const;
  Edit Begin(const std::string& present, std::string_view name, int shown) const;
  void Put(std::string_view present, std::string text, int shown, std::vector<WrittenField> fields);

  automation::Object object_;
  std::string owner_;
  int number_;
  Journal* journal_;
  std::string format_;
};

}  // namespace host
