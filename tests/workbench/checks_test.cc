// checks_test.cc - what the checks must never do: find fault with a program that is right.

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>

#include "support/run_program.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;
using zarel::Outcome;
using zarel::WorkFolder;

constexpr std::string_view kExamples = PROJECT_FOLDER "/examples";
constexpr std::string_view kLibrary = PROJECT_FOLDER "/library";

void expect_clean(const std::string& arguments) {
  const Outcome outcome =
      WorkFolder().run("cd " + std::string(kExamples) + " && zrl check --strict " + arguments);
  EXPECT_EQ(outcome.errors, "") << arguments;
  EXPECT_EQ(outcome.status, 0) << arguments;
}

// With the templates and filters that their options name.
TEST(Checks, SayNothingOfTheExamples) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(kExamples)) {
    if (entry.path().extension() != ".options") continue;
    const std::string name = entry.path().filename().string();
    std::string arguments = name.substr(0, name.find('.')) + ".zrl";
    std::istringstream options(zarel::text_of(entry.path()));
    for (std::string word; options >> word;) {
      if (word.ends_with(".zrl")) arguments += " " + word;
      if (word.starts_with("-filter=")) (arguments += " -") += word;
    }
    expect_clean(arguments);
    ++count;
  }
  EXPECT_GT(count, 20);
}

TEST(Checks, SayNothingOfTheLibrary) {
  for (const auto& entry : fs::directory_iterator(kLibrary)) {
    if (entry.path().extension() == ".zrl") expect_clean(entry.path().string());
  }
  expect_clean(std::string(kLibrary) + "/*.zrl");
}

// Makes rules, most of them with a variable that nothing binds.
class Rules {
 public:
  explicit Rules(unsigned seed) : numbers_(seed) {}

  std::string rule() {
    const std::string body = literal() + ", " + literal() + (one_in(2) ? ", " + literal() : "");
    switch (below(5)) {
      case 0:
        return ":- " + body + ".";
      case 1:
        return frame() + " :- " + body + ".";
      case 2:
        return ":~ " + body + ". [" + variable() + ":1]";
      default:
        return atom() + " :- " + body + ".";
    }
  }

 private:
  unsigned below(unsigned count) { return static_cast<unsigned>(numbers_() % count); }
  bool one_in(unsigned count) { return below(count) == 0; }
  std::string variable() { return std::string(1, "XYZ"[below(3)]); }

  std::string term() {
    constexpr std::array<const char*, 3> kOthers = {"a", "1", "_"};
    if (one_in(4)) return kOthers[below(3)];
    return one_in(4) ? "f(" + variable() + ")" : variable();
  }
  std::string atom() {
    const std::string name = one_in(12) ? "R" : "p";
    return name + "(" + term() + (one_in(2) ? "," + term() : "") + ")";
  }
  std::string frame() {
    if (one_in(4)) return variable() + " : c";
    return variable() + "[at -> " + (one_in(3) ? "f(" + variable() + ")" : variable()) + "]";
  }
  std::string comparison() {
    constexpr std::array<const char*, 4> kSigns = {" == ", " == ", " != ", " < "};
    const std::string left = one_in(2) ? variable() : "f(" + variable() + ")";
    return left + kSigns[below(4)] + (one_in(2) ? variable() : "f(" + variable() + ")");
  }
  std::string aggregate() {
    const std::string inside =
        (one_in(3) ? "not " : "") + atom() + ", " + (one_in(3) ? comparison() : atom());
    return variable() + (one_in(2) ? " = " : " < ") + "#count{" + variable() + " : " + inside + "}";
  }
  std::string literal() {
    switch (below(9)) {
      case 0:
        return comparison();
      case 1:
        return variable() + " = " + variable() + " + 1";
      case 2:
        return aggregate();
      case 3:
        return (one_in(3) ? "not " : "") + frame();
      case 4:
        return "X[not at -> " + variable() + "]";
      case 5:
        return "t{e(*," + variable() + ")}(" + variable() + ")";
      case 6:
        return "not " + atom();
      default:
        return atom();
    }
  }

  std::mt19937 numbers_;
};

// Each rule is told of only where dl, or clingo, refuses it for the same reason.
TEST(Checks, CallNoRuleUnsafeThatIsSafe) {
  const WorkFolder folder;
  Rules rules(20);
  std::array<int, 2> verdicts{};
  for (int i = 0; i < 80; ++i) {
    const std::string rule = rules.rule();
    folder.write("rule.zrl",
                 "#template t{e(1)}(1) { t(X) :- e(X). }\n#maxint = 3.\n"
                 "p(a). p(a,1). e(1,2). o[at -> a]. o : c.\n" +
                     rule + "\n");
    const Outcome checked = folder.run("zrl check rule.zrl");
    const bool is_unsafe = checked.errors.find("[unsafe-variable]") != std::string::npos;
    ++verdicts[is_unsafe ? 1 : 0];
    if (!is_unsafe) continue;
    const Outcome solved =
        folder.run("zarel -silent -linktemplates -preparsing rule.zrl > rule.dl; dl -n=1 rule.dl");
    EXPECT_NE(solved.errors.find("unsafe"), std::string::npos) << rule << '\n' << checked.errors;
  }
  EXPECT_GT(verdicts[0], 20);
  EXPECT_GT(verdicts[1], 20);
}

}    // namespace
}    // namespace workbench
