#pragma once
// frame_builder.h - what the grammar's actions on frames call: objects, attributes, values, and
// what is wrong in them.

#include <array>
#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "frames/frame.h"
#include "frames/frame_encoding.h"
#include "parser/flat_frame.h"
#include "parser/integer_bounds.h"
#include "parser/list_stack.h"
#include "parser/qualified_constants.h"
#include "parser/token_values.h"
#include "parser/written_tree.h"

namespace zarel {

using AttributesMark = ListStack<ATTRIBUTE>::Mark;
using ValuesMark = ListStack<FRAME>::Mark;

struct Membership {
  FrameTerm object;
  FrameTerm class_term;
};

class FrameBuilder {
 public:
  FrameBuilder(WrittenTree& tree, IntegerBounds& bounds) : tree_(tree), bounds_(bounds) {}

  // Objects, attributes and values by what they are written as.
  FrameTerm name(NameId name);
  FrameTerm term(const TERMT& term);               // its text, with its variable if it is one
  FrameTerm function(const TERMT& placeholder);    // the written form, with all variables in it
  FrameTerm negated(const FrameTerm& term);        // under "-"

  // Lists of attributes and of values while they are read.
  ListStack<ATTRIBUTE>& attributes() { return attributes_; }
  ListStack<FRAME>& values() { return values_; }

  // An attribute's name, and the attribute alone or with what it says. A negated frame as a value is
  // reported and counted.
  ATTRIBUTE label(const FrameTerm& name) { return attribute(false, name); }
  ATTRIBUTE negated_label(const FrameTerm& name);    // under "not"
  ATTRIBUTE valueless(const ATTRIBUTE& label);
  ATTRIBUTE with_value(const ATTRIBUTE& label, ARROW arrow, const FRAME& value);
  ATTRIBUTE with_values(const ATTRIBUTE& label, ARROW arrow, ValuesMark values);

  FRAME value(const FrameTerm& term) { return {term, false, NameId{}}; }
  FRAME value_of(const TERMT& constant) { return value(term(constant)); }
  FRAME nested(const FrameTerm& object, AttributesMark attributes);

  // Whole frames, still without their frame space. A "-" inside one that has a "-" itself is
  // reported and counted.
  FRAME molecule(const FrameTerm& object, AttributesMark attributes);
  Membership membership(const NamePair& pair);
  FRAME membership(const Membership& membership);
  FRAME membership(const Membership& membership, AttributesMark class_attributes);
  FRAME subclass(const FrameTerm& object, const FrameTerm& class_term);

  FRAME negated(FRAME frame);    // under "not"

  // The frame in its frame space. A quoted one, which could not carry the frame marker, is reported
  // and counted.
  FRAME in_space(FRAME molecule, WrittenName frame_space);

  // The statements of a flat frame in a frame space, which is what is read; valid until the next.
  std::span<const FrameStatement> flat_frame(const FlatFrame& frame, NameId frame_space);

  // The frame, which stands there, in a head. "not" inside it is reported and counted.
  FRAME in_head(const FRAME& frame, const SourceRange& place);

  void clear() {    // drops what no frame has taken
    attributes_.clear();
    values_.clear();
    if (has_lists_) clear_lists();
    if (has_notes_) clear_notes();
  }

 private:
  FRAME frame(const FrameTerm& object, AttributesMark attributes);
  FRAME frame_of(const FrameTerm& object, const ATTRIBUTE& attribute);
  NameId flat_integer(const FlatFramePart& part);
  void check_space(WrittenName frame_space);
  FRAME checked(const FRAME& frame);
  void note(std::vector<SourceRange>& places);
  void report_negated_values(std::span<const FRAME> values, std::string_view text);
  void clear_notes();
  template <class T>
  StoredList<T> stored(std::span<const T> elements);
  void clear_lists();

  void tell_attribute(const ATTRIBUTE& label, std::size_t values, ARROW arrow);

  WrittenTree& tree_;
  IntegerBounds& bounds_;
  ListStack<ATTRIBUTE> attributes_;
  ListStack<FRAME> values_;
  // The lists of whole frames. No frame outlives its statement, and most statements need no more
  // than this.
  std::array<std::byte, 8192> usual_lists_;
  ProgramStorage lists_{usual_lists_};
  bool has_lists_ = false;
  // Where these stand in the statement, in the order of reading, for what may be wrong with them.
  std::vector<SourceRange> negations_;         // "-" in front
  std::vector<SourceRange> negated_labels_;    // "not" in front
  std::vector<SourceRange> negated_values_;    // of attributes that are not whole yet
  bool has_notes_ = false;
  std::vector<FrameStatement> statements_;    // of a flat frame
  std::vector<FrameStatement> open_;          // each object in it, at its attribute
};

}    // namespace zarel
