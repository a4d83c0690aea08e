#include "workbench/checks/check_safety.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "workbench/messages/nearest.h"

namespace workbench {
namespace {

using zarel::kNoNode;
using zarel::NameId;
using zarel::SourceRange;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;
using Names = std::unordered_set<NameId>;

// A variable, and where it stands.
struct Use {
  NameId name;
  const SourceRange* place;
  bool is_predicate = false;    // stands for its name
};

// Of a statement with more variables without a value, the others are told without a look at what
// follows from them, and at what was meant.
constexpr std::size_t kMostFollowed = 100;

constexpr std::string_view kOfComparison = "of the comparison";

class Safety {
 public:
  Safety(const WrittenStatement& statement, ClauseScope scope, CheckContext& context)
      : statement_(statement), scope_(scope), context_(context) {}

  bool check() {
    note_outer();
    for (const WrittenNode& literal : statement_.body()) bind(literal, bound_, nullptr);
    settle(bound_);
    for (const WrittenNode& disjunct : statement_.head()) need_head(disjunct);
    for (const WrittenNode& literal : statement_.body()) need(literal);
    for (const std::uint32_t part : {statement_.weight, statement_.level}) {
      if (part == kNoNode) continue;
      const char* const what = part == statement_.level ? "of the level" : "of the weight";
      need_all(statement_.nodes[part], bound_, what);
    }
    return !reported_.empty() || has_anonymous_;
  }

 private:
  template <class Visit>
  void each_variable(const WrittenNode& node, Visit visit) const {
    if (node.kind == WrittenKind::kGuard) {
      return each_variable(statement_.nodes[node.first_child], visit);
    }
    for (std::uint32_t i = node.begin; i <= statement_.index(node); ++i) {
      const WrittenNode& part = statement_.nodes[i];
      if (part.kind == WrittenKind::kVariable) visit(Use{part.name, &part.place});
      if (part.kind != WrittenKind::kAtom || scope_ == ClauseScope::kTemplate) continue;
      if (context_.is_variable(part.name)) visit(Use{part.name, &part.name_place, true});
      if (context_.is_variable(part.second_name)) visit(Use{part.second_name, &part.place});
    }
  }

  void bind_all(const WrittenNode& node, Names& bound) const {
    each_variable(node, [&](const Use& use) { bound.insert(use.name); });
  }

  // Variables that stand outside the braces of aggregates are the statement's.
  void note_outer() {
    for (const WrittenNode& disjunct : statement_.head()) bind_all(disjunct, outer_);
    for (const WrittenNode& literal : statement_.body()) {
      if (literal.kind != WrittenKind::kGuarded) {
        bind_all(literal, outer_);
        continue;
      }
      for (const WrittenNode& part : statement_.children(literal)) {
        if (part.kind == WrittenKind::kGuard) bind_all(part, outer_);
      }
    }
  }

  // An "==": when all of one side has a value, the other side gets one.
  struct Equality {
    const WrittenNode* sides[2];
  };

  // What the literal gives values by itself. Inside an aggregate, equalities go to its own list.
  void bind(const WrittenNode& literal, Names& bound, std::vector<Equality>* inner) {
    if (literal.is_negated) return;
    switch (literal.kind) {
      case WrittenKind::kComparison: {
        if (literal.value != static_cast<std::uint32_t>(zarel::BUILTIN::kEqual)) return;
        const WrittenNode& left = statement_.nodes[literal.first_child];
        const WrittenNode& right = statement_.nodes[left.next_sibling];
        (inner != nullptr ? *inner : equalities_).push_back({{&left, &right}});
        return;
      }
      case WrittenKind::kGuarded:
        for (const WrittenNode& part : statement_.children(literal)) {
          if (part.kind == WrittenKind::kGuard &&
              part.value == static_cast<std::uint32_t>(zarel::BUILTIN::kEqual))
            bind_all(part, bound);
        }
        return;
      case WrittenKind::kFrame:
      case WrittenKind::kMembership:
        bind_frame(literal, bound);
        return;
      default:
        bind_all(literal, bound);
    }
  }

  // An attribute under "not" gives nothing; a frame of such alone, not even its object.
  void bind_frame(const WrittenNode& frame, Names& bound) const {
    bool gives_object = frame.kind == WrittenKind::kMembership;
    for (const WrittenNode& part : statement_.children(frame)) {
      if (part.kind != WrittenKind::kAttribute || part.is_negated) continue;
      gives_object = true;
      bind_all(part, bound);
    }
    if (!gives_object) return;
    for (const WrittenNode& part : statement_.children(frame)) {
      if (part.kind != WrittenKind::kAttribute) bind_all(part, bound);
    }
  }

  // Each equality waits for the variables of each side; a side without one left gives the other.
  void settle(Names& bound) const { settle(equalities_, bound); }
  void settle(const std::vector<Equality>& equalities, Names& bound) const {
    struct Side {
      std::size_t missing = 0;
      std::size_t equality = 0;
      std::size_t which = 0;
    };
    std::vector<Side> sides;
    std::unordered_map<NameId, std::vector<std::size_t>> waiting;
    std::vector<std::size_t> ready;
    for (std::size_t i = 0; i < equalities.size(); ++i) {
      for (const std::size_t which : {0U, 1U}) {
        const std::size_t number = sides.size();
        sides.push_back({0, i, which});
        Names own;
        bind_all(*equalities[i].sides[which], own);
        for (const NameId name : own) {
          if (bound.contains(name)) continue;
          waiting[name].push_back(number);
          ++sides[number].missing;
        }
        if (sides[number].missing == 0) ready.push_back(number);
      }
    }
    while (!ready.empty()) {
      const Side side = sides[ready.back()];
      ready.pop_back();
      Names given;
      bind_all(*equalities[side.equality].sides[1 - side.which], given);
      for (const NameId name : given) {
        if (!bound.insert(name).second) continue;
        for (const std::size_t number : waiting[name]) {
          if (--sides[number].missing == 0) ready.push_back(number);
        }
      }
    }
  }

  void need_head(const WrittenNode& disjunct) {
    need_all(disjunct, bound_, statement_.is_fact() ? "" : "of the head");
    for (std::uint32_t i = disjunct.begin; i <= statement_.index(disjunct); ++i) {
      const WrittenNode& part = statement_.nodes[i];
      if (part.kind == WrittenKind::kAnonymous) tell_anonymous(part, "of the head");
    }
  }

  // "not p(_)" asks for any value; "not p(f(_))" would have to build a term out of one.
  void need_under_not(const WrittenNode& literal) {
    need_all(literal, bound_, "under not");
    for (std::uint32_t i = literal.begin; i <= statement_.index(literal); ++i) {
      const WrittenNode& part = statement_.nodes[i];
      if (part.kind == WrittenKind::kAnonymous &&
          statement_.nodes[part.parent].kind == WrittenKind::kFunction)
        tell_anonymous(part, "under not");
    }
  }

  void need(const WrittenNode& literal) {
    switch (literal.kind) {
      case WrittenKind::kComparison:
        return need_all(literal, bound_, kOfComparison);
      case WrittenKind::kGuarded:
        for (const WrittenNode& part : statement_.children(literal)) {
          if (part.kind == WrittenKind::kGuard) {
            need_all(part, bound_, kOfComparison);
          } else {
            need_in_aggregate(part);
          }
        }
        return;
      case WrittenKind::kFrame:
      case WrittenKind::kMembership:
      case WrittenKind::kSubclass:
        return need_in_frame(literal, bound_);
      default:
        if (literal.is_negated) need_under_not(literal);
    }
  }

  void need_in_frame(const WrittenNode& frame, const Names& bound) {
    if (frame.is_negated) return need_all(frame, bound, "under not");
    for (const WrittenNode& part : statement_.children(frame)) {
      if (!part.is_negated) continue;
      need_all(statement_.nodes[frame.first_child], bound, "under not");
      need_all(part, bound, "under not");
    }
  }

  void need_in_aggregate(const WrittenNode& aggregate) {
    is_in_aggregate_ = true;
    Names bound;
    std::vector<Equality> equalities;
    const WrittenNode* body = nullptr;
    for (const WrittenNode& part : statement_.children(aggregate)) {
      if (part.kind == WrittenKind::kBody) body = &part;
    }
    // A variable of the statement has its value from outside, or is told of there.
    each_variable(aggregate, [&](const Use& use) {
      if (outer_.contains(use.name)) bound.insert(use.name);
    });
    for (const WrittenNode& literal : statement_.children(*body)) bind(literal, bound, &equalities);
    settle(equalities, bound);
    for (const WrittenNode& part : statement_.children(aggregate)) {
      if (part.kind == WrittenKind::kVariable) need_all(part, bound, "of the aggregate");
    }
    for (const WrittenNode& literal : statement_.children(*body)) {
      const bool is_frame = literal.kind == WrittenKind::kFrame;
      if (is_frame) need_in_frame(literal, bound);
      if (literal.is_negated && !is_frame) need_all(literal, bound, "under not");
      if (literal.kind == WrittenKind::kComparison) need_all(literal, bound, kOfComparison);
    }
    is_in_aggregate_ = false;
  }

  void need_all(const WrittenNode& node, const Names& bound, std::string_view where) {
    each_variable(node, [&](const Use& use) {
      if (bound.contains(use.name) || bound_.contains(use.name)) return;
      if (reported_.insert(use.name).second) tell(use, where);
      bound_.insert(use.name);
      if (reported_.size() <= kMostFollowed) settle(bound_);
    });
  }

  bool has_value(NameId name) const { return bound_.contains(name) && !reported_.contains(name); }

  // A variable that has a value and is like the one without: the only one that occurs once, or the
  // one whose name is nearest.
  std::string_view meant(NameId variable) const {
    std::unordered_map<NameId, int> occurrences;
    std::vector<std::string_view> candidates;
    for (const WrittenNode& literal : statement_.body()) {
      each_variable(literal, [&](const Use& use) {
        if (has_value(use.name) && ++occurrences[use.name] == 1) {
          candidates.push_back(context_.spelling(use.name));
        }
      });
    }
    for (const WrittenNode& disjunct : statement_.head()) {
      each_variable(disjunct, [&](const Use& use) { ++occurrences[use.name]; });
    }
    std::vector<std::string_view> once;
    for (const auto& [name, count] : occurrences) {
      if (count == 1 && has_value(name)) once.push_back(context_.spelling(name));
    }
    if (once.size() == 1) return once.front();
    return nearest(context_.spelling(variable), candidates);
  }

  void tell(const Use& use, std::string_view where) {
    if (statement_.is_fact()) return tell_fact(use);
    const std::string name = context_.text(use.name);
    std::string text = "the variable " + name;
    text.append(" ").append(where).append(" has no value");
    Message& message =
        context_.tell("unsafe-variable", context_.place(statement_, *use.place), text);
    message.label = where == kOfComparison ? "a comparison gives no value"
                                           : concat({name, " occurs in no positive literal of the ",
                                                     is_in_aggregate_ ? "aggregate" : "body"});
    const bool is_followed = reported_.size() <= kMostFollowed;
    const std::string_view other = is_followed ? meant(use.name) : std::string_view{};
    if (!other.empty()) ((message.help = "did you mean ") += other) += "? otherwise ";
    (message.help += "add a literal that gives ") += name + " a value";
  }

  void tell_fact(const Use& use) {
    const std::string name = context_.text(use.name);
    std::string lower = name;
    lower[0] = static_cast<char>(lower[0] - 'A' + 'a');
    Message& message = context_.tell("upper-case-fact", context_.place(statement_, *use.place),
                                     name + " in a fact is a variable, and has no value");
    message.label = "upper-case words are variables";
    message.help = "write " + lower;
    if (!use.is_predicate) message.help.append(" or \"").append(name).append("\"");
    message.fixes.push_back({Fix::Kind::kReplace, message.place, lower});
  }

  void tell_anonymous(const WrittenNode& node, std::string_view where) {
    if (std::exchange(has_anonymous_, true)) return;
    Message& message = context_.tell("unsafe-variable", context_.place(statement_, node.place),
                                     concat({"the _ ", where, " has no value"}));
    message.label = "_ is a variable of its own, which occurs nowhere else";
    message.help = "write a variable that the body gives a value, or a constant";
  }

  const WrittenStatement& statement_;
  ClauseScope scope_;
  CheckContext& context_;
  Names outer_;
  Names bound_;
  std::vector<Equality> equalities_;
  Names reported_;
  bool has_anonymous_ = false;    // that is reported
  bool is_in_aggregate_ = false;
};

}    // namespace

bool check_safety(const WrittenStatement& statement, ClauseScope scope, CheckContext& context) {
  return Safety(statement, scope, context).check();
}

}    // namespace workbench
