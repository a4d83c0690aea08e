#pragma once
// templates_fixture.h - programs with templates, and what they are rewritten to.

#include <regex>

#include "rewrite_fixture.h"

// The template that most programs invoke, in whole or up to its rules, and its usual invocation.
#define T_OF_F "#template t{f(1)}(1) { "
#define COPY T_OF_F "t(X) :- f(X). } "
#define USE " } a(X) :- t{p(*)}(X)."

namespace zarel {

inline const RewriteOptions kPlain;
inline const RewriteOptions kLinked{.run = {.links_templates = true}};

// The uses, parted by "; ", as the legend tells them.
inline std::string legend_of(std::string_view uses) {
  const std::string lines =
      std::regex_replace(std::string(uses), std::regex("; "), " at line \n% ");
  return joined(
      {"% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% ", lines, " at line \n% END OF LEGENDA\n"});
}

// A program, and what it is rewritten to; no legend where that shows nothing new.
struct Rewriting {
  std::string_view name, program, clauses, legend = "";
  friend void PrintTo(const Rewriting& test, std::ostream* out) { *out << test.name; }
};

class TemplatesTable : public RewriteTest, public testing::WithParamInterface<Rewriting> {
 protected:
  static void expect_rewriting(const RewriteOptions& options) {
    const RewrittenProgram result = rewritten({GetParam().program}, options);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.messages, "");
    EXPECT_EQ(std::regex_replace(result.clauses, std::regex("\n"), " "),
              joined({GetParam().clauses, " "}));
    if (GetParam().legend.empty()) return;
    EXPECT_EQ(result.legend, legend_of(GetParam().legend));
  }
};

}    // namespace zarel
