#pragma once
// failure.h - why a run of dl ends before its time.

#include "base/diagnostic.h"

namespace dl {

// Thrown where a run cannot go on. Nothing is thrown through the generated parser: its builder
// keeps the first mistake instead. See Note [lines as shown].
struct Failure {
  zarel::Diagnostic diagnostic;
};

// Note [lines as shown]
// The line that dl's messages show is where the parser had got to, or the first term of the
// statement: a line or two beside the true place where a statement goes over several. It stays what
// it was, as Diagnostic::parser_line; the place is the true one.

}    // namespace dl
