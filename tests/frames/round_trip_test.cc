// round_trip_test.cc - the frames that an answer set prints are a program of the same statements.

#include <algorithm>
#include <array>
#include <random>
#include <sstream>

#include "../parser/rewrite_fixture.h"
#include "driver/diagnostics.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"

namespace zarel {
namespace {

class Statements {
 public:
  explicit Statements(unsigned seed) : random_(seed) {}

  // A statement as the solver may answer it. A subclass statement is never negated: what it would
  // print says "-" of the class, not of the statement.
  std::string next() {
    const std::string marked = std::string(one_of(kSpaces)) + "Flogic,";
    const std::string object(one_of(kObjects));
    const std::string attribute(one_of(kAttributes));
    const std::string value(one_of(kValues));
    const std::string sign = random_() % 3 == 0 ? "-" : "";
    switch (random_() % 8) {
      case 0:
        return sign + "a_3(valueOf," + marked + object + "," + attribute + ")";
      case 1:
        return sign + "a_3(instanceOf," + marked + object + "," + attribute + ")";
      case 2:
        return "a_3(subClassOf," + marked + object + "," + attribute + ")";
      case 3:
        return sign + "a_3(rel," + std::string(one_of(kSpaces)) + ",x,\"w,w\")";
      default:
        return sign + "a_5(valueOf," + marked + object + "," + attribute + "," + value + ",\"" +
               std::string(one_of(kArrows)) + "\")";
    }
  }

 private:
  template <std::size_t Count>
  std::string_view one_of(const std::array<std::string_view, Count>& texts) {
    return texts[random_() % Count];
  }

  static constexpr std::array<std::string_view, 2> kSpaces = {"default", "n"};
  static constexpr std::array<std::string_view, 5> kObjects = {"o", "p", "12", "f(a,g(1,b))",
                                                               "\"s, [t\""};
  static constexpr std::array<std::string_view, 4> kAttributes = {"a", "b", "g(1,2)", "\"u}v\""};
  static constexpr std::array<std::string_view, 5> kValues = {"x", "7", "h(y,\"(\")", "o",
                                                              "\"w,w\""};
  static constexpr std::array<std::string_view, 6> kArrows = {"->",  "->>", "=>",
                                                              "=>>", "*->", "*->>"};
  std::mt19937 random_;
};

std::string printed(const std::string& answer_set) {
  std::ostringstream out;
  reset_report_state();
  reset_display_settings();
  report_state().output = &out;
  EXPECT_EQ(read_answer_sets(answer_set), 0);
  reset_report_state();
  return out.str();
}

// Each item of a printed answer set as a fact: commas outside brackets and quotes end one.
std::string facts_of(const std::string& answer_set) {
  std::string facts;
  int depth = 0;
  bool is_quoted = false;
  for (const char c : answer_set.substr(1, answer_set.size() - 3)) {
    if (c == '"') is_quoted = !is_quoted;
    const std::string_view brackets = is_quoted ? "" : "([{)]}";
    if (const std::size_t kind = brackets.find(c); kind != std::string_view::npos)
      depth += kind < 3 ? 1 : -1;
    if (c == ',' && depth == 0 && !is_quoted) {
      facts += ".\n";
    } else {
      facts += c;
    }
  }
  return facts + ".\n";
}

TEST_F(RewriteTest, ReadsPrintedFramesAsTheSameStatements) {
  Statements statements(20080725);    // the same in every run
  for (int round = 0; round < 300; ++round) {
    std::vector<std::string> expected;
    std::string answer_set;
    for (int i = 0; i <= round % 40; ++i) {
      expected.push_back(statements.next());
      answer_set.append(i == 0 ? "{" : ", ").append(expected.back());
    }
    const std::string facts = facts_of(printed(answer_set + "}"));
    const RewrittenProgram program = rewritten({facts});
    EXPECT_EQ(program.messages, "") << facts;
    std::vector<std::string> found;
    std::istringstream clauses(program.clauses);
    for (std::string line; std::getline(clauses, line);)
      found.push_back(line.substr(0, line.size() - 1));
    std::sort(expected.begin(), expected.end());
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, expected) << facts;
  }
}

}    // namespace
}    // namespace zarel
