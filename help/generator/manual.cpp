#include "help/generator/manual.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>

#include "base/error.h"
#include "base/text.h"

namespace help {
namespace {

constexpr const char* kTitle = "KV-TARN Configuration";

constexpr const char* kHead = R"(<!DOCTYPE html>
<html lang="{2}">
<head>
<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">
<title>{0}</title>
<link rel="stylesheet" href="manual.css">
</head>
<body>
<p class="place"><a href="{1}">KV-TARN Configuration</a></p>
<h1>{0}</h1>
)";

constexpr const char* kStyle = R"(body { font: 90% Tahoma, sans-serif; margin: 1em 1.5em; max-width: 60em; }
h1 { font-size: 150%; color: #1f6fb2; }
h2 { font-size: 115%; }
table { border-collapse: collapse; }
th, td { border: 1px solid #b8c4ce; padding: 0.3em 0.6em; text-align: left; vertical-align: top; }
th { background: #dfeaf3; }
td p { margin: 0; }
img { max-width: 100%; border: 1px solid #b8c4ce; }
dt { font-weight: bold; margin-top: 0.8em; }
small, .place { color: #5b6570; }
)";

// The window that the program opens: contents on the left, with the buttons that every help window has.
constexpr const char* kProject = R"([OPTIONS]
Compatibility=1.1 or later
Compiled file=help.chm
Contents file=contents.hhc
Index file=index.hhk
Default topic={0}
Default Window=Main
Full-text search=Yes
Language={2}
Title={1} - {3}

[WINDOWS]
Main="{1} - {3}","contents.hhc","index.hhk","{0}","{0}",,,,,0x63520,240,0x387e,[60,40,1060,760],,,,,,,0

)";

std::string Entry(const std::string& name, const std::string& file) {
  return fmt::format(
      "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"{}\"><param name=\"Local\" "
      "value=\"{}\">"
      "</object></li>\n",
      Escape(name), file);
}

std::string SiteMap(const std::string& entries) {
  return "<html>\n<body>\n<ul>\n" + entries + "</ul>\n</body>\n</html>\n";
}

std::string ContentsList(const std::vector<Topic>& topics) {
  std::string list = "<ul>\n";
  for (const Topic& topic : topics) {
    list += fmt::format("<li><a href=\"{}\">{}</a></li>\n", topic.file, Escape(topic.title));
  }
  return list + "</ul>";
}

std::string TakePictures(std::string text, std::set<std::string>& pictures) {
  constexpr std::string_view kMark = "{picture ";
  for (auto at = text.find(kMark); at != text.npos; at = text.find(kMark)) {
    const auto end = text.find('}', at);
    const std::string name = text.substr(at + kMark.size(), end - at - kMark.size());
    text.replace(at, end - at + 1, fmt::format("<p><img src=\"{0}.png\" alt=\"{0}\"></p>", name));
    pictures.insert(name + ".png");
  }
  return text;
}

std::string Html(const Language& language, const Topic& topic, const std::vector<Topic>& topics,
                 const std::vector<Field>& fields) {
  std::string text = topic.text;
  if (!topic.notes.empty()) text = base::ReplaceAll(text, "{fields}", FieldTable(topic, fields, language));
  text = base::ReplaceAll(text, "{contents}", ContentsList(topics));
  return fmt::format(kHead, Escape(topic.title), topics.front().file, language.code) + text +
         "</body>\n</html>\n";
}

void CheckNumbers(const std::vector<Topic>& topics, const std::map<int, std::string>& asked) {
  std::map<int, std::string> explained;
  for (const Topic& topic : topics) {
    if (topic.number == 0 || explained.emplace(topic.number, topic.page).second) continue;
    throw base::Error(fmt::format("{}: another topic has the number {} too", topic.file, topic.number));
  }
  for (const auto& [number, page] : asked) {
    const auto found = explained.find(number);
    if (found == explained.end())
      throw base::Error(fmt::format("there is no topic with the number {}", number));
    if (found->second != page)
      throw base::Error(fmt::format("topic {} does not explain the page {}", number, page));
  }
}

void CheckLinks(const std::string& file, const std::string& html, const std::vector<Topic>& topics) {
  constexpr std::string_view kLink = "<a href=\"";
  for (auto at = html.find(kLink); at != html.npos; at = html.find(kLink, at)) {
    at += kLink.size();
    const std::string target = html.substr(at, html.find_first_of("\"#", at) - at);
    if (std::ranges::find(topics, target, &Topic::file) == topics.end()) {
      throw base::Error(fmt::format("{} refers to {}, which is not there", file, target));
    }
  }
}

}  // namespace

Manual MakeManual(const Language& language, const std::vector<Topic>& topics,
                  const std::vector<Field>& fields, const std::map<int, std::string>& asked) {
  CheckNumbers(topics, asked);
  Manual manual;
  manual.files.emplace_back("manual.css", kStyle);
  std::string contents;
  std::string keywords;
  std::string names = "[FILES]\nmanual.css\n";
  std::string aliases = "\n[ALIAS]\n";
  std::string map = "\n[MAP]\n";
  for (const Topic& topic : topics) {
    const std::string html = TakePictures(Html(language, topic, topics, fields), manual.pictures);
    CheckLinks(topic.file, html, topics);
    manual.files.emplace_back(topic.file, html);
    contents += Entry(topic.title, topic.file);
    for (const std::string& keyword : topic.keywords) keywords += Entry(keyword, topic.file);
    names += topic.file + "\n";
    if (topic.number == 0) continue;
    aliases += fmt::format("TOPIC_{}={}\n", topic.number, topic.file);
    map += fmt::format("#define TOPIC_{0} {0}\n", topic.number);
  }
  for (const std::string& picture : manual.pictures) names += picture + "\n";
  manual.files.emplace_back("contents.hhc", SiteMap(contents));
  manual.files.emplace_back("index.hhk", SiteMap(keywords));
  manual.files.emplace_back(
      "help.hhp", fmt::format(kProject, topics.front().file, kTitle, language.project, language.help) +
                      names + aliases + map);
  return manual;
}

}  // namespace help
