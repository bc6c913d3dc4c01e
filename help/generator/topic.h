// A topic of the help as it is written in help/topics, in a folder for each language. The file starts with
// lines "key: value" (title, number, page, keywords) up to an empty line; its text is HTML. A translation
// takes number and page from the English topic, and says in "english" the checksum of the one that it was
// made of. In it a line {contents} stands for the list of all topics, {picture NAME} for a picture, and the
// lines between {fields} and {end} explain the controls of the page: a line [name name ...] of controls or
// control arrays, then their explanation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace help {

struct Note {
  std::vector<std::string> controls;
  std::string text;
};

struct Topic {
  std::string file;  // "pid.html"
  std::string title;
  int number = 0;    // by which the program opens it; 0: none
  std::string page;  // the page's class whose fields it explains; may be empty
  std::vector<std::string> keywords;
  std::string text;  // with {fields} for the place of the notes
  std::vector<Note> notes;
};

/// `name` is the file's, "20-pid.html"; the number in front is its place among the topics. Throws base::Error
/// saying what is wrong in which line.
Topic ParseTopic(std::string_view name, std::string_view content);

/// `topics` in another language: each takes the place of the English one of its file, with the number and the
/// page of that; the others stay English. Throws base::Error for one that is in another file, and for one
/// that explains fields where the English one does not, or the other way round.
std::vector<Topic> Translated(std::vector<Topic> english, const std::vector<Topic>& topics);

/// Whether "txtAt(2)" is meant by "txtAt(2)" or "txtAt".
bool Names(std::string_view name, std::string_view control);

}  // namespace help
