// Contents for fields as people and installers leave them.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "base/text.h"
#include "fields/field.h"

namespace tests {

/// The same in every run, so that a run that fails can be had again; another one: --gtest_random_seed=N.
inline unsigned Seed() { return static_cast<unsigned>(GTEST_FLAG_GET(random_seed)); }

class RandomContents {
 public:
  std::size_t Any(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }
  std::string Of(const fields::Field& field) {
    if (auto* list = dynamic_cast<ui::ListBox*>(field.control))
      return list->Translated() ? std::to_string(Any(3)) : list->Items()[Any(list->Items().size())];
    const auto number = base::Numbers().Parse(field.content());
    if (field.kind == fields::Kind::kText && number) {
      // As many decimals as are shown: further ones would not be seen as a difference.
      const auto point = field.content().find('.');
      const auto decimals = point == std::string::npos ? 0 : field.content().size() - point - 1;
      return base::Numbers().Text(*number + (static_cast<double>(Any(40)) - 20) / (decimals == 0 ? 1 : 10),
                                  static_cast<int>(decimals));
    }
    if (field.kind != fields::Kind::kRecord) return std::to_string(Any(3));
    std::vector<std::string> pieces = base::Split(field.content(), " ");
    std::string& piece = pieces[Any(pieces.size())];
    if (const auto value = base::Numbers().Parse(piece)) piece = base::Numbers().Text(*value + 1);
    return base::Join(pieces, " ");
  }

 private:
  std::mt19937 random_{Seed()};
};

}  // namespace tests
