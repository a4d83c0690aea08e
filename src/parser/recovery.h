#pragma once
// recovery.h - what the parser does behind a statement that it refused.

#include "base/place.h"

union YYSTYPE;

namespace zarel {

class ProgramBuilder;

// The parser's next token: its kind (YYEMPTY when none is read), value and place.
struct Lookahead {
  int& token;
  YYSTYPE& value;
  SourceRange& place;
  void* scanner;
};

// Tells what was refused, and drops the statement that was begun; it stands from its first token to
// the refused one. The established way is to go on with the refused token, and to be silent until
// some tokens were right. With the run's option, the next token becomes the one behind the faulty
// statement, so that every message is about a mistake of its own; true then: what follows is to be
// reported again.
bool recover(const Lookahead& next, const SourceRange& statement, ProgramBuilder& build);

}    // namespace zarel
