// rewrite_test.cc - small programs and what reading them says: each starts from fresh tables.

#include "driver/diagnostics.h"
#include "rewrite_fixture.h"
#include "support/fresh_run.h"

namespace zarel {
namespace {

struct Case {
  std::string_view input, messages;
};

#define AT(line) "1: line " #line
#define OUTSIDE ": number outside of given integer range.\n"
#define TOO_SMALL ": #maxint must not be less than the maximum integer occurring in the input.\n"
#define NO_BOUND ": #maxint used but no upper integer bound (option -N) given.\n"
#define NO_TERM ": parse error in #maxint statement.\n"
#define TOO_HEAVY ": weak constraint weight out of range.\n"
#define AGAIN ": Cannot redefine #maxint. Ignoring this definition.\n"
TEST_F(RewriteTest, CountsErrorsAndEndsTheRun) {
  for (const auto& [input, messages] : {
           Case{"p(20).\n#maxint = 10.", AT(2) TOO_SMALL},
           {"p(1..20).\n#maxint = 19.", AT(2) TOO_SMALL},
           {"#maxint = 10.\np(11,\n12). :- X < 13. r(1..14).",
            AT(2) OUTSIDE AT(3) OUTSIDE AT(3) OUTSIDE AT(3) OUTSIDE},
           {"#maxint = 1.\na :- X = Y + 2, 3 < #count{Z:q(Z)}.", AT(2) OUTSIDE AT(2) OUTSIDE},
           {"#maxint = X.\n#maxint = 5. p(6).", AT(1) NO_TERM AT(2) OUTSIDE},
           {"p(#maxint).\n#maxint = 3.\nq(1).", AT(1) NO_BOUND AT(2) AGAIN AT(3) OUTSIDE},
           {"p(b:c). #namespace(b,\"u#\") p(b:c).", AT(1) ": An URI with id 'b' does not exist.\n"},
           {":~ a. [4294968:1] :~ b. [999999999:]", AT(1) TOO_HEAVY AT(1) TOO_HEAVY},
           {":~ a. [4294967.296:1]", AT(1) TOO_HEAVY},
       }) {
    const RewrittenProgram program = rewritten({input});
    EXPECT_EQ(program.messages, std::string(messages) + "Aborting due to parser errors.\n");
    EXPECT_EQ(program.status, 1) << input;
    EXPECT_EQ(program.clauses, "") << input;
  }
}

TEST_F(RewriteTest, TakesAnIntegerThatEqualsTheBoundBeforeAndBehindIt) {
  EXPECT_EQ(rewritten({"p(10). #maxint = 10. p(10). #maxint = 99."}).clauses,
            "a_2(p,default,10).\n#maxint = 10.\na_2(p,default,10).\n");
}

TEST_F(RewriteTest, WritesAQualifiedConstantTheSameHoweverOftenItComes) {
  const std::string spaces = "#namespace(b,\"u#\") #namespace(d,\"w#\") ";
  EXPECT_EQ(
      rewritten({spaces + "p(b:c,d:c,b:c). p(b:\"c\",b:C,b:C). p(b:elevenchars,d:elevenchars)."
                          " p(b:twelve_chars,d:twelve_chars,b:twelve_chars)."})
          .clauses,
      "a_4(p,default,\"u#c\",\"w#c\",\"u#c\").\na_4(p,default,\"u#c\",\"u#C\",\"u#C\").\n"
      "a_3(p,default,\"u#elevenchars\",\"w#elevenchars\").\n"
      "a_4(p,default,\"u#twelve_chars\",\"w#twelve_chars\",\"u#twelve_chars\").\n");
  std::string program = spaces;
  std::string clauses;
  for (int i = 0; i < 1000; ++i) {
    const std::string number = std::to_string(i % 500);
    program.append("p(b:c").append(number).append(").");
    clauses.append("a_2(p,default,\"u#c").append(number).append("\").\n");
  }
  EXPECT_EQ(rewritten({program}).clauses, clauses);
}

// A blank before the parenthesis keeps a fact from being read whole.
TEST_F(RewriteTest, ReadsAFactWholeAsItDoesTokenByToken) {
  for (const std::string_view behind :
       {"(a,B,12, \"s t\").", "(v).", "(not,a).", "(GLOBAL).", "(a,_).", "(1234567890).", "(007).",
        "(\"a\nb\"). X.", "(\"a).", "(a)..", "(1..3).",

        "(a) :- b(c).", "(f(a)).",

        "(a,).", "(a) .q(b).", "(X). p? q(X).", "(a). ? ok(1). ok(2). ?", "(30). #maxint = 20.",
        "(a). #template t{p(1)}(1) {q(X). r(a). t(a).}"}) {
    for (const std::string start :
         {"first(a).p", "first(a).v", "first(a).not", "first(a).P", "first(a).\"p\""}) {
      const RewrittenProgram whole = rewritten({start + std::string(behind)});
      const RewrittenProgram by_tokens = rewritten({start + " " + std::string(behind)});
      EXPECT_EQ(whole.clauses, by_tokens.clauses) << start << behind;
      EXPECT_EQ(whole.messages, by_tokens.messages) << start << behind;
      EXPECT_EQ(whole.status, by_tokens.status) << start << behind;
    }
  }
  EXPECT_EQ(rewritten({"p(a,B,12, \"s t\").q(X).\nq(Y)."}).clauses,
            "a_5(p,default,a,B,12,\"s t\").\na_2(q,default,X).\na_2(q,default,Y).\n");
}

TEST_F(RewriteTest, RejectsFormsCloseToThoseOfTheLanguage) {
  for (const std::string_view input :
       {":~ a. [-1:1]", ":~ a. [1:-1]", ":~ a. [X.5:1]", ":~ a. [1.X:1]",
        "a :- 1 < #count{x:p(x)}.", "a :- 1 < #count{1:p(X)}.", "a :- 1 < #count{:p(X)}.",
        "a :- 1 < #count{X,:p(X)}.",

        "#maxint 1.", "#maxint == 1.", "#namespace(a,1)", "@1.", "#namespace(\"u#\")", "a(b:1).",
        "a :- not - b.c", "p(-1).", "#include <base", "a(*).", "a($)."}) {
    const RewrittenProgram program = rewritten({"ok. ", input});
    EXPECT_EQ(program.status, 1) << input;
    EXPECT_TRUE(program.messages.starts_with("2: line 1: ")) << program.messages;
  }
}

// Each start of recovery counts, and each token that it skips.
TEST_F(RewriteTest, CountsTheRecoveriesFromErrors) {
  for (const auto& [input, errors] : {
           std::pair{"a b.", 1},    // the next statement starts at once
           {"a b. c d. e f.", 3},
           {"a. b) c.", 2},          // one token is skipped
           {"a :- b, c v d.", 2},    // a start that leads nowhere
           {"a b c d.", 3},          // silent errors count
           {"a :- b", 1},
           {"a. _X", 3},
           {"a(1000000000).", 5},
           {"p(1a).", 4},
       }) {
    const std::vector<std::string> files = written({input});
    std::ostringstream ignored;
    const FreshRun run;
    show_findings(ignored, ignored);
    EXPECT_THROW(read_program(files, "", ignored), RunEnd) << input;
    EXPECT_EQ(current_run().findings.parser_errors, errors) << input;
  }
}

TEST_F(RewriteTest, ShowsAnUnsafeRuleWhenTheCheckIsOn) {
  for (const std::string_view input :
       {"p(X) :- not q(X).", "p(X).", "X(a).", "p(X) :- X == Y, q(Y).", "p :- q(X), X < Y.",
        "p :- q, not r(X).", "p :- X < #count{Y:q(Y)}.", "p :- #count{Y:q(Y)} < X.",
        "p(Y) :- 1 < #count{Y:q(Y)}.", "p :- 1 < #count{Y:q(Y), not s(Z)}.",
        "p(X) :- not X = #count{Y:q(Y)}.", "p v -q(X) :- r."}) {
    const RewrittenProgram unchecked = rewritten({input});
    EXPECT_EQ(unchecked.status, 0) << input;
    EXPECT_EQ(unchecked.messages, "");
    const RewrittenProgram checked = rewritten({input}, {.run = {.OptionSafetyCheck = true}});
    EXPECT_EQ(checked.status, 1);
    EXPECT_EQ(checked.messages,
              "1: line 1: Warning: suspected unsafe Rule..\n" + unchecked.clauses);
  }
  // Behind a query a variable may have no name to print.
  EXPECT_EQ(rewritten({"p(X)? q(Y,X)."}, {.run = {.OptionSafetyCheck = true}}).messages,
            "1: line 1: Warning: suspected unsafe Rule..\n");
}

TEST_F(RewriteTest, ReadsTheLibraryOfASemanticsBehindTheFiles) {
  std::filesystem::create_directory("zareltests");
  std::ofstream("zareltests/constrainedSemantic.zrf") << "rule. not.";
  RewriteOptions options;
  options.semantics = "constrained";
  EXPECT_EQ(rewritten({"own."}, options).messages,
            "constrained: line 1: syntax error.\nAborting due to parser errors.\n");
  options.semantics = "other";
  std::ofstream("other") << "rule.";
  EXPECT_EQ(rewritten({"own."}, options).clauses, "a_1(own,default).\na_1(rule,default).\n");
}

TEST_F(RewriteTest, ForgetsEverythingBeforeAnotherProgram) {
  const RewrittenProgram first =
      rewritten({"#maxint = 1. @m. a(X)? #namespace(x,\"u#\") _Y ASITIS %*"});
  EXPECT_EQ(first.status, 1);
  const RewrittenProgram second = rewritten({"#maxint = 9. #namespace(x,\"w#\") b(Z,x:y,9). c?"});
  EXPECT_EQ(second.messages, "");
  EXPECT_EQ(second.output, "");
  EXPECT_EQ(second.verbatim, "");
  EXPECT_EQ(second.clauses, "#maxint = 9.\na_4(b,default,Z,\"w#y\",9).\na_1(c,default)?\n");
}

}    // namespace
}    // namespace zarel
