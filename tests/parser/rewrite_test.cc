// rewrite_test.cc - small programs and what reading them says: each starts from fresh tables.

#include "driver/diagnostics.h"
#include "rewrite_fixture.h"

namespace zarel {
namespace {

struct Case {
  std::string_view name, input, messages;    // messages without "1: line "
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

class CaseTable : public RewriteTest, public testing::WithParamInterface<Case> {};
constexpr auto kNameOf = [](const auto& test) { return std::string(test.param.name); };

std::string with_place(std::string_view messages) {
  std::string text;
  while (!messages.empty()) {
    const std::size_t end = messages.find('\n') + 1;
    text.append("1: line ").append(messages.substr(0, end));
    messages.remove_prefix(end);
  }
  return text;
}

using CountedErrors = CaseTable;

TEST_P(CountedErrors, AreReportedAndEndTheRun) {
  const RewrittenProgram program = rewritten({GetParam().input});
  EXPECT_EQ(program.messages, with_place(GetParam().messages) + "Aborting due to parser errors.\n");
  EXPECT_EQ(program.status, 1);
  EXPECT_EQ(program.clauses, "");
}

#define OUTSIDE ": number outside of given integer range.\n"
#define TOO_SMALL ": #maxint must not be less than the maximum integer occurring in the input.\n"
#define NO_BOUND ": #maxint used but no upper integer bound (option -N) given.\n"
#define NO_TERM ": parse error in #maxint statement.\n"
#define AGAIN ": Cannot redefine #maxint. Ignoring this definition.\n"
constexpr Case kCountedErrors[] = {
    {"bound_below_an_earlier_integer", "p(20).\n#maxint = 10.", "2" TOO_SMALL},
    {"bound_below_an_earlier_range", "p(1..20).\n#maxint = 19.", "2" TOO_SMALL},
    {"integers_above_the_bound", "#maxint = 10.\np(11,\n12). :- X < 13. r(1..14).",
     "2" OUTSIDE "3" OUTSIDE "3" OUTSIDE "3" OUTSIDE},
    {"integers_in_arithmetic", "#maxint = 1.\na :- X = Y + 2, 3 < #count{Z:q(Z)}.",
     "2" OUTSIDE "2" OUTSIDE},
    {"bound_that_is_a_constant", "#maxint = ten.", "1" NO_TERM},
    {"bound_that_is_a_variable", "#maxint = X.\n#maxint = 5. p(6).", "1" NO_TERM "2" OUTSIDE},
    {"value_without_a_bound", "p(#maxint).\n#maxint = 3.\nq(1).",
     "1" NO_BOUND "2" AGAIN "3" OUTSIDE},
    {"unknown_prefix", "p(a).\nq(b:c).", "2: An URI with id 'b' does not exist.\n"},
    {"prefix_declared_too_late", "p(b:c). #namespace(b,\"u#\") p(b:c).",
     "1: An URI with id 'b' does not exist.\n"},
    {"weight_out_of_range", ":~ a. [4294968:1] :~ b. [999999999:]",
     "1: weak constraint weight out of range.\n1: weak constraint weight out of range.\n"},
    {"weight_that_would_wrap", ":~ a. [4294967.296:1]",
     "1: weak constraint weight out of range.\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, CountedErrors, testing::ValuesIn(kCountedErrors), kNameOf);

TEST_F(RewriteTest, TakesAnIntegerThatEqualsTheBoundBeforeAndBehindIt) {
  EXPECT_EQ(rewritten({"p(10). #maxint = 10. p(10). #maxint = 99."}).clauses,
            "a_2(p,default,10).\n#maxint = 10.\na_2(p,default,10).\n");
}

// A blank before the parenthesis keeps a fact from being read whole.
TEST_F(RewriteTest, ReadsAFactWholeAsItDoesTokenByToken) {
  for (const std::string_view behind : {"(a,B,12, \"s t\").",
                                        "(v).",
                                        "(not,a).",
                                        "(GLOBAL).",
                                        "(a,_).",
                                        "(1234567890).",
                                        "(007).",
                                        "(\"a\nb\"). X.",
                                        "(\"a).",
                                        "(a)..",
                                        "(1..3).",
                                        "(a)@s. q(b).",
                                        "(a) :- b(c).",
                                        "(f(a)).",
                                        "(a):b.",
                                        "().",
                                        "(a,).",
                                        "(a) .q(b).",
                                        "(X). p? q(X).",
                                        "(a). ? ok(1). ok(2). ?",
                                        "(30). #maxint = 20.",
                                        "(a). #template t{p(1)}(1) {q(X). r(a). t(a).}"}) {
    for (const std::string_view name : {"p", "v", "not", "P", "\"p\""}) {
      const std::string start = "first(a)." + std::string(name);
      const RewrittenProgram whole = rewritten({start + std::string(behind)});
      const RewrittenProgram by_tokens = rewritten({start + " " + std::string(behind)});
      EXPECT_EQ(whole.clauses, by_tokens.clauses) << name << behind;
      EXPECT_EQ(whole.messages, by_tokens.messages) << name << behind;
      EXPECT_EQ(whole.status, by_tokens.status) << name << behind;
    }
  }
  EXPECT_EQ(rewritten({"p(a,B,12, \"s t\").q(X).\nq(Y)."}).clauses,
            "a_5(p,default,a,B,12,\"s t\").\na_2(q,default,X).\na_2(q,default,Y).\n");
}

TEST_F(RewriteTest, RejectsFormsCloseToThoseOfTheLanguage) {
  for (const std::string_view input : {":~ a. [-1:1]",
                                       ":~ a. [1:-1]",
                                       ":~ a. [X.5:1]",
                                       ":~ a. [1.X:1]",
                                       "a :- 1 < #count{x:p(x)}.",
                                       "a :- 1 < #count{1:p(X)}.",
                                       "a :- 1 < #count{:p(X)}.",
                                       "a :- 1 < #count{X,:p(X)}.",
                                       "a :- X + Y = Z, b(X,Y,Z).",
                                       "#maxint 1.",
                                       "#maxint == 1.",
                                       "#namespace(a,1)",
                                       "@1.",
                                       "#namespace(\"u#\")",
                                       "a(b:1).",
                                       "a :- not - b.c",
                                       "p(-1).",
                                       "#include <base",
                                       "a(*).",
                                       "a($)."}) {
    const RewrittenProgram program = rewritten({"ok. ", input});
    EXPECT_EQ(program.status, 1) << input;
    EXPECT_TRUE(program.messages.starts_with("2: line 1: ")) << program.messages;
  }
}

struct CountCase {
  std::string_view name, input;
  int errors;
  friend void PrintTo(const CountCase& test, std::ostream* out) { *out << test.name; }
};

class ErrorCount : public RewriteTest, public testing::WithParamInterface<CountCase> {};

// Each start of recovery counts, and each token that it skips.
TEST_P(ErrorCount, IsThatOfTheRecoveries) {
  const std::vector<std::string> files = written({GetParam().input});
  std::ostringstream ignored;
  reset_report_state();
  report_state().errors = &ignored;
  prepare_tables();
  EXPECT_THROW(read_program(files, "", ignored), RunEnd);
  EXPECT_EQ(report_state().parser_errors, GetParam().errors);
  reset_report_state();
}

constexpr CountCase kCounts[] = {
    {"next_statement_starts_at_once", "a b.", 1},
    {"every_statement", "a b. c d. e f.", 3},
    {"one_token_is_skipped", "a. b) c.", 2},
    {"a_start_that_leads_nowhere", "a :- b, c v d.", 2},
    {"silent_errors_count", "a b c d.", 3},
    {"end_of_file", "a :- b", 1},
    {"lexical_error", "a. _X", 3},
    {"long_number_inside_a_fact", "a(1000000000).", 5},
};
INSTANTIATE_TEST_SUITE_P(Cases, ErrorCount, testing::ValuesIn(kCounts), kNameOf);

struct UnsafeCase {
  std::string_view name, input, rule;
  friend void PrintTo(const UnsafeCase& test, std::ostream* out) { *out << test.name; }
};

class UnsafeRule : public RewriteTest, public testing::WithParamInterface<UnsafeCase> {};

TEST_P(UnsafeRule, IsShownWhenTheCheckIsOn) {
  const RewrittenProgram checked = rewritten({GetParam().input}, {false, true});
  EXPECT_EQ(checked.messages,
            "1: line 1: Warning: suspected unsafe Rule..\n" + std::string(GetParam().rule) + "\n");
  EXPECT_EQ(checked.status, 1);
  const RewrittenProgram unchecked = rewritten({GetParam().input});
  EXPECT_EQ(unchecked.clauses, std::string(GetParam().rule) + "\n");
  EXPECT_EQ(unchecked.messages, "");
}

constexpr UnsafeCase kUnsafe[] = {
    {"bound_by_a_negation", "p(X) :- not q(X).", "a_2(p,default,X) :- not a_2(q,default,X)."},
    {"fact", "p(X).", "a_2(p,default,X)."},
    {"variable_name", "X(a).", "a_2(X,default,a)."},
    {"equal_to_a_variable", "p(X) :- X == Y, q(Y).",
     "a_2(p,default,X) :- ==(X,Y), a_2(q,default,Y)."},
    {"comparison", "p :- X < 3.", "a_1(p,default) :- <(X,3)."},
    {"negated_literal", "p :- q, not r(X).",
     "a_1(p,default) :- a_1(q,default), not a_2(r,default,X)."},
    {"lower_guard", "p :- X < #count{Y:q(Y)}.",
     "a_1(p,default) :- X < #count{Y:a_2(q,default,Y)}."},
    {"upper_guard", "p :- #count{Y:q(Y)} < X.",
     "a_1(p,default) :- #count{Y:a_2(q,default,Y)} < X."},
    {"bound_inside_an_aggregate_only", "p(Y) :- 1 < #count{Y:q(Y)}.",
     "a_2(p,default,Y) :- 1 < #count{Y:a_2(q,default,Y)}."},
    {"negation_inside_an_aggregate", "p :- 1 < #count{Y:q(Y), not s(Z)}.",
     "a_1(p,default) :- 1 < #count{Y:a_2(q,default,Y), not a_2(s,default,Z)}."},
    {"negated_equality_guard", "p(X) :- not X = #count{Y:q(Y)}.",
     "a_2(p,default,X) :- not X = #count{Y:a_2(q,default,Y)}."},
    {"second_head_atom", "p v -q(X) :- r.",
     "a_1(p,default) v -a_2(q,default,X) :- a_1(r,default)."},
};
INSTANTIATE_TEST_SUITE_P(Cases, UnsafeRule, testing::ValuesIn(kUnsafe), kNameOf);

TEST_F(RewriteTest, LeavesTheArityOfOrdinaryAtomsFree) {
  const RewrittenProgram program = rewritten({"p. p(a). -p(a,b). p(1..2).", "p(a,b,c)."}, {true});
  EXPECT_EQ(program.messages, "");
  EXPECT_EQ(program.status, 0);
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

TEST_F(RewriteTest, CountsTheLinesOfEveryFileAnew) {
  EXPECT_EQ(rewritten({"a.\nb.\n", "c.\nd e.", "", "f.\ng h."}).messages,
            "2: line 2: syntax error.\n4: line 2: syntax error.\nAborting due to parser errors.\n");
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
