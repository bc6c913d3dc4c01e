// The fields of the pages as contents to advise on. Built from shell::Changes::Fields() whenever its
// generation is another; the contents themselves are asked for each time. The location, which is no field of
// a page, is one of them where whoever builds this adds it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "fields/field.h"
#include "shell/selected_types.h"

namespace advice {

class FieldContents {
 public:
  /// `fields` and `selections` outlive it.
  FieldContents(const std::vector<const fields::Field*>& fields, const shell::SelectedTypes& selections);

  std::optional<std::string> operator()(std::string_view page, std::string_view control) const;

 private:
  /// The type of an input's sensor or an output's hardware that its page has read last; the settings are read
  /// only when somebody wants them.
  std::optional<std::string> HardwareType(std::string_view page, std::string_view control) const;

  using Name = std::pair<std::string_view, std::string_view>;  // page and control
  struct HashOf {
    std::size_t operator()(const Name& name) const {
      const std::hash<std::string_view> hash;
      return hash(name.first) * 31 + hash(name.second);
    }
  };

  std::unordered_map<Name, const fields::Field*, HashOf> fields_;
  const shell::SelectedTypes& selections_;
};

}  // namespace advice
