#include "simulator/collection.h"

namespace simulator {

using automation::Arguments;
using automation::Value;

constexpr automation::MemberOf<Collection> Collection::kMembers[] = {
    {"Count",
     [](Collection& self, const Arguments&) -> Value {
       return static_cast<std::int32_t>(self.items_->size());
     }},
    {"Item", nullptr, nullptr,
     [](Collection& self, const Arguments& arguments) -> Value {
       const CollectionItems& items = *self.items_;
       const auto nameOf = [&items](std::size_t place) -> std::string_view { return items[place].name; };
       return items[FindItem(self.what_, arguments[0], items.size(), nameOf)].value;
     }},
};

automation::Object MakeCollection(const std::shared_ptr<Core>& core, std::string what,
                                  CollectionItems items) {
  auto list = std::make_shared<const CollectionItems>(std::move(items));
  return automation::Object(std::make_shared<Collection>(core, std::move(what), std::move(list)));
}

std::size_t PlaceOfNumber(const std::string& what, const Value& number, std::size_t count) {
  const std::int32_t wanted = number.AsWhole();
  if (wanted >= 1 && wanted <= static_cast<std::int64_t>(count)) return static_cast<std::size_t>(wanted) - 1;
  throw automation::Error(
      automation::kBadIndex,
      what + " has no item " + std::to_string(wanted) + "; it has " + std::to_string(count) + ".",
      kErrorSource);
}

void RefuseName(const std::string& what, const std::string& name) {
  throw automation::Error(automation::kBadIndex, what + " has no item \"" + name + "\".", kErrorSource);
}

}  // namespace simulator
