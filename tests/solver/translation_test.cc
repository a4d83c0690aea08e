// translation_test.cc - the exact text for clingo, where it matters.
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr std::string_view kIntegers = "#const _m=2147483647.\n#const _r=-1.\n#const _o=1.\n";

TEST(Translation, OfARuleKeepsItsOrder) {
  const Outcome outcome = run("a(X) v -b :- c(X), not d(X).", "-translate");
  EXPECT_EQ(outcome.out, "a(X);-b:-c(X),not d(X).\n#show.\n#show a/1.\n#show -b/0.\n");
}

TEST(Translation, PutsAssignmentsAfterWhatTheyNeed) {
  const Outcome outcome = run("a(Z) :- Z == Y, #function_builtin(Y,f,X), p(X).", "-translate");
  EXPECT_EQ(outcome.out,
            "a(Z):-p(X),Y=f(X),Z=Y.\n" + std::string(kIntegers) + "#show.\n#show a/1.\n");
}

TEST(Translation, WatchesSumsForOverflow) {
  const Outcome outcome = run("a(Z) :- p(X), Z = X + 1.", "-translate");
  EXPECT_EQ(outcome.out,
            "_overflow(0):-p(X),1=_o,X<=2147483647,X>2147483647-1.\na(Z):-p(X),Z=X+1,X<=_m-1.\n" +
                std::string(kIntegers) + "#show.\n#show _overflow/1.\n#show a/1.\n");
}

TEST(Translation, ShowsWhatTheFiltersName) {
  const Outcome outcome = run("a. -a. b. -b. c.", "-translate -filter=a -pfilter=b,none");
  EXPECT_EQ(outcome.out, "a.\n-a.\nb.\n-b.\nc.\n#show.\n#show a/0.\n#show -a/0.\n#show b/0.\n");
}

TEST(Translation, CutsALongBodyIntoPiecesThatCarryWhatIsNeeded) {
  std::string body = "p(X,Y0)";
  for (int i = 1; i < 300; ++i)
    body += ", p(Y" + std::to_string(i - 1) + ",Y" + std::to_string(i) + ")";
  const Outcome outcome = run("a(X) :- " + body + ".", "-translate");
  const std::size_t first = outcome.out.find('\n');
  EXPECT_EQ(outcome.out.substr(0, 9), "_h1(X,Y7)");
  EXPECT_EQ(outcome.out.substr(first + 1, 23), "_h2(X,Y15):-_h1(X,Y7),p");
  EXPECT_NE(outcome.out.find("\na(X):-_h37(X,Y295),p(Y295,Y296),"), std::string::npos);
}

TEST(Translation, OfALongBodyOrdersByVariables) {
  std::string body;
  for (int i = 0; i < 300; ++i) body += "p(X" + std::to_string(i) + "), ";
  for (int i = 0; i < 300; ++i) body += "q(X" + std::to_string(i) + "), ";
  const Outcome outcome = run("a :- " + body + "b.", "-translate");
  // Each p stands before its q, so that no piece carries a variable on.
  EXPECT_EQ(outcome.out.substr(0, 31), "_h1:-p(X0),q(X0),p(X1),q(X1),p(");
}

}    // namespace
}    // namespace dl_test
