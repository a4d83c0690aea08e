#pragma once
// frame.h - objects and their attributes, as the input states them.
//
// The way of a frame: parsed into a FRAME by the grammar; standardised (frame_translation.h) into
// literals and auxiliary rules; each statement of it encoded (frame_encoding.h) as an atom; solved;
// decoded by the answer-set reader (output/frame_molecules.h) and nested again. Both ends of the
// encoding take its names from model/generic_encoding.h.

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/name_table.h"
#include "model/program_storage.h"
#include "model/term.h"

namespace zarel {

// The values index `arrows`.
enum class ARROW : int {
  kNone = -1,    // an attribute without a value
  kSingle = 0,
  kSet,
  kSignature,
  kSetSignature,
  kInheritable,
  kInheritableSet,
  kInstance,
  kSubclass,
  kNegatedSignature,
};
inline constexpr std::size_t kArrowCount = 9;
// As they stand in atoms: all but the last are quoted constants.
inline constexpr std::array<std::string_view, kArrowCount> arrows = {
    "\"->\"", "\"->>\"", "\"=>\"", "\"=>>\"", "\"*->\"", "\"*->>\"", "\":\"", "\"::\"", "!=>"};
static_assert(static_cast<std::size_t>(ARROW::kNegatedSignature) + 1 == kArrowCount);

// What stands for an object, an attribute or a value: its text, perhaps with "-" in front, and the
// variables in it.
struct FrameTerm {
  NameId text;
  StoredList<TERMT> variables;

  std::string_view spelling() const { return names().spelling(text); }
  bool is_negated() const { return spelling().starts_with('-'); }
};

// The term of a name: a variable when it begins, behind an optional "-", with an upper-case letter.
FrameTerm frame_term(NameId text);
// The term of another text with these variables, such as a function term.
FrameTerm frame_term(NameId text, std::span<const TERMT> variables);
// The same with "-" in front.
FrameTerm negated(const FrameTerm& term);

struct ATTRIBUTE;

// An object with its attributes. Lists are never changed once they are made: copies share them and
// are as good as deep. A nested frame stands in the frame space of the outermost one.
class FRAME {
 public:
  FRAME() = default;    // without meaning, for the parser's value stack
  FRAME(const FrameTerm& subject, bool is_negated, NameId framespace);
  FRAME(const FrameTerm& subject, std::span<const ATTRIBUTE> attributes, bool is_negated,
        NameId framespace);
  FRAME(const FrameTerm& subject, StoredList<ATTRIBUTE> attributes,
        NameId framespace);    // takes the list as it is

  const FrameTerm& subject() const { return subject_; }
  std::string_view getSubject() const { return subject_.spelling(); }
  std::span<const ATTRIBUTE> getAttributes() const;
  NameId getFramespace() const { return framespace_; }
  void set_framespace(NameId framespace) { framespace_ = framespace; }
  bool is_negated() const { return is_negated_; }    // under "not" in a body
  void set_negated(bool is_negated) { is_negated_ = is_negated; }

  bool isSimple() const { return attributes_.is_empty(); }
  bool has_nested_negation() const;    // one at any depth
  bool has_true_negation() const;      // an attribute at any depth has "-" in front
  bool isAtomic() const;               // one attribute with at most one value, and that simple

  // The variables in order of appearance, repeats kept.
  void getVariables(std::vector<TERMT>& out) const;

  static std::uint32_t& nextAuxAtom();    // numbers "faa" atoms; one count for the run

  // Established, and not called by the program: see established.h.
  void setSubject(std::string_view text);
  bool hasNegation() const;                         // an own attribute is under "not"
  void addAttribute(const ATTRIBUTE& attribute);    // copies those before
  void toStrings(std::vector<std::string>& out) const;

 private:
  bool is_negated_;
  NameId framespace_;
  FrameTerm subject_;
  StoredList<ATTRIBUTE> attributes_;
};

// One attribute of a frame. Its name may have "-" in front: the statement is then strongly negated.
struct ATTRIBUTE {
  bool is_negated;    // under "not"
  ARROW arrow;
  FrameTerm name;
  StoredList<FRAME> values;

  std::string_view getName() const { return name.spelling(); }
  std::span<const FRAME> getValues() const { return values.elements(); }
  bool isSimple() const { return values.is_empty(); }
  static std::uint32_t& nextAuxAtom();    // numbers "aaa" atoms; one count for the run

  // Established, and not called by the program: see established.h.
  bool isNegated() const { return is_negated; }
  void addValue(const FRAME& value);    // copies the values before
  void toStrings(std::vector<std::string>& out, std::string_view subject) const;
  void getVariables(std::vector<TERMT>& out, const FrameTerm* subject) const;
};

// An attribute without values.
ATTRIBUTE attribute(bool is_negated, const FrameTerm& name, ARROW arrow = ARROW::kNone);

}    // namespace zarel
