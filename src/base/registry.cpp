#include "base/registry.h"

namespace base {

std::string ReadRegistryString(Registry& registry, RegistryRoot root, const std::string& key,
                               const std::string& name) {
  const std::string text = registry.Read(root, key, name).value_or("");
  return text.substr(0, text.find('\0'));
}

std::string WriteRegistryString(Registry& registry, RegistryRoot root, const std::string& key,
                                const std::string& name, const std::string& text) {
  return registry.Write(root, key, name, text) ? "Success" : "No Succes";
}

}  // namespace base
