#include "base/record.h"

#include "base/error.h"

namespace base {
namespace {

// The longest record of the controller has 64 fields.
constexpr std::size_t kUsualFields = 64;

}  // namespace

Record::Record(std::string_view text, std::string_view name) : name_(name), storage_(text) {
  fields_.reserve(kUsualFields);
  std::uint32_t begin = 0;
  const auto size = static_cast<std::uint32_t>(text.size());
  for (std::uint32_t i = 0; i < size; ++i) {
    if (text[i] != ' ') continue;
    fields_.push_back({begin, i - begin});
    begin = i + 1;
  }
  fields_.push_back({begin, size - begin});
}

const Record::Span& Record::At(std::size_t index) const {
  if (index < fields_.size()) return fields_[index];
  throw Error(name_ + " has only " + std::to_string(fields_.size()) +
              (fields_.size() == 1 ? " field; field " : " fields; field ") + std::to_string(index + 1) +
              " is missing.");
}

std::string_view Record::Field(std::size_t index) const {
  const Span& span = At(index);
  return std::string_view(storage_).substr(span.begin, span.length);
}

void Record::Set(std::size_t index, std::string_view text) {
  At(index);
  if (text.find(' ') != std::string_view::npos)
    throw Error("\"" + std::string(text) + "\" holds a blank and cannot be a single field of a value.");
  fields_[index] = {static_cast<std::uint32_t>(storage_.size()), static_cast<std::uint32_t>(text.size())};
  storage_ += text;
}

std::string Record::Join() const {
  std::string result;
  result.reserve(storage_.size());
  for (const Span& span : fields_) {
    if (&span != fields_.data()) result += ' ';
    result.append(storage_, span.begin, span.length);
  }
  return result;
}

}  // namespace base
