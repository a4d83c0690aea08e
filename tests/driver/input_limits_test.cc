// input_limits_test.cc - long, deep, broken and binary inputs: the cost stays linear, nothing is
// lost in silence, and no input ends the process.

#include <algorithm>
#include <random>

#include "rewrite_fixture.h"

namespace zarel {
namespace {

// Names in facts that are read whole, and those that are not.
TEST_F(RewriteTest, TakesNamesOfAtMost1001Characters) {
  struct Place {
    std::string_view before, name, after;    // the name is made longer
  };
  for (const auto& [before, name, after] : {Place{"", "n", "(a)."},
                                            {"a(", "n", ")."},
                                            {"a(", "N", ")."},
                                            {"a(", "\"\"", ")."},
                                            {"a :- not ", "n", "."},
                                            {"a :- b(", "N", ")."},
                                            {"#namespace(p,", "\"\"", ")"}}) {
    for (const std::size_t length : {1001U, 1002U}) {
      std::string program(name);
      program.insert(1, length - name.size(), 'n').insert(0, before).append(after);
      EXPECT_EQ(rewritten({program}).messages,
                length == 1001 ? ""
                               : "1: line 1: identifier too long, truncated to 1001 characters.\n"
                                 "Aborting due to parser errors.\n")
          << before << name << after;
    }
  }
}

TEST_F(RewriteTest, TakesABodyOfAMillionLiterals) {
  const RewrittenProgram program = rewritten({"a :- b" + repeated(",not c,d(X)", 500'000) + "."});
  EXPECT_EQ(program.messages, "");
  EXPECT_TRUE(program.clauses == "a_1(a,default) :- a_1(b,default)" +
                                     repeated(", a_2(d,default,X)", 500'000) +
                                     repeated(", not a_1(c,default)", 500'000) + ".\n");
}

TEST_F(RewriteTest, TakesAHeadATermListAndAQueryOfAHundredThousand) {
  EXPECT_EQ(rewritten({"a" + repeated(" v a", 100'000) + "."}).clauses,
            "a_1(a,default)" + repeated(" v a_1(a,default)", 100'000) + ".\n");
  EXPECT_EQ(rewritten({"a(1" + repeated(",2", 99'999) + ")."}).clauses,
            "a_100001(a,default,1" + repeated(",2", 99'999) + ").\n");
  EXPECT_EQ(rewritten({"a" + repeated(",a", 100'000) + "?"}).clauses,
            "a_1(a,default)" + repeated(", a_1(a,default)", 100'000) + "?\n");
  EXPECT_EQ(rewritten({":- 1<#count{X" + repeated(",X", 100'000) + ":a" +
                       repeated(",not b", 100'000) + "}."})
                .clauses,
            ":- 1 < #count{X" + repeated(",X", 100'000) + ":a_1(a,default)" +
                repeated(", not a_1(b,default)", 100'000) + "}.\n");
}

TEST_F(RewriteTest, TakesAHundredThousandStatementsWithNamesOfTheirOwn) {
  EXPECT_EQ(rewritten({numbered(100'000, "pN(cN,XN).\n")}).clauses,
            numbered(100'000, "a_3(pN,default,cN,XN).\n"));
}

TEST_F(RewriteTest, ReportsAHundredThousandErrorsOneByOne) {
  const RewrittenProgram program = rewritten({repeated("a(1) b(2).\n", 100'000)});
  EXPECT_TRUE(
      program.messages.ends_with("1: line 100000: syntax error.\n"
                                 "Aborting due to parser errors.\n"));
  EXPECT_EQ(std::count(program.messages.begin(), program.messages.end(), '\n'), 100'001);
}

TEST_F(RewriteTest, ReplacesATenThousandfoldQuery) {
  const RewrittenProgram program = rewritten({repeated("a?", 10'000)});
  EXPECT_EQ(program.output, repeated("Query a_1(a,default) replaces a_1(a,default).\n", 9'999));
  EXPECT_EQ(program.clauses, "a_1(a,default)?\n");
}

// Odd bytes of a first file, with a second one behind it, and all that comes of them.
TEST_F(RewriteTest, EchoesWhatIsNoTokenAndReadsOn) {
  using namespace std::string_view_literals;
  struct Case {
    std::string_view input, second, output, clauses, messages;
  };
  for (const Case& test : {
           // The carriage return in the comment is part of it.
           Case{"a.\r\nb :- c,\r\n  d.\r\n% e.\r\nf g.\r\n", "", "\r\r\r\r", "",
                "1: line 5: syntax error.\nAborting due to parser errors.\n"},
           // The number before the question mark is no query.
           {"a\0.\x01\x0b\x0c\x7f\x80\xff/^'`\\#1?"sv, "", "\0\x01\x0b\x0c\x7f\x80\xff/^'`\\#"sv,
            "", "1: line 1: syntax error.\nAborting due to parser errors.\n"},
           {"%\0\xff\na."sv, "", "", "a_1(a,default).\n", ""},
           // Zero bytes in strings, those that nothing closes too.
           {"a(\"\0x\n\0\").\nb c. d(\"\0\")"sv, "p(\"\0\")."sv, "", "",
            "1: line 2: syntax error.\n1: line 2: syntax error.\nAborting due to parser errors.\n"},
           {"a(\"x\0y\",\"\0\")."sv, "", "", "a_3(a,default,\"x\0y\",\"\0\").\n"sv, ""},
           {"a. \"\0"sv, "", "\"\0"sv, "a_1(a,default).\n", ""},
           {"a. \"b.\0\nc. "sv, "d.", "\"\0"sv,
            "a_1(a,default).\na_1(b,default).\na_1(c,default).\na_1(d,default).\n", ""},
       }) {
    const RewrittenProgram program = rewritten({test.input, test.second});
    EXPECT_EQ(program.output, test.output) << test.input;
    EXPECT_EQ(program.clauses, test.clauses) << test.input;
    EXPECT_EQ(program.messages, test.messages) << test.input;
  }
}

TEST_F(RewriteTest, ReadsOnBehindAnUnterminatedString) {
  const RewrittenProgram program = rewritten({"a(\"x\").\n\"b.\n" + repeated("c.\n", 100'000)});
  EXPECT_EQ(program.output, "\"");
  EXPECT_EQ(program.clauses,
            "a_2(a,default,\"x\").\na_1(b,default).\n" + repeated("a_1(c,default).\n", 100'000));
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
  const std::string body = repeated("abc\n", 1'000'000);
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
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(PROJECT_FOLDER "/tests/golden")) {
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
