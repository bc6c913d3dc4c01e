#include "configuration/places.h"

#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "base/error.h"

namespace configuration {
namespace {

using Json = nlohmann::json;

/// Letters of a text, which tell the line of the one that was taken last.
class Letter {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  Letter(const char* place, std::size_t& line) : place_(place), line_(&line) {}

  /// A zero would end the text for the parser; nothing may stand behind it unseen.
  char operator*() const { return *place_ == '\0' ? '\x01' : *place_; }
  Letter& operator++() {
    if (lineEnded_) ++*line_;
    lineEnded_ = *place_++ == '\n';
    return *this;
  }
  bool operator==(const Letter& other) const { return place_ == other.place_; }

 private:
  const char* place_;
  std::size_t* line_;
  bool lineEnded_ = false;
};

/// Hears of each part of the text in turn.
class Finder : public Json::json_sax_t {
 public:
  explicit Finder(const std::size_t& line) : line_(line) {}

  bool null() override { return Item(); }
  bool boolean(bool) override { return Item(); }
  bool number_integer(number_integer_t) override { return Item(); }
  bool number_unsigned(number_unsigned_t) override { return Item(); }
  bool number_float(number_float_t, const string_t&) override { return Item(); }
  bool string(string_t&) override { return Item(); }
  bool binary(binary_t&) override { return Item(); }
  bool start_object(std::size_t) override { return Item() && Enter(); }
  bool start_array(std::size_t) override { return Item() && Enter(); }
  bool end_object() override { return --depth_ >= 0; }
  bool end_array() override { return --depth_ >= 0; }

  bool key(string_t& name) override {
    if (depth_ == kHead) {
      inFields_ = name == "fields";
      if (!found.head.emplace(name, line_).second) RefuseTwice(name);
    } else if (depth_ == kField && inFields_ && !names_.insert(name).second) {
      RefuseTwice(name);
    }
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const Json::exception&) override {
    throw base::WordedError("The file is no complete configuration: it is cut off or damaged in line %s1%.",
                            {std::to_string(line_)});
  }

  Places found;

 private:
  static constexpr int kHead = 1, kField = 3;  // how deep their names stand

  bool Item() {
    if (inFields_ && depth_ == kField - 1) {
      found.fields.push_back(line_);
      names_.clear();
    }
    return true;
  }
  bool Enter() {
    ++depth_;
    return true;
  }
  [[noreturn]] void RefuseTwice(const std::string& name) const {
    throw base::WordedError("The field %s1% stands in the file twice, the second time in line %s2%.",
                            {name, std::to_string(line_)});
  }

  const std::size_t& line_;
  int depth_ = 0;
  bool inFields_ = false;
  std::set<std::string> names_;  // of the field that is being read
};

}  // namespace

Places FindPlaces(std::string_view text) {
  std::size_t line = 1;
  Finder finder(line);
  const Letter first(text.data(), line), end(text.data() + text.size(), line);
  Json::sax_parse(first, end, &finder);
  return finder.found;
}

}  // namespace configuration
