#pragma once
// origin.h - what a clause of the rewritten program comes from.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/place.h"
#include "model/name_table.h"

namespace zarel {

// What made a clause out of the user's text.
enum class OriginKind : std::uint8_t {
  kWritten,     // nothing: a statement became this one clause
  kFrame,       // a frame, in a head or a body
  kRange,       // a fact over a range of integers
  kQuery,       // a query with function terms
  kTemplate,    // the expansion of a template
};

// An origin's number in the run. The first ones are those that need nothing to be said of them.
enum class OriginId : std::uint32_t { kWritten = 0, kFrame = 1, kRange = 2, kQuery = 3 };

// Where a clause comes from: the place of the user's text, and what made the clause out of it.
struct ClauseSource {
  SourceLocation location = {};
  OriginId origin = OriginId::kWritten;
};

// What made clauses; when that is in the expansion of a template, the template and the invocation.
// An invocation in a template's body has for its origin the expansion which that body was copied
// for, and so on outwards, to an invocation that the program itself has.
struct Origin {
  OriginKind kind = OriginKind::kWritten;
  std::optional<NameId> template_name = {};
  ClauseSource invocation = {};
};

class OriginTable {
 public:
  OriginTable() {
    for (const OriginKind kind :
         {OriginKind::kWritten, OriginKind::kFrame, OriginKind::kRange, OriginKind::kQuery}) {
      origins_.push_back({kind, {}, {}});
    }
  }

  OriginId add(const Origin& origin) {
    origins_.push_back(origin);
    return static_cast<OriginId>(origins_.size() - 1);
  }

  const Origin& operator[](OriginId id) const { return origins_[static_cast<std::size_t>(id)]; }

 private:
  std::vector<Origin> origins_;
};

}    // namespace zarel
