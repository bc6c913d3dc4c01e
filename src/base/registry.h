// The registry and the user's locale as the tool sees them. Two ports, implemented by the Windows edge, and
// the helpers that keep settings as plain text: reading never fails loudly, writing answers with a text.
#pragma once

#include <optional>
#include <string>

namespace base {

enum class RegistryRoot { kCurrentUser, kLocalMachine };

class Registry {
 public:
  virtual ~Registry() = default;
  /// The value as it is stored when its type is plain text (type 1), else nothing. May hold NUL characters.
  virtual std::optional<std::string> Read(RegistryRoot root, const std::string& key,
                                          const std::string& name) = 0;
  /// Creates or opens the key, sets the plain-text value without a terminating NUL, closes the key. Answers
  /// whether closing succeeded; whether the value could be set does not count.
  virtual bool Write(RegistryRoot root, const std::string& key, const std::string& name,
                     const std::string& text) = 0;
};

/// The text up to its first NUL; empty when it is missing or of another type.
inline std::string ReadRegistryString(Registry& registry, RegistryRoot root, const std::string& key,
                                      const std::string& name) {
  const std::string text = registry.Read(root, key, name).value_or("");
  return text.substr(0, text.find('\0'));
}

/// "Success", or "No Succes" (so spelt: callers compare it).
inline std::string WriteRegistryString(Registry& registry, RegistryRoot root, const std::string& key,
                                       const std::string& name, const std::string& text) {
  return registry.Write(root, key, name, text) ? "Success" : "No Succes";
}

class Locale {
 public:
  virtual ~Locale() = default;
  /// An information item of the user's default locale as text (13 is the measurement system, 14 the decimal
  /// separator); empty when the locale gives nothing.
  virtual std::string GetLocaleString(int item) = 0;
  /// The present date and time in the platform's general date format.
  virtual std::string GeneralDateNow() = 0;
};

inline constexpr int kLocaleMeasure = 13;
inline constexpr int kLocaleDecimal = 14;

}  // namespace base
