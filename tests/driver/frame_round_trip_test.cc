// frame_round_trip_test.cc - the frames that an answer set prints are a program of the same statements.

#include <random>
#include <set>
#include <sstream>

#include "driver/diagnostics.h"
#include "output/answer_set_reader.h"
#include "rewrite_fixture.h"
#include "support/fresh_run.h"

namespace zarel {
namespace {

// A statement as the solver may answer it. A subclass statement is never negated: what it would
// print says "-" of the class, not of the statement.
std::string statement(std::mt19937& random) {
  const auto one_of = [&random](std::initializer_list<std::string_view> texts) {
    return std::string(texts.begin()[random() % texts.size()]);
  };
  const std::string space = one_of({"default", "n"});
  const std::string sign = one_of({"", "", "-"});
  const std::string of = space + "Flogic," + one_of({"o", "p", "12", "f(a,g(1,b))", "\"s, [t\""}) +
                         "," + one_of({"a", "b", "g(1,2)", "\"u}v\""});
  const std::string valued = sign + "a_5(valueOf," + of + "," +
                             one_of({"x", "7", "h(y,\"(\")", "o", "\"w,w\""}) + ",\"" +
                             one_of({"->", "->>", "=>", "=>>", "*->", "*->>"}) + "\")";
  return one_of({valued, valued, valued, sign + "a_3(valueOf," + of + ")",
                 sign + "a_3(instanceOf," + of + ")", "a_3(subClassOf," + of + ")",
                 sign + "a_3(rel," + space + ",x,\"w,w\")"});
}

std::string printed(const std::string& answer_set) {
  std::ostringstream out;
  const FreshRun run;
  current_run().output = &out;
  EXPECT_EQ(read_answer_sets(answer_set), 0);
  return out.str();
}

// Each item of a printed answer set as a fact: commas outside brackets and quotes end one.
std::string facts_of(const std::string& answer_set) {
  std::string facts;
  int depth = 0;
  bool is_quoted = false;
  for (const char c : answer_set.substr(1, answer_set.size() - 3)) {
    if (c == '"') is_quoted = !is_quoted;
    if (!is_quoted && std::string_view("([{").find(c) != std::string_view::npos) ++depth;
    if (!is_quoted && std::string_view(")]}").find(c) != std::string_view::npos) --depth;
    facts += c == ',' && depth == 0 && !is_quoted ? ".\n" : std::string(1, c);
  }
  return facts + ".\n";
}

TEST_F(RewriteTest, ReadsPrintedFramesAsTheSameStatements) {
  std::mt19937 random(20080725);    // the same in every run
  for (int round = 0; round < 300; ++round) {
    std::multiset<std::string> expected, found;
    std::string answer_set = "{";
    for (int i = 0; i <= round % 40; ++i) {
      const std::string next = statement(random);
      answer_set.append(i == 0 ? "" : ", ").append(next);
      expected.insert(next + ".");
    }
    const std::string facts = facts_of(printed(answer_set + "}"));
    std::istringstream clauses(rewritten({facts}).clauses);
    for (std::string line; std::getline(clauses, line);) found.insert(line);
    EXPECT_EQ(found, expected) << facts;
  }
}

}    // namespace
}    // namespace zarel
