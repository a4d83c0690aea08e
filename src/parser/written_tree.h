#pragma once
// written_tree.h - makes the tree of the statement that is being read, for the run's observer.

#include <optional>
#include <span>
#include <vector>

#include "model/report.h"
#include "parser/written_statement.h"

namespace zarel {

// Which parts of a weak constraint's cost were written.
struct WrittenCost {
  bool has_weight = false;
  bool has_level = false;
};

// Note [written statements]
// The grammar reduces from left to right and from the inside outwards: what a construct is made of
// is whole when the construct is, and was told last. So the builders' functions tell the tree what
// they make, and it keeps a stack of what no construct has taken yet. Each function takes its parts
// off the stack, and puts the construct there in their place, where the work stands. Without an
// observer, and behind the statement's end (when builders call each other for what nobody wrote),
// is_open() is false and nothing is told.
class WrittenTree {
 public:
  explicit WrittenTree(Work& work) : work_(work) {}

  void start_file(StatementObserver* observer);
  bool is_open() const { return is_open_; }
  void pause() { is_open_ = false; }    // to the end of the statement

  // A part without parts of its own.
  void leaf(WrittenKind kind, NameId name = {}, std::uint32_t value = 0) {
    push({.kind = kind, .name = name, .value = value, .place = here(), .name_place = here()});
  }
  void qualified(NameId prefix, NameId local);

  // A construct that takes the last `count` parts. Without a place for it, the name is what the
  // construct begins with.
  WrittenNode& node(WrittenKind kind, std::size_t count, std::uint32_t value = 0);
  WrittenNode& named(WrittenKind kind, std::size_t count, NameId name,
                     const SourceRange* name_place = nullptr);

  // Puts the last `count` parts into the order of the text; the first of the text behind the
  // others.
  void sort(std::size_t count);
  void move_first_behind(std::size_t count);

  void negate();             // "not" in front of the last part
  void negate_strongly();    // "-"
  void set_space(NameId frame_space) { node_at(0).second_name = frame_space; }
  void guarded(std::size_t guards, BUILTIN first, BUILTIN second);

  // Elements of a head and of a body, or of the body inside an aggregate, which end_body() makes a
  // part.
  void head_element() { ++head_size_; }
  void begin_body() { body_sizes_.push_back(0); }
  void body_element() { ++body_sizes_.back(); }
  void end_body();

  // A template's head.
  void formal(NameId name, std::uint32_t arity) { formals_.push_back({name, arity, here()}); }
  void global(NameId name, const SourceRange& place) { globals_.push_back({name, 0, place}); }
  void open_template(NameId name, const SourceRange& name_place, std::uint32_t arity);
  void close_template();
  void leave_template();

  // The statement is whole, and has what was told of it; it is handed over at its end.
  void statement(WrittenStatement::Kind kind, const WrittenCost& cost = {});
  void statement(WrittenStatement::Kind kind, NameId name, const SourceRange* name_place = nullptr);

  void range(NameId name, const SourceRange* name_place, NameId frame_space);
  void flat_fact(NameId name, std::uint32_t arity, NameId frame_space,
                 const SourceSpan* declared = nullptr);

  void end_statement() {
    if (observer_ != nullptr) finish();
  }

 private:
  SourceRange here() const { return work_.where().range; }
  WrittenNode& node_at(std::size_t depth);    // 0: the last part
  void push(const WrittenNode& node);
  void finish();
  std::uint32_t linked(std::size_t begin, std::size_t end, std::uint32_t parent);

  Work& work_;
  StatementObserver* observer_ = nullptr;
  bool is_open_ = false;
  bool is_whole_ = false;
  int errors_before_ = 0;    // of the run, when the statement began
  int errors_before_template_ = 0;
  WrittenStatement statement_;          // the running one; its memory is used again
  std::vector<std::uint32_t> parts_;    // that no construct has taken
  std::size_t head_size_ = 0;
  std::vector<std::size_t> body_sizes_;    // the outermost first
  std::vector<WrittenPredicate> formals_;
  std::vector<WrittenPredicate> globals_;
  std::optional<WrittenStatement> template_;    // that is open
};

}    // namespace zarel
