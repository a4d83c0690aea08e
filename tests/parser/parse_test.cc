// parse_test.cc - where the text comes from, and parses at the same time.

#include "parser/parse.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "model/printer.h"
#include "model/program.h"
#include "parser/program_builder.h"
#include "parser/written_statement.h"
#include "support/caught_findings.h"
#include "support/fresh_run.h"
#include "support/text_file.h"
#include "templates/checks.h"
#include "templates/inflation.h"

namespace zarel {
namespace {

class ParseTest : public testing::Test {
 protected:
  ParseTest() { start(); }

  void start() {
    run_.begin();
    catch_findings(said_, said_);
    current_run().findings.parser_line = 1;
    said_.str("");
    verbatim_.str("");
  }

  // The program with its places and verbatim sections, and what reading said.
  std::string all_that_was_read() {
    std::ostringstream out, ignored;
    try {
      if (control_of_template()) Inflation(ignored);
      for (const CLAUSET& clause : CLAUSES()) out << clause << '\n';
      Text queries;
      for (const Body& query : QUERIES()) {
        append_list(queries, query, ", ");
        queries += "?\n";
      }
      out << queries.view();
    } catch (const RunEnd& end) {
      out << "status " << end.status;
    }
    for (const CLAUSET& clause : CLAUSES()) {
      const auto& [line, column, file] = clause.source().location;
      out << file << ':' << line << ':' << column << '\n';
    }
    out << verbatim_.str() << said_.str() << current_run().findings.parser_errors << " errors\n";
    return out.str();
  }

  // Of the text and of one more behind it, each read by `parse`.
  template <typename Parse>
  std::string read(std::string_view text, Parse parse) {
    start();
    ProgramBuilder builder;
    try {
      parse(text, builder);
      parse("last.", builder);
    } catch (const RunEnd& end) {
      said_ << "status " << end.status;
    }
    return all_that_was_read();
  }
  std::string from_memory(std::string_view text) {
    return read(text, [this](std::string_view part, ProgramBuilder& builder) {
      parse_text(part, current_run().files.add(""), builder, verbatim_);
    });
  }
  std::string from_file(std::string_view text) {
    return read(text, [this](std::string_view part, ProgramBuilder& builder) {
      parse_file(file_with(part).get(), current_run().files.add(""), builder, verbatim_);
    });
  }

  FreshRun run_;
  std::ostringstream said_, verbatim_;
};

TEST_F(ParseTest, ReadsTheSameFromMemoryAsFromAFile) {
  std::string long_text(70'000, '%');    // more than the scanner takes at once
  for (int i = 0; i < 10'000; ++i) long_text += "\np(a" + std::to_string(i) + ",\"b\nc\").";
  using std::string_literals::operator""s;
  std::vector<std::string> texts{"", "a", "p(\"a", "p(\"a\0\"). p(\"\0b\n q."s, long_text};
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(PROJECT_FOLDER "/tests/golden")) {
    if (entry.path().extension() != ".zrl") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  EXPECT_GT(texts.size(), 20U);
  for (const std::string& text : texts) EXPECT_TRUE(from_memory(text) == from_file(text)) << text;
  EXPECT_EQ(from_memory("p(a).\n q. ASITIS %*r.*% _X"),
            "a_2(p,default,a).\na_1(q,default).\na_1(last,default).\n0:1:1\n0:2:2\n1:1:1\n"
            "% ASITIS's Body is herein written verbatim\nr.\n% End of ASITIS's Section\n\n"
            "line 2: identifier starts with an underscore.\nline 2: syntax error.\n3 errors\n");
}

struct NoObserver : StatementObserver {
  void statement(const WrittenStatement& /*statement*/) override {}
  void flat_fact(const WrittenFlatFact& /*fact*/) override {}
};

// Where an observer is told, all but simple facts are read token by token.
TEST_F(ParseTest, ReadsWhatIsOneTokenAsItReadsItsPieces) {
  NoObserver observer;
  const auto read_with = [this](std::string_view text, StatementObserver* told) {
    return read(text, [this, told](std::string_view part, ProgramBuilder& builder) {
      current_run().options.OptionArityCheck = true;
      current_run().statement_observer = told;
      current_run().findings.sink = [this](const Diagnostic& finding) {
        const auto& [first, last] = finding.place;
        said_ << first.line << ':' << first.column << '-' << last.column << finding.text << '\n';
      };
      parse_text(part, current_run().files.add(""), builder, verbatim_);
    });
  };
  for (
      const std::string text : {
          R"(#namespace(e,"u#") p(f(X,g(Y)),_) :- q(e:a, "s"), not h(k(007)), r( X,Y ). p(Y,e:"b").)",
          "#maxint=5. @\"s\". p(f(9)) :- q(7), r(x:y,g(8)). p(x:y). o[a->9,b->>{c,d[e->8]}]. @s. "
          "p.",
          "o[a->b,c=>007,d,e *->>{f,\"g\"[h->1,i]},j->k[l->>{m}]]. o[a->v]. o[a->b]@s. @S. "
          "o[a->b].",
          "p(f(X)) :- q(f(X)) = Y. p(v(X)) :- q(_x). q(X) :- r(X)@s, s(X):c, t(X)[a->b], u(X).",
          "p(a,f(b)). p(a,b,f(c)).",
          "p(X) :- q(X), r(X,Y) r(X). s(Y) :- t(Y).",
          "#template t{f(1)}(1) { t(f(X)) :- f(X), g(h(X)). t(f(a)). o[a->b]. } p(X) :- "
          "t{q(*)}(X).",
          "p(X) :- #count{Y : q(X,f(Y)), r(Y)} > 1, s(X). q(X), r(f(X))? :~ p(X), q(f(X)). [1:2]",
      })
    EXPECT_EQ(read_with(text, nullptr), read_with(text, &observer)) << text;
}

// Reads a program of its own whenever a piece of a verbatim section is written to it.
struct Interruption : std::stringbuf {
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    std::ostringstream ignored;
    ProgramBuilder builder;
    parse_text("% \n@s. b :- c. ASITIS %*other*% ) #import", current_run().files.add(""), builder,
               ignored);
    return std::stringbuf::xsputn(text, length);
  }
};

TEST_F(ParseTest, GoesOnWhereAnotherParseInterruptedIt) {
  Interruption interruption;
  std::ostream verbatim(&interruption);
  ProgramBuilder builder;
  parse_text("a :- d, ASITIS %*own*% e(f). g.", current_run().files.add(""), builder, verbatim);
  EXPECT_EQ(interruption.str(),
            "% ASITIS's Body is herein written verbatim\nown\n% End of ASITIS's Section\n\n");
  const std::string all = all_that_was_read();
  EXPECT_TRUE(
      all.starts_with("a_1(b,s) :- a_1(c,s).\na_1(b,s) :- a_1(c,s).\n"
                      "a_1(b,s) :- a_1(c,s).\n"
                      "a_1(a,default) :- a_1(d,default), a_2(e,default,f).\n"
                      "a_1(g,default).\n1:2:5\n2:2:5\n3:2:5\n0:1:1\n0:1:30\n"))
      << all;
}

}    // namespace
}    // namespace zarel
