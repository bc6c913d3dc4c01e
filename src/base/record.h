// A structured value is one text whose fields are separated by single blanks. Record splits such a text, lets
// single fields be read and replaced, and joins it again: fields that nobody replaced come back byte for
// byte, empty fields between two blanks included. Every read-modify-write of a device property goes through
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace base {

class Record {
 public:
  /// `name` is what errors call the value.
  explicit Record(std::string_view text, std::string_view name = "The value");

  /// Number of fields; an empty text is one empty field.
  std::size_t Count() const { return fields_.size(); }

  /// Field `index`, counted from 0. Throws base::Error when the record is shorter. The view lives until the
  /// next Set.
  std::string_view Field(std::size_t index) const;

  /// Replaces field `index`, counted from 0. Throws base::Error when the record is shorter, or when `text`
  /// holds a blank (it would shift every later field).
  void Set(std::size_t index, std::string_view text);

  std::string Join() const;

 private:
  struct Span {
    std::uint32_t begin;
    std::uint32_t length;
  };

  const Span& At(std::size_t index) const;

  std::string name_;
  std::string storage_;  // the original text; replaced fields are appended behind it
  std::vector<Span> fields_;
};

}  // namespace base
