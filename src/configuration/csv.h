// A table as spreadsheets read it: UTF-8 with a byte order mark; the separator is a comma, or a semicolon
// where the comma is the decimal sign. Written for records and for the result of copying.
#pragma once

#include <span>
#include <string>

#include "base/numbers.h"

namespace configuration {

class Csv {
 public:
  explicit Csv(const base::Numbers& numbers);

  /// One line. Texts that a spreadsheet would take for a formula are marked as texts (OWASP, "CSV
  /// Injection").
  void Add(std::span<const std::string> cells);
  const std::string& Text() const { return text_; }

 private:
  std::string Cell(const std::string& text) const;

  base::Numbers numbers_;
  char separator_;
  std::string text_;
};

}  // namespace configuration
