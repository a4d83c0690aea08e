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

std::string repeated(std::string_view text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST(Translation, LooksOnceAtALiteralForAllUsesOfAVariable) {
  const std::string arguments = repeated(",X", 300'000);    // minutes, were it once for each
  const Outcome outcome = run("a :- p(X), #function_builtin(F,f" + arguments + ").", "-translate");
  EXPECT_EQ(outcome.out.size(), arguments.size() + std::string("a:-p(X),F=f().\n").size() - 1 +
                                    std::string(kIntegers).size() +
                                    std::string("#show.\n#show a/0.\n").size());
}

TEST(Translation, WatchesALongBodyOfAnAggregateInPieces) {
  std::string body = "q(X,Y0)";
  for (int i = 0; i < 10'000; ++i)
    body += ", Y" + std::to_string(i + 1) + " = Y" + std::to_string(i) + " + Z";
  const Outcome outcome = run("a :- p(Z), 1 < #count{X:" + body + "}.", "-translate");
  EXPECT_LT(outcome.out.size(), 20 * body.size());
  EXPECT_NE(outcome.out.find("_h2(Z,Y15):-p(Z),_h1(Z,Y7),Y8=Y7+Z"), std::string::npos);
}

}    // namespace
}    // namespace dl_test
