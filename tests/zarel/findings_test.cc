// findings_test.cc - what is wrong with a program, as values: the kind, the exact place, and the
// further places that it is about.

#include <gtest/gtest.h>
#include <set>

#include "support/text_file.h"
#include "support/texts.h"
#include "zarel/program.h"

namespace zarel {
namespace {

// "1:3-5", or "1:3-2:1" over several lines; columns in characters behind those in bytes, where they
// differ.
std::string place_text(const Place& place, std::uint32_t Position::*column) {
  std::string text = std::to_string(place.first.line) + ":" + std::to_string(place.first.*column);
  const bool is_on_one_line = place.first.line == place.last.line;
  if (is_on_one_line && place.first.*column == place.last.*column) return text;
  text += '-';
  if (!is_on_one_line) text += std::to_string(place.last.line) + ":";
  return text + std::to_string(place.last.*column);
}

std::string place_text(const Place& place) {
  if (!place.is_known()) return "nowhere";
  const std::string bytes = place_text(place, &Position::column);
  const std::string characters = place_text(place, &Position::character);
  return bytes == characters ? bytes : bytes + " (" + characters + ")";
}

std::string findings_text(const Program& program) {
  std::string text;
  for (const Diagnostic& finding : program.findings()) {
    text += text.empty() ? "" : "; ";
    text += place_text(finding.place) + " " + std::string(kind_of(finding.code).name);
    for (const Note& note : finding.notes) text += ", " + place_text(note.place) + " " + note.text;
  }
  return text;
}

struct Case {
  std::string_view name, program, findings;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

// Every kind of finding that a text in memory can give.
constexpr Case kCases[] = {
    {"token", "p(X :- q.", "1:5-6 syntax-error"},
    {"end_of_input", "p(a).\np(", "2:3 syntax-error"},
    {"behind_a_wide_string", "p(\"\u00e4\u4e2d\") q.", "1:12 (1:9) syntax-error"},
    {"behind_a_wide_flat_fact", "p(\"\u00e4\"). q q.", "1:12 (1:11) syntax-error"},
    {"behind_a_wide_comment", "% \u00e4\u00f6\n  p(X X).", "2:7 syntax-error"},
    {"behind_a_string_over_lines", "p(\"a\n\u00e4b\") q.", "2:7 (2:6) syntax-error"},
    {"behind_a_verbatim_section", "ASITIS %*\u00e4\n\u00e4*% p q.", "2:8 (2:7) syntax-error"},
    {"behind_a_tab", "\tp q.", "1:4 syntax-error"},
    {"behind_a_carriage_return", "p.\r\nq r.", "1:3 unknown-character; 2:3 syntax-error"},
    {"template_invocation_in_a_query", "a(X), t{p(*)}(X)?", "1:7-16 syntax-error"},
    {"frame_space_in_a_template", "#template t{f(1)}(1) { t(X) :- f(X)@s. }",
     "1:36-37 syntax-error"},
    {"unknown_character", "p. ^ q. \u00e4",
     "1:4 unknown-character; 1:9 unknown-character; 1:10 (1:9) unknown-character"},
    {"underscore", "p(_x).", "1:3-4 underscore-identifier; 1:3-4 syntax-error"},
    {"long_number", "p(1234567890).", "1:3-12 long-number; 1:3-12 syntax-error"},
    {"unclosed_verbatim", "p. ASITIS %* q", "1:4 unclosed-verbatim"},
    {"unknown_prefix", "p(xy : z). a[b->xy:z].", "1:3-4 unknown-prefix; 1:17-18 unknown-prefix"},
    {"redefined_prefix", "#namespace(x,\"u#\")\n#namespace(x,\"v#\")", "2:12 redefined-prefix"},
    {"quoted_functor", "p(a) :- q(\"f\"(X)).", "1:11-13 quoted-functor"},
    {"quoted_frame_space", "a[b->c]@\"s\".", "1:9-11 quoted-frame-space"},
    {"quoted_default_frame_space", "@\"s\". c. a[b->c].", "1:10-16 quoted-frame-space"},
    {"quoted_template_name", "#template t{f(1)}(1) { t(X) :- - \"f\"(X), \"g\". }",
     "1:34-36 quoted-template-name; 1:42-44 quoted-template-name"},
    {"quoted_name_of_a_template", "#template \"t\"{f(1)}(1) { }", "1:11-13 quoted-template-name"},
    {"negation_in_head", "a[b] v c[d, e->f[not g], not h] v a[not b]:-c[not d].",
     "1:18-22 negation-in-head; 1:37-41 negation-in-head"},
    {"negated_value", "a[b->-c[d]].", "1:6-10 negated-value"},
    {"negated_values", "a[b->>{-c[d->-e[f]],g[h],-i[j]}].",
     "1:14-18 negated-value; 1:8-19 negated-value; 1:26-30 negated-value"},
    {"nested_negation", "-x v -a[b->c[-d], -e].", "1:14-15 nested-negation"},
    {"weight_range", ":~ p. [4294968:1]", "1:8-14 weight-range"},
    {"weight_precision", ":~ p. [1.2345:1]", "1:8-13 weight-precision"},
    {"number_above_maxint", "#maxint=3. p(a,4). q(X) :- r(5).",
     "1:16 maxint-exceeded, 1:1-10 the bound on integers; "
     "1:30 maxint-exceeded, 1:1-10 the bound on integers"},
    {"maxint_unknown", "p(X) :- X == #maxint.", "1:14-20 maxint-unknown"},
    {"maxint_redefined", "#maxint=3. #maxint=4.",
     "1:12-21 maxint-redefined, 1:1-10 the one that holds"},
    {"maxint_no_integer", "#maxint=a.", "1:9 maxint-no-integer"},
    {"maxint_too_small", "p(4). #maxint=3.", "1:15 maxint-too-small"},
    {"replaced_query", "a?\n b?", "2:2-3 replaced-query, 1:1 the query that it replaces"},
    {"template_undefined", "a(X) :- t{p(*)}(X).", "1:9-18 template-undefined"},
    {"template_redefined",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n#template t{f(1)}(1) { t(X) :- f(X). }",
     "2:11 template-redefined, 1:1-20 the first definition"},
    {"formal_in_head",
     "#template t{f(1)}(1) { t(X) :- f(X).\n f(X) :- t(X). }\na(X) :- t{p(*)}(X).",
     "2:2 formal-in-head, 1:1-20 the definition of the template, 3:9-18 the invocation"},
    {"global_in_head",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- f(X). g(X) :- t(X). }\na(X) :- t{p(*)}(X).",
     "1:47 global-in-head, 1:1-29 the definition of the template, 2:9-18 the invocation"},
    {"formal_arity", "#template t{f(1)}(1) { t(X) :- f(X,X). }\na(X) :- t{p(*)}(X).",
     "1:24 formal-arity, 1:1-20 the definition of the template, 2:9-18 the invocation"},
    {"output_arity", "#template t{f(1)}(1) { t(X) :- f(X). }\na(X) :- t{p(*)}(X,X).",
     "2:9-20 output-arity, 1:1-20 the definition of the template"},
    {"actual_count", "#template t{f(1)}(1) { t(X) :- f(X). }\na(X) :- t{p(*),q(*)}(X).",
     "2:9-23 actual-count, 1:1-20 the definition of the template"},
    {"actual_arity", "#template t{f(1)}(1) { t(X) :- f(X). }\na(X) :- t{p(*,*)}(X).",
     "2:9-20 actual-arity, 1:1-20 the definition of the template"},
    {"result_arity", "#template t{f(1)}(1) { t(X,X) :- f(X). }\na(X) :- t{p(*)}(X).",
     "1:24 result-arity, 1:1-20 the definition of the template, 2:9-18 the invocation"},
    {"result_missing", "#template t{f(1)}(1) { u(X) :- f(X). }\na(X) :- t{p(*)}(X).",
     "1:1-20 result-missing, 2:9-18 the invocation"},
    {"nested_template_undefined",
     "#template t{f(1)}(1) { t(X) :- u{f(*)}(X). }\na(X) :- t{p(*)}(X).",
     "1:32-41 template-undefined"},
    {"nested_output_arity",
     "#template u{f(1)}(1) { u(X) :- f(X). }\n#template t{f(1)}(1) { t(X) :- u{f(*)}(X,X). }\n"
     "a(X) :- t{p(*)}(X).",
     "2:32-43 output-arity, 1:1-20 the definition of the template"},
};

class Findings : public testing::TestWithParam<Case> {};

TEST_P(Findings, HaveTheirPlaces) {
  Program program({.OptionSafetyCheck = true});
  program.read_text(GetParam().program, "p");
  program.rewrite();
  EXPECT_EQ(findings_text(program), GetParam().findings);
}

INSTANTIATE_TEST_SUITE_P(Cases, Findings, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(FindingsOfAProgram, ShowWhereTheUnsafeVariableIs) {
  Program program({.OptionSafetyCheck = true});
  program.read_text("p(1..3). p(\"\u00e4\"). q(X) v r :- s(Y),\n  not t(X, Z), p(f(Z)). % X\nr(X).",
                    "p");
  EXPECT_FALSE(program.rewrite());
  EXPECT_EQ(findings_text(program),
            "1:19-2:23 (1:18-2:23) unsafe-rule, 1:21 (1:20) X is bound by no positive literal");
}

TEST(FindingsOfAProgram, TellTheFileAndTheExpansion) {
  Program program({.OptionSafetyCheck = true});
  program.read_text("#template t{f(1)}(1) {\n t(X) :- f(Y). }", "library");
  program.read_text("a(X) :- t{p(*)}(X).", "own");
  EXPECT_FALSE(program.rewrite());
  ASSERT_EQ(findings_text(program),
            "2:2-14 unsafe-rule, 2:4 X is bound by no positive literal, 1:9 expanded for this use "
            "of the template t");
  const Diagnostic& finding = program.findings()[0];
  EXPECT_EQ(program.files()[finding.place.first.file].name, "library");
  EXPECT_EQ(program.files()[finding.notes[1].place.first.file].name, "own");
}

TEST(FindingsOfAProgram, StandBehindManyWideCharacters) {
  Program program;
  const std::string text =
      "p(\"" + repeated("\u00e4", 100) + "x" + repeated("\u4e2d", 100) + "\") q.";
  program.read_text(text, "p");
  EXPECT_EQ(findings_text(program), "1:508 (1:208) syntax-error");
}

TEST(FindingsOfAProgram, AreKeptInReasonableNumber) {
  Program program;
  const std::string text(30'000, '^');
  program.read_text(text, "p");
  EXPECT_EQ(program.findings().size(), 10'000U);
  EXPECT_EQ(program.findings_left_out(), 20'000U);
}

TEST(FindingsOfAProgram, GoToASinkAsTheyCome) {
  std::vector<std::string> names;
  Program program({.OptionArityCheck = true}, [&](const Diagnostic& finding) {
    names.emplace_back(kind_of(finding.code).name);
  });
  program.read_file("/nowhere");
  program.read_text("a(p(X). b?", "p");
  EXPECT_EQ(names, (std::vector<std::string>{"unreadable-file", "syntax-error"}));
  EXPECT_FALSE(program.rewrite());
  EXPECT_TRUE(program.findings().empty());
}

// Takes answers and does nothing with them.
class NoSink : public AnswerSink {
 public:
  void begin_answer_set(const AnswerSetStart& /*start*/) override {}
  void atom(const AnswerAtom& /*atom*/) override {}
  void membership(const ClassStatement& /*statement*/) override {}
  void subclass(const ClassStatement& /*statement*/) override {}
  void object(const AnswerObject& /*object*/) override {}
  void end_answer_set() override {}
  void cost(const AnswerCost& /*cost*/) override {}
  void query_row(const AnswerTerms& /*values*/) override {}
  void truth_value(bool /*holds*/) override {}
};

TEST(FindingsOfAProgram, TellWhereTheAnswersAreWrong) {
  constexpr std::pair<std::string_view, std::string_view> kAnswers[] = {
      {"{a(p,default)}\n{a(p,default)) }", "2:14 answer-syntax"},
      {"{a(\"\u00e4\n\u00e4\",b), word} }", "2:13 (2:12) answer-syntax"},
      {"{a(p,default)", "1:14 answer-syntax"},
      {"{a(p,default)} \"open } b}", "1:22 answer-syntax"},
  };
  for (const auto& [answers, expected] : kAnswers) {
    Program from_text;
    NoSink sink;
    EXPECT_EQ(from_text.read_answers(answers, sink), 1);
    EXPECT_EQ(findings_text(from_text), expected);
    Program from_file;
    EXPECT_EQ(from_file.read_answers(file_with(answers).get(), sink), 1);
    EXPECT_EQ(findings_text(from_file), expected);
  }
}

TEST(Kinds, HaveNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const DiagnosticKind& kind : all_kinds()) names.insert(kind.name);
  EXPECT_EQ(names.size(), all_kinds().size());
}

}    // namespace
}    // namespace zarel
