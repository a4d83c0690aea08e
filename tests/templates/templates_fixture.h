#pragma once
// templates_fixture.h - programs with templates, and what they are rewritten to.

#include <algorithm>
#include <gtest/gtest.h>
#include <initializer_list>
#include <regex>
#include <string>
#include <string_view>

#include "../parser/rewrite_fixture.h"

namespace zarel {

enum class Templates { kPlain, kLinked };

class TemplatesTest : public RewriteTest {
 protected:
  // Rewrites the texts, each a file of its own, as one program.
  static RewrittenProgram rewritten(std::initializer_list<std::string_view> texts,
                                    Templates templates = Templates::kPlain) {
    RewriteOptions options;
    options.has_linked_templates = templates == Templates::kLinked;
    return RewriteTest::rewritten(texts, options);
  }
};

// The lines of a text, with blanks between them.
inline std::string on_one_line(std::string text) {
  if (text.ends_with('\n')) text.pop_back();
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

// What stands in a legend's lines, without its frame; the whole when it does not have that.
inline std::string legend_uses(const std::string& legend) {
  static const std::regex frame(
      "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n([^]*)% END OF LEGENDA\n");
  std::smatch lines;
  if (!std::regex_match(legend, lines, frame)) return legend;
  std::string uses = std::regex_replace(lines.str(1), std::regex("% (.*) at line \n"), "$1; ");
  return uses.substr(0, uses.find_last_of(';'));
}

// A program, and what it is rewritten to; no legend where that shows nothing new.
struct Rewriting {
  std::string_view name, program, clauses, legend = "";
  friend void PrintTo(const Rewriting& test, std::ostream* out) { *out << test.name; }
};

// A program, and how its run ends.
struct Ending {
  std::string_view name, program, messages, output = "";
  friend void PrintTo(const Ending& test, std::ostream* out) { *out << test.name; }
};

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

template <class Case>
class TemplatesTable : public TemplatesTest, public testing::WithParamInterface<Case> {
 protected:
  static void expect_rewriting(const Rewriting& expected, Templates templates) {
    const RewrittenProgram result = rewritten({expected.program}, templates);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(on_one_line(result.clauses), expected.clauses);
    if (expected.legend.empty()) return;
    EXPECT_EQ(legend_uses(result.legend), expected.legend);
  }
};

}    // namespace zarel
