#include "simulator/registration.h"

#include "base/text.h"
#include "simulator/members.h"

namespace simulator {

using automation::Arguments;
using automation::Object;
using automation::Value;

namespace {

constexpr char kId[] = "ServerProgId";
constexpr char kOwnRecord[] = "PlugIn";  // under which the description's own values are kept
constexpr const char* kRecords[] = {"DeviceCommand", "BlockCommand", "DeviceType"};
constexpr std::size_t kMostMembers = 200;

std::shared_ptr<PropertyBag> BagOf(const Object& object) {
  return std::dynamic_pointer_cast<PropertyBag>(object.GetTarget());
}

/// The description that is the only argument of a call.
RegisteredPlugIn Read(const Arguments& arguments) {
  const std::shared_ptr<PropertyBag> bag = BagOf(arguments[0].AsObject());
  if (!bag) Refuse("This is no description made by NewDescription.");
  RegisteredPlugIn plugIn;
  plugIn.id = bag->Text(kId);
  if (plugIn.id.empty()) Refuse(std::string("The description has no ") + kId + ".");
  plugIn.records.emplace_back(kOwnRecord, bag->Values());
  for (const char* name : kRecords) {
    if (const auto record = bag->Record(name)) plugIn.records.emplace_back(name, record->Values());
  }
  return plugIn;
}

std::size_t Erase(StoreContent& content, const std::string& id) {
  return std::erase_if(content.plugIns,
                       [&id](const RegisteredPlugIn& plugIn) { return base::EqualsNoCase(plugIn.id, id); });
}

}  // namespace

int PropertyBag::Find(std::string_view member) const {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (base::EqualsNoCase(entries_[i].first, member)) return static_cast<int>(i);
  }
  if (entries_.size() >= kMostMembers) return -1;
  entries_.emplace_back(std::string(member), Value());
  return static_cast<int>(entries_.size()) - 1;
}

Value PropertyBag::InvokeAt(int place, automation::Access access, std::span<const Value> arguments) {
  auto& [name, value] = entries_.at(static_cast<std::size_t>(place));
  if (access != automation::Access::kPut) return value;
  if (std::holds_alternative<Object>(value.Get())) Refuse("\"" + name + "\" cannot be replaced.");
  value = Arguments(arguments)[0].AsText();
  return {};
}

void PropertyBag::AddRecord(const std::string& name) {
  entries_.emplace_back(name, Object(std::make_shared<PropertyBag>()));
}

std::string PropertyBag::Text(std::string_view member) const {
  for (const auto& [name, value] : Values()) {
    if (base::EqualsNoCase(name, member)) return value;
  }
  return {};
}

RegistrationRecord PropertyBag::Values() const {
  RegistrationRecord values;
  for (const auto& [name, value] : entries_) {
    if (const auto* text = std::get_if<std::string>(&value.Get())) values.emplace_back(name, *text);
  }
  return values;
}

std::shared_ptr<PropertyBag> PropertyBag::Record(std::string_view name) const {
  for (const auto& [entry, value] : entries_) {
    const auto* object = std::get_if<Object>(&value.Get());
    if (object && base::EqualsNoCase(entry, name)) return BagOf(*object);
  }
  return nullptr;
}

constexpr automation::MemberOf<Registration> Registration::kMembers[] = {
    {"NewDescription", nullptr, nullptr,
     [](Registration&, const Arguments&) -> Value {
       auto description = std::make_shared<PropertyBag>();
       for (const char* name : kRecords) description->AddRecord(name);
       return Object(std::move(description));
     }},
    {"Register", nullptr, nullptr, Run<&Registration::Register>},
    {"Deregister", nullptr, nullptr, Run<&Registration::Deregister>},
};

void Registration::Register(const Arguments& arguments) {
  const RegisteredPlugIn plugIn = Read(arguments);
  Refusing([&] {
    GetCore().store.ChangeContent([&plugIn](StoreContent& content) {
      Erase(content, plugIn.id);
      content.plugIns.push_back(plugIn);
    });
  });
}

void Registration::Deregister(const Arguments& arguments) {
  const RegisteredPlugIn plugIn = Read(arguments);
  Refusing([&] {
    GetCore().store.ChangeContent([&plugIn](StoreContent& content) {
      if (Erase(content, plugIn.id) == 0) throw base::Error("\"" + plugIn.id + "\" is not registered.");
    });
  });
}

}  // namespace simulator
