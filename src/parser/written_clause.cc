#include "parser/written_clause.h"

#include <cstdio>
#include <memory>
#include <sstream>

#include "grammar.h"
#include "model/run.h"
#include "parser/qualified_constants.h"
#include "parser/scanner_actions.h"
#include "parser/token_scanner.h"

int yylex(YYSTYPE* value, zarel::SourceRange* location, void* scanner);

namespace zarel {
namespace {

struct Token {
  int kind = 0;
  SourceRange range = {};
  std::string_view spelling = {};    // of names alone
};

// The tokens of an input, none of them a whole fact.
class Tokens {
 public:
  Tokens(const ScannerInput& input, std::uint32_t file)
      : actions_(input, file, verbatim_, constants_), scanner_(actions_) {
    actions_.found_mistake();
  }

  Token next() {
    Token token;
    YYSTYPE value;
    token.kind = yylex(&value, &token.range, scanner_.state());
    if (token.kind == ID || token.kind == VARIABLE) token.spelling = names().spelling(value.name);
    return token;
  }

 private:
  std::ostringstream verbatim_;
  ShortQualifiedConstants constants_;    // none
  ScannerActions actions_;
  scannerT scanner_;
};

bool is_at(const SourceRange& range, const SourceLocation& location) {
  return range.first_line == location.line && range.first_column == location.column;
}

void take(const Token& token, std::string_view word, WrittenClause& written) {
  if (!written.word && !word.empty() && token.spelling == word)
    written.word = {written.clause.file, token.range};
  written.clause.range = joined(written.clause.range, token.range);
}

// An include line has no full stop: it ends with its name.
void take_include(Tokens& tokens, const Token& begin, WrittenClause& written) {
  take(begin, {}, written);
  const Token name = tokens.next();
  take(name, {}, written);
  for (Token token = name; token.kind != 0 && name.kind == LT && token.kind != GT;) {
    token = tokens.next();
    take(token, {}, written);
  }
}

void look_up(Tokens& tokens, std::string_view word, WrittenClause& written) {
  const SourceLocation begin = written.clause.first();
  Token token = tokens.next();
  while (token.kind != 0 && !is_at(token.range, begin)) token = tokens.next();
  if (token.kind == INCLUDE) return take_include(tokens, token, written);
  const bool is_weak = token.kind == WEAK_IMPLIES;
  int depth = 0;    // of parentheses: ".." stands between them
  for (bool is_at_end = false; token.kind != 0 && !is_at_end; token = tokens.next()) {
    if (token.kind == LPAREN) ++depth;
    if (token.kind == RPAREN) --depth;
    take(token, word, written);
    is_at_end = token.kind == QUERY_MARK || (token.kind == DOT && depth == 0);
  }
  if (!is_weak || token.kind != LBRACKET) return;
  for (; token.kind != 0; token = tokens.next()) {
    take(token, word, written);
    if (token.kind == RBRACKET) return;
  }
}

}    // namespace

WrittenClause written_clause(const SourceLocation& location, std::string_view word) {
  const auto [line, column, number] = location;
  WrittenClause written{{number, {line, column, line, column}}, {}};
  if (number == kNoFile) return written;
  const ReadFile& file = current_run().files[number];
  // What the scanner reports and notes was reported and noted before.
  Run again;
  const Run::Scope scope(again);
  for (std::uint32_t i = 0; i <= number; ++i) again.files.add(file.name);
  again.findings.sink = [](const Diagnostic&) {};
  if (file.path.empty()) {
    Tokens tokens(ScannerInput(file.text), number);
    look_up(tokens, word, written);
  } else if (const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(
                 std::fopen(file.path.c_str(), "rbe"), std::fclose);
             in != nullptr) {
    Tokens tokens(ScannerInput(in.get()), number);
    look_up(tokens, word, written);
  }
  return written;
}

}    // namespace zarel
