#include "workbench/messages/page_text.h"

#include <algorithm>

namespace workbench {
namespace {

// Each line with a margin.
std::string indented(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    if (end != 0) (result += "    ") += text.substr(0, end);
    result += '\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return result;
}

std::string kind_of_message(const Page& page) {
  std::string text(word_for(page.severity));
  return page.is_on ? text : text += ", off without -W " + std::string(page.code);
}

// The headings of the examples, and what stands under them.
std::string examples(const Page& page, std::string_view said) {
  std::string text;
  const auto add = [&text](std::string_view heading, std::string_view example) {
    if (!example.empty()) ((text += '\n') += heading) += "\n\n" + indented(example);
  };
  add("Wrong:", page.wrong);
  add("What zrl says:", said);
  add("Mended:", page.mended);
  return text;
}

}    // namespace

std::string page_text(const Page& page, std::string_view said) {
  std::string text(page.code);
  ((text += ": ") += page.title) += " (" + kind_of_message(page) + ")\n\n";
  return (text += page.meaning) += examples(page, said);
}

std::string page_markdown(const Page& page, std::string_view said) {
  std::string text("### ");
  ((text += page.code) += "\n\n*") += kind_of_message(page) + ":* ";
  ((text += page.title) += ".\n\n") += page.meaning;
  return text += examples(page, said);
}

std::string list_text() {
  std::size_t width = 0;
  for (const Page& page : pages()) width = std::max(width, page.code.size());
  std::string text;
  for (const Page& page : pages()) {
    text += page.code;
    text.append(width + 2 - page.code.size(), ' ');
    (text += page.title) += '\n';
  }
  return text;
}

std::string list_markdown() {
  std::string text = "| Code | Severity | What is wrong |\n|---|---|---|\n";
  for (const Page& page : pages()) {
    ((text += "| [") += page.code) += "](#";
    ((text += page.code) += ") | ") += kind_of_message(page) + " | ";
    (text += page.title) += " |\n";
  }
  return text;
}

}    // namespace workbench
