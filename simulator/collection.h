// A list of objects or texts that callers reach by number from 1 or by name without regard to case. It looks
// at a list that its maker may still change, so a collection that was handed out early is never out of date.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "base/text.h"
#include "simulator/core.h"

namespace simulator {

struct CollectionItem {
  std::string name;
  automation::Value value;
};
using CollectionItems = std::vector<CollectionItem>;

class Collection : public HostObject<Collection> {
 public:
  /// `what` names the collection in errors.
  Collection(std::shared_ptr<Core> core, std::string what, std::shared_ptr<const CollectionItems> items)
      : HostObject(std::move(core)), what_(std::move(what)), items_(std::move(items)) {}

  static constexpr std::string_view kClassName = "Collection";
  static const automation::MemberOf<Collection> kMembers[2];

 private:
  std::string what_;
  std::shared_ptr<const CollectionItems> items_;
};

automation::Object MakeCollection(const std::shared_ptr<Core>& core, std::string what, CollectionItems items);

/// The item's place from 0 for a number from 1, else automation::Error (bad index) naming the collection.
std::size_t PlaceOfNumber(const std::string& what, const automation::Value& number, std::size_t count);
[[noreturn]] void RefuseName(const std::string& what, const std::string& name);

/// Place from 0 of the item that `wanted` asks for by number or name; `nameOf(place)` gives a name.
template <class NameOf>
std::size_t FindItem(const std::string& what, const automation::Value& wanted, std::size_t count,
                     NameOf nameOf) {
  const auto* name = std::get_if<std::string>(&wanted.Get());
  if (!name) return PlaceOfNumber(what, wanted, count);
  for (std::size_t i = 0; i < count; ++i) {
    if (base::EqualsNoCase(nameOf(i), *name)) return i;
  }
  RefuseName(what, *name);
}

}  // namespace simulator
