// places_test.cc - dl as a function: which mistake is where, what a line comes from, what answers
// say, and all of it on two threads at once.
#include <algorithm>
#include <span>
#include <thread>

#include "dl/answer_reader.h"
#include "dl/failure.h"
#include "dl/query_answers.h"
#include "dl/read_files.h"
#include "run_dl.h"

namespace dl_test {
namespace {

std::optional<std::string> included(std::string_view name) {
  if (name == "bad") return "a.\n% \xc3\xa9\nb :- c d.";
  if (name == "query") return "q(X)\n, r(X) ?";
  return {};
}

dl::Translated translated(std::string_view program, const dl::Options& options = {}) {
  const dl::Source source{"p", program};
  return dl::translate({&source, 1}, options, included);
}

// "3:5/4", with the column in bytes and in characters.
std::string shown(const zarel::Position& position) {
  std::string text = std::to_string(position.line);
  (text += ':') += std::to_string(position.column);
  return (text += '/') += std::to_string(position.character);
}

std::string shown(const zarel::Place& place, const dl::Sources& sources) {
  if (!place.is_known()) return "nowhere";
  std::string text = shown(place.first);
  (text += " to ") += shown(place.last);
  const std::string& file = sources.name(place.first.file);
  return file == "p" ? text : file + " " + text;
}

// The kind of the mistake, its place and its notes, and the line that the message shows if that is
// another one.
std::string shown(const zarel::Diagnostic& diagnostic, const dl::Sources& sources) {
  std::string text(zarel::kind_of(diagnostic.code).name);
  (text += ' ') += shown(diagnostic.place, sources);
  for (const zarel::Note& note : diagnostic.notes) {
    (((text += "; ") += note.text) += ' ') += shown(note.place, sources);
  }
  if (diagnostic.parser_line == static_cast<int>(diagnostic.place.first.line)) return text;
  return text += "; shown in " + std::to_string(diagnostic.parser_line);
}

// The mistake of the program, or else of these lines of its answers.
std::string mistake(std::string_view text, std::string_view answers = {}) {
  dl::Translated program = translated(text);
  if (program.mistake) return shown(*program.mistake, program.sources);
  dl::AnswerReader reader(program, dl::Reasoning::kBrave);
  std::string found = "none";
  const auto note = [&](const zarel::Diagnostic& value) { found = shown(value, program.sources); };
  try {
    if (!answers.empty()) reader.read_line(answers);
    reader.finish(dl::Search::kComplete, note);
  } catch (const dl::Failure& failure) {
    note(failure.diagnostic);
  }
  return found;
}

struct Row {
  std::string_view name, program, mistake, answers = "";
  friend void PrintTo(const Row& test, std::ostream* out) { *out << test.name; }
};
class Places : public testing::TestWithParam<Row> {};
TEST_P(Places, AreThoseOfTheTokenAtFault) {
  EXPECT_EQ(mistake(GetParam().program, GetParam().answers), GetParam().mistake);
}
constexpr Row kReading[] = {
    {"syntax_error", "a.\nb :- c dd.\n", "syntax-error 2:8/8 to 2:9/9"},
    {"behind_a_string", "p(\"\xc3\xa9\xe2\x82\xac\") q.", "syntax-error 1:12/9 to 1:12/9"},
    {"behind_a_comment", "% \xc3\xa9\n\tp(\xc3\xa9).", "unexpected-character 2:4/4 to 2:5/4"},
    {"behind_tabs_and_carriage_returns", "\ta.\r\n\t\tb c.\r\n", "syntax-error 2:5/5 to 2:5/5"},
    {"behind_a_long_string", "p(\"\xc3\xa9\n\xc3\xa9\") q.", "syntax-error 2:6/5 to 2:6/5"},
    {"a_long_string", "a\n\"\xc3\xa9\nb\".", "syntax-error 2:1/1 to 3:2/2; shown in 3"},
    {"an_atom", "a b(c,1).", "syntax-error 1:3/3 to 1:8/8"},
    {"end_of_file", "a", "syntax-error 1:2/2 to 1:2/2"},
    {"end_of_a_line", "a\n", "syntax-error 2:1/1 to 2:1/1"},
    {"unexpected_character", "\"\xc3\xa9\" & q.", "unexpected-character 1:6/5 to 1:6/5"},
    {"half_a_character", "\xa9\xa9 a.", "unexpected-character 1:1/1 to 1:2/1"},
    {"open_string", "p(1).p(\"a).\n", "unclosed-string 1:8/8 to 1:8/8"},
    {"unknown_word", "a :- #foo(X).", "unknown-word 1:6/6 to 1:9/9"},
    {"nul_byte", std::string_view("\"\xc3\xa9\".\nab\0.", 10), "nul-byte 2:3/3 to 2:3/3"},
    {"number", "p(\"\xc3\xa9\", 2147483648).", "integer-range 1:9/8 to 1:18/17"},
    {"number_in_an_atom", "p(a,2147483648).", "integer-range 1:5/5 to 1:14/14"},
    {"weight", ":~ a. [2147483648:1]", "integer-range 1:8/8 to 1:17/17"},
    {"bound", "#maxint = 2147483648.", "integer-range 1:11/11 to 1:20/20"},
    {"second_bound", "p(\"\n\xc3\xa9\"). #maxint = 3.\n#maxint = 40.",
     "second-bound 3:11/11 to 3:12/12; the first #maxint 2:17/16 to 2:17/16"},
    {"second_query", "-a,\n b?\nc,\n\"\xc3\xa9\"=\"\xc3\xa9\"?",
     "second-query 3:1/1 to 4:10/8; the first query 1:1/1 to 2:3/3"},
    {"negated_builtin", "q(1). p :- q(X), not\n +(X,1,2).",
     "unsupported-negation 1:18/18 to 1:20/20; shown in 2"},
    {"negated_average", "a :- non 1 < #avg{X:p(X), not q(X)}.",
     "unsupported-negation 1:6/6 to 1:8/8"},
    {"arity", "p :- q(X), +(X,\n1).", "builtin-arity 1:12/12 to 1:12/12; shown in 2"},
    {"functor", "p(F) :- #function_builtin(F,\"f\").", "functor-name 1:9/9 to 1:25/25"},
    {"times", "a :- 1 < #times{X:p(X)}.", "unsupported-aggregate 1:10/10 to 1:15/15"},
    {"nested", "a :- 1 < #count{X:1<#sum{Y:p(Y)}}.", "nested-aggregate 1:21/21 to 1:24/24"},
    {"left_guard", "a :- = #count{X:p(X)}.", "missing-guard 1:6/6 to 1:6/6"},
    {"right_guard", "a :- b, #count{X:p(X)} <= .", "missing-guard 1:24/24 to 1:25/25"},
    {"unequal_guard", "a :- 1 != #count{X:p(X)}.", "guard-operator 1:8/8 to 1:9/9"},
    {"descending_guards", "a :- 1 < #count{X:p(X)} > 1.", "guard-operator 1:25/25 to 1:25/25"},
    {"unbounded", "p(1).\np(X) :-\n #int(X), #succ(X,Y).", "missing-bound 3:2/2 to 3:5/5"},
    {"bound_as_a_term", "p(\"\xc3\xa9\",#maxint).", "missing-bound 1:8/7 to 1:14/13"},
    {"open_operand", "% \xc3\xa9\np(1) :-\n+(X,Y,2).", "missing-bound 3:3/3 to 3:3/3; shown in 2"},
    {"include", "a.\n #include \"none\" % \xc3\xa9", "unreadable-file 2:2/2 to 2:16/16"},
    {"in_an_included_text", "#include <bad>", "syntax-error bad 3:8/8 to 3:8/8"},
    {"second_query_of_two_texts", "a?\n#include query",
     "second-query query 1:1/1 to 2:8/8; the first query 1:1/1 to 1:2/2"},
};
INSTANTIATE_TEST_SUITE_P(Reading, Places, testing::ValuesIn(kReading), case_name);

constexpr Row kUnsafe[] = {
    {"head", "p(\"\xc3\xa9\", Xy) :- q.", "unsafe-rule 1:9/8 to 1:10/9"},
    {"fact", "p(a,\nX\n).", "unsafe-rule 2:1/1 to 2:1/1; shown in 1"},
    {"anonymous_head", "p(a,_) :- q(_).", "unsafe-rule 1:5/5 to 1:5/5"},
    {"negation", "p :- q(X),\n not r(X,Yz).", "unsafe-rule 2:10/10 to 2:11/11; shown in 1"},
    {"comparison", "p :- q(X), X < _.", "unsafe-rule 1:16/16 to 1:16/16"},
    {"anonymous_in_a_term", "p :- q(_), a < f(b,_).", "unsafe-rule 1:20/20 to 1:20/20"},
    {"in_the_second_aggregate", "a :- 1<#count{X:p(X)}, 1<#count{X:not p(X)}.",
     "unsafe-rule 1:41/41 to 1:41/41"},
    {"counted_term", "a :- 1 < #count{X,f(X,Y):p(X)}.", "unsafe-rule 1:23/23 to 1:23/23"},
    {"guard", "a :- N < #count{X:p(X)}.", "unsafe-rule 1:6/6 to 1:6/6"},
    {"query", "-a(Y), not p(X)?", "unsafe-rule 1:14/14 to 1:14/14"},
    {"weight", "a.\n:~ a. [\nW:1]", "unsafe-rule 3:1/1 to 3:1/1; shown in 2"},
};
INSTANTIATE_TEST_SUITE_P(Unsafe, Places, testing::ValuesIn(kUnsafe), case_name);

constexpr Row kAnswers[] = {
    {"of_the_rule", "q(1).\n p(Z,\"\xc3\xa9\") :- q(X),\n Z = X + 1.",
     "integer-overflow 2:2/2 to 3:11/11", "_fault(0)"},
    {"of_the_sum", "q(1). p(\"\xc3\xa9\") :- q(Y),\n5 < #sum{X:q(X),\nX>1}.",
     "sum-overflow 2:5/5 to 3:4/4; shown in 1", "_fault(0)"},
    {"inside_an_aggregate", "p :- 1 < #count{Z:q(X), Z = X * 9}, 1 < #count{X:q(X)}.",
     "integer-overflow 1:10/10 to 1:34/34", "_fault(0)"},
    {"behind_an_aggregate", "p :- S = #sum{X:q(X)},\n Z = S + 1.",
     "integer-overflow 1:1/1 to 2:11/11", "_fault(1)"},
    {"of_the_weight", "a. :~ q(\"\xc3\xa9\",X). [X:1]", "measure-no-integer 1:19/18 to 1:19/18",
     "_fault(0)"},
    {"of_the_level", ":~ q(X,Yz). [X:Yz]", "measure-no-integer 1:16/16 to 1:17/17", "_fault(1)"},
    {"no_answer_set", "a. :- a.\n \"\xc3\xa9\"==X,\na(X) ?", "no-answer-set 2:2/2 to 3:6/6"},
    {"costs", ":~ a.", "cost-mismatch nowhere", "Optimization: 1 2"},
};
INSTANTIATE_TEST_SUITE_P(Answers, Places, testing::ValuesIn(kAnswers), case_name);

TEST(Places, OfWhatIsTooMuch) {
  const std::string products = numbered(20, ", Z = YN * YM") + ", Z = Y20 * X, Z = Y10 * X" +
                               numbered(20, ", Z = YN * X") + ".";
  EXPECT_EQ(mistake("a. p(Y0) :- a(Z), a(X),\nZ = Y0 * X" + products),
            "tangled-products 1:4/4 to 2:568/568");
  EXPECT_EQ(mistake(numbered(5'001, "f(")), "input-too-deep 1:10001/10001 to 1:10001/10001");
}

TEST(Translation, AsAFunctionGivesTheTextAndWhatItsLinesComeFrom) {
  const dl::Source sources[] = {
      {"p", "% \xc3\xa9\n a(\"\xc3\xa9\"). -b(X)\n:- c(X).\n#include more"}, {"q", "\nd."}};
  const auto more = [](std::string_view name) {
    return name == "more" ? std::optional<std::string>("e. #include q") : std::nullopt;
  };
  const dl::Translated program = dl::translate(sources, {}, more);
  ASSERT_FALSE(program.mistake);
  EXPECT_EQ(program.text.substr(0, 39), "a(\"\xc3\xa9\").\n-b(X):-c(X).\ne.\nd.\n#show.\n#sho");
  std::string places;
  for (std::size_t line = 1; line <= 5; ++line) {
    const zarel::SourceLocation location = program.lines.source_of(line).location;
    ((places += program.sources.name(location.file)) += ' ') +=
        shown(program.sources.place(location).first) + "\n";
  }
  EXPECT_EQ(places, "p 2:2/2\np 2:11/10\nmore 1:1/1\nq 2:1/1\nq 0:0/0\n");
}

TEST(Translation, OfFilesNamesThem) {
  const WorkFolder folder;
  folder.write("q", "#include <r>");
  folder.write("r", "\"\xc3\xa9\" a.");
  const dl::Translated program = dl::translate(dl::survey_files({folder.path() / "q"}), {});
  EXPECT_EQ(shown(program.mistake.value(), program.sources),
            "syntax-error " + (folder.path() / "r").string() + " 1:6/5 to 1:6/5");
}

// What a host does with a program and with lines that it has from its own clingo.
std::string answered(std::string_view text, std::string_view lines) {
  const dl::Translated program = translated(text);
  dl::AnswerReader reader(program, dl::Reasoning::kBrave);
  for (std::size_t begin = 0, end = 0; begin < lines.size(); begin = end + 1) {
    end = std::min(lines.find('\n', begin), lines.size());
    reader.read_line(lines.substr(begin, end - begin));
  }
  reader.finish(reader.has_result() ? dl::Search::kComplete : dl::Search::kCut, {});
  return reader.text();
}

TEST(AnswerReader, GivesTextAndValuesWithoutAProcess) {
  EXPECT_EQ(answered("a v b.", ""), "");
  EXPECT_EQ(answered("Ab v b.", "_nAb\nb\nSATISFIABLE"), "{Ab}\n{b}\n");
  EXPECT_EQ(answered("a. :~ a. [3:2]", "Optimization: 3\na\nOPTIMUM FOUND"),
            "Best model: {a}\nCost ([Weight:Level]): <[3:2]>\n");
  EXPECT_EQ(answered("p(X,Y)?", "_q(2,a) _q(1,_nB(\"\\n\"))\nSATISFIABLE"), "1, B(\"\n\")\n2, a\n");
  EXPECT_EQ(dl::query_rows("_q(2,a) _q(1,\"b, c\")"),
            (std::vector<dl::QueryRow>{{"1", "\"b, c\""}, {"2", "a"}}));
}

// Each program of the tables, and what became of it.
std::vector<std::string> all_outcomes() {
  std::vector<std::string> outcomes;
  for (const std::span<const Row> table :
       {std::span<const Row>(kReading), std::span<const Row>(kUnsafe),
        std::span<const Row>(kAnswers)}) {
    for (const Row& row : table) {
      outcomes.push_back(mistake(row.program, row.answers) + translated(row.program).text);
    }
  }
  return outcomes;
}

TEST(Threads, TranslateAndReadAsIfAlone) {
  const std::vector<std::string> alone = all_outcomes();
  std::vector<std::string> other;
  std::thread thread([&other] { other = all_outcomes(); });
  EXPECT_EQ(all_outcomes(), alone);
  thread.join();
  EXPECT_EQ(other, alone);
}

}    // namespace
}    // namespace dl_test
