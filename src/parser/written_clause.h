#pragma once
// written_clause.h - looks a clause up in its file again, for a finding that needs more of its text
// than the program keeps.

#include <optional>
#include <string_view>

#include "base/place.h"

namespace zarel {

struct WrittenClause {
  SourceSpan clause;                 // from the first token to the full stop, the query mark, or
                                     // the weight and level behind a weak constraint
  std::optional<SourceSpan> word;    // the first token of this spelling in it
};

// Reads the file (or text) that the location is in once more, up to the end of the clause that
// begins there. A clause that is not found again, since the file has changed or was a pipe, is as
// long as its first character.
WrittenClause written_clause(const SourceLocation& location, std::string_view word);

}    // namespace zarel
