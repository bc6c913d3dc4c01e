// The reader of configuration files. Whatever stands in one, it is refused in words, or it reads the same
// after it was written again.
#include "base/error.h"
#include "configuration/document.h"
#include "fuzz/support/input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  configuration::Document document;
  try {
    document = configuration::Read(text, "");
  } catch (const base::WordedError& error) {
    const std::string words = error.what();
    fuzz::Check(!words.empty(), "a refusal has words");
    fuzz::Check(words.find("%s") == words.npos || text.find("%s") != text.npos,
                "a refusal says what it is about");
    return 0;
  }
  const std::string written = Write(document);
  const configuration::Document again = configuration::Read(written, document.head.programId);
  fuzz::Check(again == document, "what is written reads the same");
  fuzz::Check(Write(again) == written, "it is written the same again");
  return 0;
}
