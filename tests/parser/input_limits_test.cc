// input_limits_test.cc - long, deep, broken and binary inputs: the cost stays linear, nothing is
// lost in silence, and no input ends the process.

#include <algorithm>
#include <random>

#include "rewrite_fixture.h"

namespace zarel {
namespace {

std::string repeated(int times, std::string_view text) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

struct PlaceOfName {
  std::string_view name, before, after;
  char first = 'n';    // of the name; a quotation mark stands at its end too
  friend void PrintTo(const PlaceOfName& test, std::ostream* out) { *out << test.name; }
};

class LongName : public RewriteTest, public testing::WithParamInterface<PlaceOfName> {
 protected:
  static std::string program(std::size_t length) {
    const PlaceOfName& place = GetParam();
    std::string name = place.first + std::string(length - 1, 'n');
    if (place.first == '"') name.back() = '"';
    return std::string(place.before) + name + std::string(place.after);
  }
};

TEST_P(LongName, HasAtMost1001Characters) {
  EXPECT_EQ(rewritten({program(1001)}).messages, "");
  EXPECT_EQ(rewritten({program(1002)}).messages,
            "1: line 1: identifier too long, truncated to 1001 characters.\n"
            "Aborting due to parser errors.\n");
}

constexpr PlaceOfName kPlaces[] = {
    {"predicate", "", "(a)."},        {"atom", "a :- not ", "."},
    {"constant", "a(", ")."},         {"variable", "a(", ").", 'N'},
    {"string", "a(", ").", '"'},      {"range", "", "(1..2)."},
    {"default_space", "@", "."},      {"space", "a@", "."},
    {"prefix", "#namespace(", ",u)"}, {"address", "#namespace(p,", ")", '"'},
    {"include", "#include ", ""},     {"include_in_brackets", "#include <", ">"},
};
INSTANTIATE_TEST_SUITE_P(Places, LongName, testing::ValuesIn(kPlaces),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(RewriteTest, TakesABodyOfAHundredThousandLiterals) {
  const RewrittenProgram program = rewritten({"a :- b" + repeated(50'000, ",not c,d(X)") + "."});
  EXPECT_EQ(program.messages, "");
  EXPECT_EQ(program.clauses, "a_1(a,default) :- a_1(b,default)" +
                                 repeated(50'000, ", a_2(d,default,X)") +
                                 repeated(50'000, ", not a_1(c,default)") + ".\n");
}

TEST_F(RewriteTest, TakesAHeadATermListAndAQueryOfAHundredThousand) {
  EXPECT_EQ(rewritten({"a" + repeated(100'000, " v a") + "."}).clauses,
            "a_1(a,default)" + repeated(100'000, " v a_1(a,default)") + ".\n");
  EXPECT_EQ(rewritten({"a(1" + repeated(99'999, ",2") + ")."}).clauses,
            "a_100001(a,default,1" + repeated(99'999, ",2") + ").\n");
  EXPECT_EQ(rewritten({"a" + repeated(100'000, ",a") + "?"}).clauses,
            "a_1(a,default)" + repeated(100'000, ", a_1(a,default)") + "?\n");
  EXPECT_EQ(rewritten({":- 1<#count{X" + repeated(100'000, ",X") + ":a" +
                       repeated(100'000, ",not b") + "}."})
                .clauses,
            ":- 1 < #count{X" + repeated(100'000, ",X") + ":a_1(a,default)" +
                repeated(100'000, ", not a_1(b,default)") + "}.\n");
}

TEST_F(RewriteTest, TakesAHundredThousandStatementsWithNamesOfTheirOwn) {
  std::string input;
  std::string expected;
  for (int i = 0; i < 100'000; ++i) {
    const std::string number = std::to_string(i);
    input += "p" + number + "(c" + number + ",X" + number + ").\n";
    expected += "a_3(p" + number + ",default,c" + number + ",X" + number + ").\n";
  }
  EXPECT_EQ(rewritten({input}).clauses, expected);
}

TEST_F(RewriteTest, ReportsAHundredThousandErrorsOneByOne) {
  const RewrittenProgram program = rewritten({repeated(100'000, "a(1) b(2).\n")});
  EXPECT_TRUE(
      program.messages.ends_with("1: line 100000: syntax error.\n"
                                 "Aborting due to parser errors.\n"));
  EXPECT_EQ(std::count(program.messages.begin(), program.messages.end(), '\n'), 100'001);
}

TEST_F(RewriteTest, ReplacesATenThousandfoldQuery) {
  const RewrittenProgram program = rewritten({repeated(10'000, "a?")});
  EXPECT_EQ(program.output, repeated(9'999, "Query a_1(a,default) replaces a_1(a,default).\n"));
  EXPECT_EQ(program.clauses, "a_1(a,default)?\n");
}

TEST_F(RewriteTest, EchoesCarriageReturnsAndReadsOn) {
  const RewrittenProgram program = rewritten({"a.\r\nb :- c,\r\n  d.\r\n% e.\r\nf g.\r\n"});
  EXPECT_EQ(program.output, "\r\r\r\r");    // the one in the comment is part of it
  EXPECT_EQ(program.messages, "1: line 5: syntax error.\nAborting due to parser errors.\n");
}

TEST_F(RewriteTest, EchoesEveryByteThatIsNoToken) {
  using namespace std::string_view_literals;
  const RewrittenProgram program = rewritten({"a\0.\x01\x0b\x0c\x7f\x80\xff/^'`\\#1?"sv});
  EXPECT_EQ(program.output, "\0\x01\x0b\x0c\x7f\x80\xff/^'`\\#"sv);
  EXPECT_EQ(program.status, 1);    // the number before the question mark is no query
  EXPECT_EQ(rewritten({"%\0\xff\na."sv}).clauses, "a_1(a,default).\n");
  EXPECT_EQ(rewritten({"%\0\xff\na."sv}).output, "");
}

TEST_F(RewriteTest, ReadsOnBehindAnUnterminatedString) {
  const RewrittenProgram program = rewritten({"a(\"x\").\n\"b.\n" + repeated(100'000, "c.\n")});
  EXPECT_EQ(program.output, "\"");
  EXPECT_EQ(program.clauses,
            "a_2(a,default,\"x\").\na_1(b,default).\n" + repeated(100'000, "a_1(c,default).\n"));
}

TEST_F(RewriteTest, TakesZeroBytesInStringsLikeOthers) {
  using namespace std::string_view_literals;
  const RewrittenProgram closed = rewritten({"a(\"\0x\n\0\").\nb c. d(\"\0\")"sv, "p(\"\0\")."sv});
  EXPECT_EQ(closed.output, "");
  EXPECT_EQ(closed.messages,
            "1: line 2: syntax error.\n1: line 2: syntax error.\nAborting due to parser errors.\n");
  EXPECT_EQ(rewritten({"a(\"x\0y\",\"\0\")."sv}).clauses, "a_3(a,default,\"x\0y\",\"\0\").\n"sv);
}

TEST_F(RewriteTest, ReadsOnBehindAnUnterminatedStringWithZeroBytes) {
  using namespace std::string_view_literals;
  EXPECT_EQ(rewritten({"a. \"\0"sv}).output, "\"\0"sv);
  const RewrittenProgram program = rewritten({"a. \"b.\0\nc. "sv, "d."sv});
  EXPECT_EQ(program.output, "\"\0"sv);
  EXPECT_EQ(program.clauses,
            "a_1(a,default).\na_1(b,default).\na_1(c,default).\na_1(d,default).\n");
}

TEST_F(RewriteTest, ReadsManyZeroBytesInAStringInLinearTime) {
  const std::string zeros(1'000'000, '\0');    // twenty minutes, were it quadratic
  EXPECT_EQ(rewritten({"a. \"" + zeros}).output, '"' + zeros);
  EXPECT_EQ(rewritten({"a(\"" + zeros + "\")."}).status, 1);    // too long for a name
}

TEST_F(RewriteTest, CopiesVerbatimBytesUpToByte255OrTheEnd) {
  using namespace std::string_view_literals;
  const std::string start = "% ASITIS's Body is herein written verbatim\n";
  const std::string end = "\n% End of ASITIS's Section\n\n";
  const RewrittenProgram program = rewritten({"ASITIS %*x\0\r\x80%\"\xff a."sv, "b."});
  EXPECT_EQ(program.verbatim, start + std::string("x\0\r\x80%\""sv) + end);
  EXPECT_EQ(program.clauses, "a_1(a,default).\na_1(b,default).\n");
  EXPECT_EQ(program.messages, "1: line 1: EOF in ASITIS.\n");
}

TEST_F(RewriteTest, CopiesALongVerbatimSectionWithoutEnd) {
  const std::string body = repeated(1'000'000, "abc\n");
  const RewrittenProgram program = rewritten({"a.\nASITIS %*" + body, "b."});
  EXPECT_EQ(program.messages, "1: line 2: EOF in ASITIS.\n");
  EXPECT_EQ(program.clauses, "a_1(a,default).\na_1(b,default).\n");
  EXPECT_TRUE(program.verbatim.find(body) != std::string::npos);
}

TEST_F(RewriteTest, OutlivesBinaryGarbage) {
  std::mt19937 random(20080725);    // the same bytes in every run
  for (int round = 0; round < 200; ++round) {
    std::string bytes(2'000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() & 0xFFU);
    EXPECT_LE(rewritten({bytes}).status, 1);
  }
}

TEST_F(RewriteTest, OutlivesPrefixesOfTheGoldenInputs) {
  int inputs = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(GOLDEN_FOLDER)) {
    if (entry.path().extension() != ".zrl") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t step = 1 + text.size() / 300;    // all of them, but for long inputs
    for (std::size_t end = 0; end <= text.size(); end += step) {
      EXPECT_LE(rewritten({text.substr(0, end)}).status, 1) << entry.path() << " up to " << end;
    }
    ++inputs;
  }
  EXPECT_GT(inputs, 20);
}

}    // namespace
}    // namespace zarel
