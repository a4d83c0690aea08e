#include "parser/recovery.h"

#include <algorithm>
#include <array>

#include "grammar.h"
#include "model/run.h"
#include "parser/program_builder.h"
#include "parser/scanner_actions.h"

int yylex(YYSTYPE* value, zarel::SourceRange* location, void* scanner);
zarel::ScannerActions* yyget_extra(void* scanner);

namespace zarel {
namespace {

template <std::size_t size>
bool is_one_of(int token, const std::array<int, size>& kinds) {
  return std::find(kinds.begin(), kinds.end(), token) != kinds.end();
}

// What stands nowhere but at a statement's beginning, or is one behind a whole body.
bool always_begins_statement(int token) {
  constexpr std::array kKinds = std::to_array<int>({TEMPLATE, INCLUDE, NAMESPACE, WEAK_IMPLIES});
  return is_one_of(token, kKinds);
}

bool may_begin_statement(int token) {
  constexpr std::array kKinds =
      std::to_array<int>({ID, VARIABLE, HASH_ID, MAXINT, MINUS, AT, IMPLIES, FLAT_FACT});
  return always_begins_statement(token) || is_one_of(token, kKinds);
}

// Behind such a token the statement goes on in the next line.
bool asks_for_more(int token) {
  constexpr std::array kKinds = std::to_array<int>(
      {COMMA,     COLON,    SEMICOLON, BAR,       OR,           IMPLIES, WEAK_IMPLIES,
       LPAREN,    LBRACKET, LBRACE,    EQ,        NEQ,          GT,      LE,
       GE,        LT,       EQUAL,     PLUS,      STAR,         NOT,     MINUS,
       AMPERSAND, ::ARROW,  SET_ARROW, SIG_ARROW, SIG_SET_ARROW});
  return is_one_of(token, kKinds);
}

bool is_behind(const SourceRange& first, const SourceRange& second) {
  return second.first_line == first.last_line && second.first_column == first.last_column + 1;
}

class Recovery {
 public:
  Recovery(const Lookahead& next, const SourceRange& statement)
      : next_(next), statement_(statement), scanner_(*yyget_extra(next.scanner)) {}

  // The refused token begins a statement of its own, by the look of the lines. The place is that of
  // what was read last in front of it.
  bool begins_another(const SourceRange& read_last) const {
    if (next_.token == YYEOF) return true;
    if (next_.place.first_line <= read_last.last_line) return false;
    return always_begins_statement(next_.token) || next_.token == IMPLIES ||
           (may_begin_statement(next_.token) && is_at_margin());
  }

  void skip(bool is_in_template) {
    if (has_lost_its_quotes()) {
      skip_all();
    } else if (is_in_template || scanner_.is_template(statement_)) {
      skip_template();
    } else {
      skip_statement();
    }
  }

  // Behind the number of "#maxint = 20" the parser waits for "+" only: a line of its own ends it.
  bool is_maxint() const { return scanner_.is_maxint(statement_); }

  void note_braces() { scanner_.set_brace_depth(next_.token == LBRACE ? 1 : 0); }

 private:
  void read() { next_.token = yylex(&next_.value, &next_.place, next_.scanner); }

  // At the column of the faulty statement, or further left, on a line of its own.
  bool is_at_margin() const {
    return next_.place.first_line > statement_.first_line &&
           next_.place.first_column <= statement_.first_column;
  }

  // A string over several lines in the faulty statement: its quote was to close another one, and
  // everything behind is turned inside out.
  bool has_lost_its_quotes() const {
    const SourceRange& string = scanner_.long_string();
    return string.first_line > statement_.first_line ||
           (string.first_line == statement_.first_line &&
            string.first_column >= statement_.first_column);
  }

  bool begins_with(const SourceRange& token) const {
    return statement_.first_line == token.first_line &&
           statement_.first_column == token.first_column;
  }

  void skip_all() {
    scanner_.be_silent();
    while (next_.token != YYEOF) read();
  }

  void skip_statement() {
    bool may_end = false;
    for (bool is_first = true; next_.token != YYEOF; is_first = false) {
      if (is_at_margin() &&
          (always_begins_statement(next_.token) || (may_end && may_begin_statement(next_.token)))) {
        return;
      }
      const int passed = next_.token;
      const SourceRange place = next_.place;
      read();
      if (has_lost_its_quotes()) return skip_all();
      if (passed == DOT && !(is_first && is_slip(place)) && !goes_on_behind_dot(place)) return;
      if (passed == QUERY_MARK && !(next_.token == MINUS && is_behind(place, next_.place))) return;
      may_end = !asks_for_more(passed);
    }
  }

  // A full stop that is refused in the middle of a statement was to be something else, or is too
  // many; and one may stand in what was meant as a word.
  bool is_slip(const SourceRange& dot) const {
    const bool is_inside = !begins_with(dot) && next_.place.first_line == dot.last_line;
    return is_inside || (next_.token == ID && is_behind(dot, next_.place));
  }

  // The full stop may be half of a range, or stand in a number; and costs stand behind one.
  bool goes_on_behind_dot(const SourceRange& dot) {
    if (next_.token == LBRACKET) {
      while (next_.token != RBRACKET && next_.token != DOT && next_.token != YYEOF) read();
      if (next_.token != YYEOF) read();
      return false;
    }
    if (!is_behind(dot, next_.place)) return false;
    if (next_.token == NUMBER) return true;
    if (next_.token != DOT) return false;
    read();
    return true;
  }

  // To the brace that closes the definition. Where a brace is missing in one of its statements,
  // that is at the statement's end.
  void skip_template() {
    int depth = scanner_.brace_depth();
    while (next_.token != YYEOF) {
      const int passed = next_.token;
      const SourceRange place = next_.place;
      const bool closes = passed == RBRACE && (depth == 0 || place.first_column == 1);
      const int depth_before = closes ? 0 : depth;
      scanner_.set_brace_depth(depth_before);
      read();
      depth = scanner_.brace_depth();
      const bool is_new_line = next_.place.first_line > place.last_line;
      if (passed == DOT && is_new_line && depth_before > 1) {
        depth = 1 + (next_.token == LBRACE ? 1 : 0) - (next_.token == RBRACE ? 1 : 0);
      }
      if (next_.token == TEMPLATE && is_new_line) return;
      if (closes && next_.token != LPAREN && next_.token != LBRACE && next_.token != GLOBAL) return;
    }
  }

  const Lookahead& next_;
  const SourceRange& statement_;
  ScannerActions& scanner_;
};

}    // namespace

bool recover(const Lookahead& next, const SourceRange& statement, ProgramBuilder& build) {
  if (!current_run().options.skips_faulty_statements) {
    yyget_extra(next.scanner)->found_mistake();
    build.report_refusal(statement, false);
    build.skipped_statement();
    return false;
  }
  Recovery recovery(next, statement);
  const bool is_in_template = build.templates().is_open();
  const bool lacks_full_stop = (build.could_end_statement() || recovery.is_maxint()) &&
                               recovery.begins_another(build.read_last());
  build.report_refusal(statement, lacks_full_stop);
  if (!lacks_full_stop || is_in_template) recovery.skip(is_in_template);
  recovery.note_braces();
  build.skipped_statement();
  return true;
}

}    // namespace zarel
