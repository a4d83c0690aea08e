// syntax_test.cc - every refused text is told of: the examples of the pages, random soup, mutated
// examples, and a file of nothing but errors.

#include <algorithm>
#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "support/fewer.h"
#include "support/run_program.h"
#include "workbench/messages/findings.h"
#include "workbench/pages/pages.h"
#include "zarel/program.h"

namespace workbench {
namespace {

using zarel::repeated;
using zarel::text_of;

struct Told {
  std::vector<Message> messages;
  int errors = 0;    // that the library counted
};

Told told_of(std::string_view text) {
  Told told;
  zarel::Program program({.links_templates = true, .skips_faulty_statements = true});
  SourceTexts texts(program.files());
  SyntaxMessages syntax(texts);
  program.run().findings.sink = [&](const zarel::Diagnostic& finding) {
    if (!SyntaxMessages::is_about(finding.code)) {
      told.messages.push_back(program_message(finding, texts));
    } else if (auto message = syntax.message(finding)) {
      told.messages.push_back(*message);
    }
  };
  program.read_text(text, "text");
  told.errors = program.run().findings.errors;
  return told;
}

std::string codes_of(std::string_view text) {
  std::set<std::string> codes;
  for (const Message& message : told_of(text).messages) codes.emplace(message.code);
  std::string line;
  for (const std::string& code : codes) (line += line.empty() ? "" : " ") += code;
  return line;
}

TEST(Syntax, pages_have_examples_that_give_their_code_and_no_other) {
  for (const auto pages : {syntax_pages(), foreign_pages()}) {
    for (const Page& page : pages) {
      if (page.kind == ExampleKind::kNone) continue;
      EXPECT_EQ(codes_of(page.wrong), page.code);
      EXPECT_EQ(codes_of(page.mended), "") << page.code;
    }
  }
}

std::size_t offset_of(std::string_view text, const zarel::Position& position) {
  std::size_t offset = 0;
  for (std::uint32_t line = 1; line < position.line; ++line) offset = text.find('\n', offset) + 1;
  return offset + position.column - 1;
}

std::string mended(std::string text) {
  std::vector<Message> messages = told_of(text).messages;
  std::reverse(messages.begin(), messages.end());
  for (const Message& message : messages) {
    for (const Fix& fix : message.fixes) {
      const std::size_t first = offset_of(text, fix.place.first);
      const std::size_t end = offset_of(text, fix.place.last) + 1;
      if (fix.kind == Fix::Kind::kReplace) text.erase(first, end - first);
      text.insert(fix.kind == Fix::Kind::kInsertBehind ? end : first, fix.text);
    }
  }
  return text;
}

TEST(Syntax, fixes_mend_the_examples) {
  for (const auto pages : {syntax_pages(), foreign_pages()}) {
    for (const Page& page : pages) {
      const std::string text = mended(std::string(page.wrong));
      EXPECT_TRUE(text == page.wrong || codes_of(text).empty()) << page.code << "\n" << text;
    }
  }
}

// Each message has a page, and points into the text; what was refused has a message.
void expect_told(const std::string& text) {
  const Told told = told_of(text);
  EXPECT_TRUE(told.errors == 0 || !told.messages.empty()) << text;
  const auto lines = static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  for (const Message& message : told.messages) {
    ASSERT_TRUE(message.place.is_known()) << text;
    EXPECT_LE(message.place.first.line, message.place.last.line) << text;
    EXPECT_LE(message.place.last.line, lines) << text;
    EXPECT_FALSE(message.text.empty()) << text;
    for (const Fix& fix : message.fixes) EXPECT_TRUE(fix.place.is_known()) << text;
  }
}

constexpr std::array kPieces = std::to_array<std::string_view>(
    {"p",           "q(X)",     "X",      "3",     "\"s t\"", "#count", "#maxint", "#show",
     "#template",   "{",        "}",      "(",     ")",       "[",      "]",       ",",
     ".",           ".",        ":-",     ":~",    "v",       ";",      "|",       "not",
     "=",           "==",       "<",      "->",    ":",       "::",     "@",       "-",
     "+",           "*",        "?",      "!",     "/",       "'",      "\"",      "\n",
     "\n",          "%*",       "*%",     "_x",    "\u2019",  "\xff",   "//",      "ASITIS %*",
     "12345678901", "#include", "\u00FC", "GLOBAL"});

TEST(Syntax, refused_soup_is_told_of) {
  std::mt19937 random(7);    // NOLINT(cert-msc51-cpp): the same soup every time
  for (int round = 0; round < 400; ++round) {
    std::string text;
    for (auto left = random() % 40; left != 0; --left) {
      (text += kPieces[random() % kPieces.size()]) += random() % 3 == 0 ? "" : " ";
    }
    expect_told(text);
  }
}

std::vector<std::string> examples() {
  std::vector<std::string> texts;
  for (const char* const folder : {PROJECT_FOLDER "/examples", PROJECT_FOLDER "/library"}) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (!entry.is_regular_file()) continue;
      std::string text = text_of(entry.path());
      if (told_of(text).messages.empty()) texts.push_back(std::move(text));
    }
  }
  return texts;
}

// Takes a character away, or puts a piece in.
void change(std::string& text, std::mt19937& random) {
  const std::size_t at = random() % (text.size() + 1);
  if (random() % 2 == 0) {
    text.erase(at, 1);
  } else {
    text.insert(at, kPieces[random() % kPieces.size()]);
  }
}

TEST(Syntax, mutations_of_the_examples_are_told_of_once) {
  const std::vector<std::string> texts = examples();
  ASSERT_FALSE(texts.empty());
  std::mt19937 random(8);    // NOLINT(cert-msc51-cpp)
  std::size_t once = 0;
  std::size_t more = 0;
  for (int round = 0; round < 2'000; ++round) {
    std::string text = texts[random() % texts.size()];
    change(text, random);
    const std::size_t messages = told_of(text).messages.size();
    (messages > 1 ? more : once) += messages == 0 ? 0 : 1;
    for (int further = 0; further < 3; ++further) change(text, random);
    expect_told(text);
  }
  // Of a hundred mistakes, one or two have another message that only follows.
  EXPECT_GT(once, 50 * more) << more;
}

// The time limit of a test is what is tested.
TEST(Syntax, many_errors_are_read_in_linear_time) {
  constexpr std::size_t kMany = zarel::usual_or_fewer(100'000, 10'000);
  EXPECT_EQ(told_of(repeated("p(X) :- q(X) r(X).\n", kMany)).messages.size(), kMany);
  EXPECT_EQ(told_of(repeated("p(a)\n", kMany)).messages.size(), kMany);
  EXPECT_FALSE(told_of(repeated("p(X-1). ", kMany)).messages.empty());
  EXPECT_FALSE(told_of(repeated("p(a", kMany)).messages.empty());
  EXPECT_FALSE(told_of(repeated("' ", kMany)).messages.empty());
  EXPECT_FALSE(told_of(repeated("\u2019\n", kMany)).messages.empty());
  EXPECT_FALSE(told_of(repeated("/* a\n", kMany)).messages.empty());
  EXPECT_FALSE(told_of("%*\n" + repeated("a b.\n", kMany)).messages.empty());
}

}    // namespace
}    // namespace workbench
