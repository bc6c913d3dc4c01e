#include "fields/page_prompts.h"

#include "base/text.h"

namespace fields {
namespace {

class Listening {
 public:
  explicit Listening(std::vector<std::string>*& heard) : heard_(heard), before_(heard) { heard = &said_; }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;
  ~Listening() { heard_ = before_; }

  std::string Heard() const { return base::Join(said_, "\r\n"); }

 private:
  std::vector<std::string>*& heard_;
  std::vector<std::string>* before_;
  std::vector<std::string> said_;
};

}  // namespace

ui::Answer PagePrompts::Ask(const ui::Prompt& prompt) {
  if (!heard_) return person_.Ask(prompt);
  heard_->push_back(prompt.text);
  if (prompt.buttons == ui::Buttons::kOk) return ui::Answer::kOk;
  return prompt.buttons == ui::Buttons::kOkCancel ? ui::Answer::kCancel : ui::Answer::kNo;
}

std::string PagePrompts::Take(const Field& field, std::string_view content) {
  const Listening listening(heard_);
  std::string reason = field.take(content);
  const std::string heard = listening.Heard();
  return reason.empty() || heard.empty() ? reason : heard;
}

}  // namespace fields
