#pragma once
// fact_builder.h - facts of a program that are no text: the rows of a file of data.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "frames/frame.h"
#include "model/report.h"
#include "model/term.h"
#include "parser/program_builder.h"

namespace zarel {

// Makes what the statements would make that say the same, and tells the observer of statements,
// too. Integers beyond "#maxint" are reported. While it lives, nothing else is read by its builder.
class FactBuilder {
 public:
  // The file has this number in the run's table.
  FactBuilder(ProgramBuilder& builder, std::uint32_t file);

  std::uint32_t file() const { return file_; }

  // What "#maxint" has set so far; without it the greatest integer that there is.
  std::int64_t greatest_integer() const;

  // Where what is made from now on stands, in the file.
  void stand_at(const SourceRange& place) { place_ = place; }

  // A name or a string as it would be written, with its quotes.
  static NameId name(std::string_view spelling) { return names().intern(spelling); }

  // name(terms)@frame_space, of a term at least; each is a constant or an integer. For the observer
  // the name stands at `declared`.
  void fact(NameId name, std::span<const TERMT> terms, NameId frame_space,
            const SourceSpan& declared);

  // object : class.
  void member(const TERMT& object, NameId of_class, NameId frame_space);

  // object[name arrow value, ...], of an attribute at least.
  struct Attribute {
    NameId name;
    ARROW arrow;
    TERMT value;
  };
  void object(const TERMT& object, std::span<const Attribute> attributes, NameId frame_space);

 private:
  TERMT term(const TERMT& term);
  NameId space(NameId name);
  FrameTerm subject(const TERMT& object);
  void frame(FRAME frame, NameId frame_space);

  ProgramBuilder& builder_;
  std::uint32_t file_;
  SourceRange place_{1, 1, 1, 1};
  WorkScope scope_;
};

}    // namespace zarel
