// The window's part in putting back: what an earlier check-out has left, telling what could not be put back,
// and the ends of the window.
#include "base/text.h"
#include "checkout/fCheckOut.h"
#include "logger/message_logger.h"
#include "shell/words.h"

namespace checkout {

void fCheckOut::Loaded() {
  try {
    outputs_.Load();
    if (!outputs_.Standing().empty()) offer_.Start();
  } catch (const std::exception& error) {
    main_.AddMessage(shell::InWords(strings_, error), "Loaded", kLocation, logger::kError);
  }
}

std::string fCheckOut::NamesOf(const std::vector<Kept>& kept) const {
  std::vector<std::string> names;
  for (const auto& [output, function, text] : kept)
    names.push_back(Text("Output %s1%", {std::to_string(output)}) + ", " + function);
  return base::Join(names, "\r\n");
}

void fCheckOut::OfferToPutBack() {
  offer_.Stop();
  outputs_.Check();
  if (outputs_.Standing().empty()) return;
  const std::string question = Text(
      "The last check-out of %s1% ended without putting these outputs back. They may still be overridden:",
      {main_.Opened.deviceName});
  if (platform_.prompts.Ask(
          {question + "\r\n\r\n" + NamesOf(outputs_.Standing()) + "\r\n\r\n" + Text("Put them back now?"),
           settings_.title, ui::Buttons::kYesNo, ui::Icon::kExclamation}) != ui::Answer::kYes) {
    return;
  }
  const bool edits = HasEdits();
  if (!PutBack()) return;
  main_.AddMessage(Text("The outputs were put back."), "CheckOut", kLocation, logger::kInformation);
  if (!edits) main_.ReadAgain(main_.Device().IsImperial);
}

void fCheckOut::TellStanding() {
  Tell(
      Text("THESE OUTPUTS OF %s1% COULD NOT BE PUT BACK and may still be overridden:",
           {main_.Opened.deviceName}) +
          "\r\n\r\n" + NamesOf(outputs_.Standing()) + "\r\n\r\n" +
          Text("The next start of this tool on this unit offers to put them back. Take the overrides away by "
               "another way if it cannot be started again.") +
          "\r\n\r\n" + outputs_.Fault(),
      ui::Icon::kError);
}

bool fCheckOut::PutBack() {
  const ui::WaitPointer pointer(platform_.loop);
  if (outputs_.PutBack()) return true;
  started_ = false;
  TellStanding();
  return false;
}

bool fCheckOut::MayClose() {
  if (outputs_.Busy()) return false;
  PutBack();
  return true;
}

void fCheckOut::Hide() {
  offer_.Stop();
  if (Visible()) outputs_.PutBack();  // nobody is told any more; the next start offers what is left
  Window::Hide();
}

}  // namespace checkout
