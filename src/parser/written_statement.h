#pragma once
// written_statement.h - a statement of the input as it was written, with the place of each part,
// for whoever speaks to the user of his own rule: clauses keep what a statement means, not how it
// looked.

#include <cstdint>
#include <iterator>
#include <string_view>
#include <vector>

#include "base/place.h"
#include "frames/frame.h"
#include "model/name_table.h"
#include "model/predicate_table.h"

namespace zarel {

// What a node stands for, and its children. A "-" in front of a frame is that of its object.
enum class WrittenKind : std::uint8_t {
  // Terms. In a frame, objects, attributes and classes are terms, too.
  kVariable,     // name
  kAnonymous,    // "_"
  kConstant,     // name, with its quotes if it has some
  kInteger,      // value
  kDecimal,      // a weight with a fraction; value: times 1000, further digits are cut
  kMaxint,       // "#maxint"
  kQualified,    // name ":" second_name
  kFunction,     // name "(" terms ")"
  kAsterisk,     // "*" and "$" among the parameters of an actual predicate
  kDollar,
  // Literals and disjuncts.
  kAtom,           // name, terms; second_name: the frame space, "default" in a template
  kComparison,     // value: BUILTIN; two terms
  kComputation,    // value: BUILTIN (+, *, #int, #succ); operands, then the result, however written
  kExternal,       // "&" name "[" terms "]"
  kGuarded,        // kGuard, kAggregate, kGuard, as written: a guard at least
  kInvocation,     // name "{" kActual... "}" "(" terms ")"
  kFrame,          // the object, kAttribute...; second_name: the frame space
  kMembership,     // the object, the class, kAttribute... behind it; second_name likewise
  kSubclass,       // the lower and the upper class; second_name likewise
  // Parts of them.
  kAttribute,    // value: an ARROW + 1, 0 for none; the attribute's name, then values, which are
                 // terms or frames; is_negated is that of the attribute alone
  kActual,       // name, parameters; second_name: the frame space
  kGuard,        // value: BUILTIN (kEqual for "="); a term
  kAggregate,    // value: AggregateFunction; variables, then kBody
  kBody,         // the literals inside an aggregate
};

inline constexpr std::uint32_t kNoNode = 0xFFFFFFFF;

struct WrittenNode {
  WrittenKind kind = WrittenKind::kConstant;
  bool is_negated = false;             // "not" in front
  bool is_strongly_negated = false;    // "-" in front
  NameId name = {};
  NameId second_name = {};
  std::uint32_t value = 0;
  SourceRange place = {};         // the whole, with what stands in front
  SourceRange name_place = {};    // of the name alone
  std::uint32_t parent = kNoNode;
  std::uint32_t first_child = kNoNode;
  std::uint32_t next_sibling = kNoNode;
  std::uint32_t begin = kNoNode;    // what is in it stands from there to itself; not of a kGuard
};

// A name with a number of arguments, of a template's head.
struct WrittenPredicate {
  NameId name;
  std::uint32_t arity;    // of a formal predicate
  SourceRange place;
};

struct WrittenStatement {
  enum class Kind : std::uint8_t {
    kRule,     // a fact, too: then there is no body
    kRange,    // name, frame_space, in the body its two bounds
    kConstraint,
    kWeakConstraint,
    kQuery,
    kMaxint,            // in the body its term
    kInclude,           // name
    kIncludeLibrary,    // name in "<>"
    kNamespace,         // name is the prefix
    kDefaultSpace,      // name
    kTemplate,          // name, value: the output arity
  };

  // Nodes one behind the other, each linked to the next.
  class List {
   public:
    class Iterator {
     public:
      using difference_type = std::ptrdiff_t;
      using value_type = WrittenNode;
      using pointer = const WrittenNode*;
      using reference = const WrittenNode&;
      using iterator_category = std::forward_iterator_tag;

      Iterator() = default;
      Iterator(const std::vector<WrittenNode>& nodes, std::uint32_t at) : nodes_(&nodes), at_(at) {}
      reference operator*() const { return (*nodes_)[at_]; }
      pointer operator->() const { return &(*nodes_)[at_]; }
      Iterator& operator++() {
        at_ = (*nodes_)[at_].next_sibling;
        return *this;
      }
      Iterator operator++(int) {
        const Iterator before = *this;
        ++*this;
        return before;
      }
      friend bool operator==(const Iterator& a, const Iterator& b) { return a.at_ == b.at_; }

     private:
      const std::vector<WrittenNode>* nodes_ = nullptr;
      std::uint32_t at_ = kNoNode;
    };

    List(const std::vector<WrittenNode>& nodes, std::uint32_t first)
        : nodes_(&nodes), first_(first) {}
    Iterator begin() const { return {*nodes_, first_}; }
    Iterator end() const { return {*nodes_, kNoNode}; }
    bool is_empty() const { return first_ == kNoNode; }
    std::size_t size() const { return static_cast<std::size_t>(std::distance(begin(), end())); }
    const WrittenNode& front() const { return *begin(); }

   private:
    const std::vector<WrittenNode>* nodes_;
    std::uint32_t first_;
  };

  Kind kind = Kind::kRule;
  SourceSpan span = {};    // from the first character to the last
  NameId name = {};
  NameId frame_space = {};
  std::uint32_t value = 0;
  SourceRange name_place = {};

  // A child stands in front of its parent: whoever goes through them backwards, without recursion,
  // meets each parent before what is in it. Terms may be nested very deep.
  std::vector<WrittenNode> nodes = {};
  std::uint32_t first_in_head = kNoNode;
  std::uint32_t first_in_body = kNoNode;
  std::uint32_t weight = kNoNode;    // of a weak constraint, where written
  std::uint32_t level = kNoNode;

  // Of a template.
  std::vector<WrittenPredicate> formals = {};
  std::vector<WrittenPredicate> globals = {};
  std::vector<WrittenStatement> clauses = {};

  List head() const { return {nodes, first_in_head}; }
  List body() const { return {nodes, first_in_body}; }
  List children(const WrittenNode& node) const { return {nodes, node.first_child}; }
  std::uint32_t index(const WrittenNode& node) const {
    return static_cast<std::uint32_t>(&node - nodes.data());
  }
  bool is_fact() const { return kind == Kind::kRule && first_in_body == kNoNode; }
};

// A fact of one atom without terms in terms and without variables. Such facts are not handed over
// as trees: there may be millions. See Note [flat facts].
struct WrittenFlatFact {
  NameId name;
  std::uint32_t arity;
  NameId frame_space;
  SourceSpan span;
  const SourceSpan* declared = nullptr;    // of a row of data: what stands for its name
};

// Told of each statement when it was read, in the order of the text; not of those with an error.
// What it is given lasts for the call, the names as long as the run. A remark is a comment that
// begins with "%!", which stands there; the text is what is behind that.
class StatementObserver {
 public:
  virtual ~StatementObserver() = default;
  virtual void statement(const WrittenStatement& statement) = 0;
  virtual void flat_fact(const WrittenFlatFact& fact) = 0;
  virtual void remark(std::string_view /*text*/, const SourceLocation& /*place*/) {}
};

}    // namespace zarel
