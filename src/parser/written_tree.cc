#include "parser/written_tree.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "model/run.h"
#include "parser/text_range.h"

namespace zarel {
namespace {

bool begins_before(const SourceRange& a, const SourceRange& b) {
  return std::tie(a.first_line, a.first_column) < std::tie(b.first_line, b.first_column);
}

SourceRange first_word(const SourceRange& whole, NameId name) {
  return range_of_text(whole.first_line, whole.first_column, names().spelling(name));
}

}    // namespace

void WrittenTree::start_file(StatementObserver* observer) {
  observer_ = observer;
  leave_template();
}

WrittenNode& WrittenTree::node_at(std::size_t depth) {
  return statement_.nodes[parts_[parts_.size() - 1 - depth]];
}

void WrittenTree::push(const WrittenNode& node) {
  const auto self = static_cast<std::uint32_t>(statement_.nodes.size());
  parts_.push_back(self);
  statement_.nodes.push_back(node);
  statement_.nodes.back().begin = std::min(node.begin, self);
}

// The first of the parts from `begin` to `end`, which become a list.
std::uint32_t WrittenTree::linked(std::size_t begin, std::size_t end, std::uint32_t parent) {
  for (std::size_t i = begin; i < end; ++i) {
    WrittenNode& part = statement_.nodes[parts_[i]];
    part.parent = parent;
    part.next_sibling = i + 1 < end ? parts_[i + 1] : kNoNode;
  }
  return begin < end ? parts_[begin] : kNoNode;
}

WrittenNode& WrittenTree::node(WrittenKind kind, std::size_t count, std::uint32_t value) {
  const auto self = static_cast<std::uint32_t>(statement_.nodes.size());
  const std::size_t begin = parts_.size() - count;
  const std::uint32_t first = linked(begin, parts_.size(), self);
  std::uint32_t leftmost = self;
  for (std::size_t i = begin; i < parts_.size(); ++i) {
    leftmost = std::min(leftmost, statement_.nodes[parts_[i]].begin);
  }
  parts_.resize(begin);
  push({.kind = kind,
        .value = value,
        .place = here(),
        .name_place = here(),
        .first_child = first,
        .begin = leftmost});
  return statement_.nodes.back();
}

WrittenNode& WrittenTree::named(WrittenKind kind, std::size_t count, NameId name,
                                const SourceRange* name_place) {
  WrittenNode& result = node(kind, count);
  result.name = name;
  result.name_place = name_place != nullptr ? *name_place : first_word(result.place, name);
  return result;
}

void WrittenTree::qualified(NameId prefix, NameId local) {
  leaf(WrittenKind::kQualified, prefix);
  node_at(0).second_name = local;
  node_at(0).name_place = first_word(here(), prefix);
}

void WrittenTree::sort(std::size_t count) {
  std::sort(parts_.end() - static_cast<std::ptrdiff_t>(count), parts_.end(),
            [this](std::uint32_t a, std::uint32_t b) {
              return begins_before(statement_.nodes[a].place, statement_.nodes[b].place);
            });
}

void WrittenTree::move_first_behind(std::size_t count) {
  sort(count);
  const auto first = parts_.end() - static_cast<std::ptrdiff_t>(count);
  std::rotate(first, first + 1, parts_.end());
}

void WrittenTree::negate() {
  node_at(0).is_negated = true;
  node_at(0).place = here();
}

void WrittenTree::negate_strongly() {
  node_at(0).is_strongly_negated = true;
  node_at(0).place = here();
}

// The aggregate and its guards are the last parts.
void WrittenTree::guarded(std::size_t guards, BUILTIN first, BUILTIN second) {
  sort(guards + 1);
  BUILTIN comparison = first;
  for (std::size_t i = parts_.size() - guards - 1; i < parts_.size(); ++i) {
    const std::uint32_t part = parts_[i];
    if (statement_.nodes[part].kind == WrittenKind::kAggregate) continue;
    const auto self = static_cast<std::uint32_t>(statement_.nodes.size());
    statement_.nodes.push_back({.kind = WrittenKind::kGuard,
                                .value = static_cast<std::uint32_t>(comparison),
                                .place = statement_.nodes[part].place,
                                .first_child = part,
                                .begin = statement_.nodes[part].begin});
    statement_.nodes[part].parent = self;
    parts_[i] = self;
    comparison = second;
  }
  node(WrittenKind::kGuarded, guards + 1);
}

void WrittenTree::end_body() {
  node(WrittenKind::kBody, body_sizes_.back());
  body_sizes_.pop_back();
}

void WrittenTree::open_template(NameId name, const SourceRange& name_place, std::uint32_t arity) {
  template_.emplace();
  template_->kind = WrittenStatement::Kind::kTemplate;
  template_->name = name;
  template_->name_place = name_place;
  template_->value = arity;
  template_->formals = std::move(formals_);
  template_->globals = std::move(globals_);
  errors_before_template_ = errors_before_;
  finish();
}

void WrittenTree::close_template() {
  if (!template_) return;
  statement_ = *std::exchange(template_, std::nullopt);
  statement_.span = work_.where();
  errors_before_ = errors_before_template_;
  is_whole_ = true;
  is_open_ = false;
}

void WrittenTree::leave_template() {
  template_.reset();
  finish();
}

void WrittenTree::statement(WrittenStatement::Kind kind, const WrittenCost& cost) {
  statement_.kind = kind;
  statement_.span = work_.where();
  std::size_t end = parts_.size();
  if (cost.has_level) statement_.level = parts_[--end];
  if (cost.has_weight) statement_.weight = parts_[--end];
  statement_.first_in_head = linked(0, head_size_, kNoNode);
  statement_.first_in_body = linked(head_size_, end, kNoNode);
  is_whole_ = true;
  is_open_ = false;
}

void WrittenTree::statement(WrittenStatement::Kind kind, NameId name,
                            const SourceRange* name_place) {
  statement(kind);
  statement_.name = name;
  statement_.name_place = name_place != nullptr ? *name_place : here();
}

void WrittenTree::range(NameId name, const SourceRange* name_place, NameId frame_space) {
  statement(WrittenStatement::Kind::kRange, name, name_place);
  statement_.frame_space = frame_space;
}

void WrittenTree::flat_fact(NameId name, std::uint32_t arity, NameId frame_space,
                            const SourceSpan* declared) {
  observer_->flat_fact({name, arity, frame_space, work_.where(), declared});
}

// A clause of a template goes there; what is not whole, or has an error, goes nowhere.
void WrittenTree::finish() {
  if (is_whole_ && current_run().findings.errors == errors_before_) {
    if (template_) {
      template_->clauses.push_back(statement_);
    } else {
      observer_->statement(statement_);
    }
  }
  statement_.name = {};
  statement_.name_place = {};
  statement_.value = 0;
  statement_.nodes.clear();
  statement_.formals.clear();
  statement_.globals.clear();
  statement_.clauses.clear();
  statement_.first_in_head = statement_.first_in_body = kNoNode;
  statement_.weight = statement_.level = kNoNode;
  parts_.clear();
  formals_.clear();
  globals_.clear();
  head_size_ = 0;
  body_sizes_.clear();
  is_whole_ = false;
  is_open_ = observer_ != nullptr;
  errors_before_ = current_run().findings.errors;
}

}    // namespace zarel
