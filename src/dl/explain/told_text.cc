#include "dl/explain/told_text.h"

#include <algorithm>
#include <deque>
#include <span>
#include <vector>

namespace dl {
namespace {

constexpr std::size_t kLongPiece = 1 << 16;
constexpr std::uint32_t kMostIndented = 32;    // levels; see Note [explanations as text]

void append_number(std::string& out, std::uint64_t number) {
  out += std::to_string(number);
}

// " (3 times)"; nothing for once.
void append_times(std::string& out, std::uint64_t times) {
  if (times == 1) return;
  append_number(out += " (", times);
  out += " times)";
}

void append_unproven(std::string& out, bool is_proven) {
  if (!is_proven) out += " (not proven to be the fewest)";
}

}    // namespace

// The text of one proof: a walk through its nodes with a stack of its own, since proofs are deep.
class ProofText {
 public:
  ProofText(ToldText& text, const ToldProof& proof)
      : text_(text), out_(text.out_), proof_(proof), states_(proof.nodes.size(), State::kNew) {}

  void write() {
    for (const std::uint32_t root : proof_.roots) {
      open(root, 0, 0);
      finish();
    }
    while (!postponed_.empty()) {
      const auto [node, depth] = postponed_.front();
      postponed_.pop_front();
      if (states_[node] == State::kWritten) continue;
      out_ += '\n';
      states_[node] = State::kNew;
      open(node, 0, depth);
      finish();
    }
  }

 private:
  enum class State : std::uint8_t { kNew, kPostponed, kWritten };
  // A node whose items are being written, and where in them.
  struct Frame {
    std::uint32_t node;
    std::uint32_t indentation;
    std::uint32_t depth;
    std::size_t item = 0;
    std::size_t element = 0;    // of the item
    std::size_t child = 0;      // of the element
    bool in_item = false;       // its own line is written
    std::size_t next_case = 0;
  };

  void finish() {
    while (!frames_.empty()) {
      if (!write_next(frames_.back())) frames_.pop_back();
    }
  }

  // Writes the next item or case. The frame may have moved afterwards. False: there is none.
  bool write_next(Frame& frame) {
    const ToldNode& node = proof_.nodes[frame.node];
    if (frame.item < node.items.size()) {
      write_item(frame, node.items[frame.item]);
      return true;
    }
    if (frame.next_case == node.cases.size()) return false;
    const ToldNode::Case& next = node.cases[frame.next_case++];
    text_.indent(frame.indentation + 1);
    ((out_ += "if ") += next.assumed) += ':';
    text_.end_line();
    open(next.node, frame.indentation + 2, frame.depth + 1);
    return true;
  }

  void write_item(Frame& frame, const ToldItem& item) {
    if (frame.in_item) return write_element(frame, item);
    if (item.kind == ToldItem::Kind::kAggregate) {
      frame.in_item = true;
      write_line(frame, item);
    } else {
      ++frame.item;
      if (!item.node) return write_line(frame, item);
      open(*item.node, frame.indentation + 1, frame.depth + 1);
    }
  }

  void write_line(const Frame& frame, const ToldItem& item) {
    text_.indent(frame.indentation + 1);
    out_ += item.text;
    if (item.kind == ToldItem::Kind::kAggregate) append_elements(item);
    if (item.kind == ToldItem::Kind::kAtom) out_ += "    [not explained]";
    text_.end_line();
  }

  // The next proof of an element of an aggregate; behind the last one, the item is done.
  void write_element(Frame& frame, const ToldItem& item) {
    const auto elements = written_elements(item);
    while (frame.element < elements.size() && frame.child == elements[frame.element].nodes.size()) {
      ++frame.element;
      frame.child = 0;
    }
    if (frame.element < elements.size()) {
      const std::uint32_t node = elements[frame.element].nodes[frame.child++];
      return open(node, frame.indentation + 2, frame.depth + 1);
    }
    frame.in_item = false;
    frame.element = 0;
    ++frame.item;
  }

  std::span<const ToldItem::Element> written_elements(const ToldItem& item) const {
    const std::span<const ToldItem::Element> all = item.elements;
    return text_.depth_ == 0 ? all : all.first(std::min(all.size(), ToldText::kFewElements));
  }

  // "    [value 60: 30,beta; 30,delta]".
  void append_elements(const ToldItem& item) {
    const auto written = written_elements(item);
    std::string list;
    const auto begin_piece = [&list]() -> std::string& {
      if (!list.empty()) list += "; ";
      return list;
    };
    for (const ToldItem::Element& element : written) begin_piece() += element.tuple;
    if (const std::size_t more = item.elements.size() - written.size() + item.others; more != 0) {
      append_number(begin_piece() += "and ", more);
      list += " more";
    }
    if (item.unneeded != 0) {
      const bool are_all = list.empty();
      append_number(begin_piece() += are_all ? "" : "and ", item.unneeded);
      list += are_all ? " that it does not need" : " more that it does not need";
    }
    out_ += "    [";
    if (!item.value.empty()) ((out_ += "value ") += item.value) += ": ";
    (out_ += list.empty() ? "no elements" : list) += ']';
  }

  // Writes the node's own lines, and begins with its items unless they are written elsewhere.
  void open(std::uint32_t number, std::uint32_t indentation, std::uint32_t depth) {
    const ToldNode& node = proof_.nodes[number];
    text_.indent(indentation);
    out_ += node.atom;
    switch (node.kind) {
      case ToldKind::kFact:
        return write_fact(node);
      case ToldKind::kAssumed:
        return note("assumed");
      case ToldKind::kNotExplained:
        return note("not explained");
      case ToldKind::kRule:
      case ToldKind::kChoice:
      case ToldKind::kCases:
        break;
    }
    if (states_[number] == State::kWritten) return note("see above");
    if (node.is_cut || (text_.depth_ != 0 && depth >= text_.depth_)) {
      out_ += "    ...";
      return text_.end_line();
    }
    if (indentation >= kMostIndented) {
      if (states_[number] == State::kNew) postponed_.push_back({number, depth});
      states_[number] = State::kPostponed;
      return note("see below");
    }
    states_[number] = State::kWritten;
    text_.end_line();
    write_reason(node, indentation + 1);
    frames_.push_back({.node = number, .indentation = indentation, .depth = depth});
  }

  void note(std::string_view text) {
    ((out_ += "    [") += text) += ']';
    text_.end_line();
  }

  void write_fact(const ToldNode& node) {
    out_ += "    [fact";
    if (node.statement && !proof_.statements[*node.statement].place.file.empty()) {
      out_ += ", ";
      text_.place(proof_.statements[*node.statement].place);
    }
    out_ += ']';
    text_.end_line();
  }

  void write_reason(const ToldNode& node, std::uint32_t indentation) {
    text_.indent(indentation);
    out_ += node.kind == ToldKind::kCases ? "by cases: " : "by ";
    if (node.statement) text_.statement(proof_.statements[*node.statement]);
    text_.values(node.with);
    text_.end_line();
    if (node.kind != ToldKind::kChoice) return;
    text_.indent(indentation);
    out_ += "chosen, instead of ";
    for (std::size_t i = 0; i < node.instead_of.size(); ++i) {
      if (i != 0) out_ += ", ";
      out_ += node.instead_of[i];
    }
    text_.end_line();
  }

  ToldText& text_;
  std::string& out_;
  const ToldProof& proof_;
  std::vector<State> states_;
  std::vector<Frame> frames_;
  struct Postponed {
    std::uint32_t node;
    std::uint32_t depth;
  };
  std::deque<Postponed> postponed_;
};

void ToldText::sentence(std::string_view text) {
  out_ += text;
  end_line();
  hand_on();
}

void ToldText::end_line() {
  out_ += '\n';
  if (out_.size() >= kLongPiece) hand_on();
}

void ToldText::hand_on() {
  take_(out_);
  out_.clear();
}

void ToldText::place(const ToldPlace& place) {
  ((out_ += place.file) += ':') += std::to_string(place.line);
  std::string_view separator = " (";
  for (const ToldPlace& use : place.uses) {
    (((out_ += separator) += "from the template ") += use.used) += ", used at ";
    ((out_ += use.file) += ':') += std::to_string(use.line);
    separator = ", ";
  }
  if (!place.uses.empty()) out_ += ')';
}

void ToldText::statement(const ToldStatement& statement) {
  if (statement.place.file.empty()) {
    out_ += statement.text;
    return;
  }
  place(statement.place);
  std::string line = statement.place.file;
  (line += ':') += std::to_string(statement.place.line);
  const auto [entry, is_new] = quoted_.try_emplace(std::move(line), statement.place.column);
  if (!is_new && entry->second == statement.place.column) return;
  entry->second = statement.place.column;
  (out_ += ": ") += statement.text;
}

void ToldText::values(const ToldValues& values, std::string_view before) {
  std::string_view separator = before;
  for (const auto& [variable, value] : values) {
    (((out_ += separator) += variable) += " = ") += value;
    separator = ", ";
  }
}

void ToldText::instance(const ToldInstance& instance) {
  if (instance.statement) {
    statement(*instance.statement);
    values(instance.with);
  } else {
    (out_ += instance.clash) += ", which exclude each other";
  }
  append_times(out_, instance.times);
}

void ToldText::proof(const ToldProof& proof) {
  ProofText(*this, proof).write();
  hand_on();
}

void ToldText::missing(const ToldMissing& missing) {
  out_ += missing.atom;
  const bool is_unknown =
      missing.rules.empty() && missing.other_rules.empty() && !missing.has_other_facts;
  if (is_unknown) {
    out_ += ": no rule has this head";
    std::string_view separator = "; did you mean ";
    for (const std::string& name : missing.similar) {
      (out_ += separator) += name;
      separator = " or ";
    }
    if (!missing.similar.empty()) out_ += '?';
    end_line();
  } else {
    out_ += " is not there:";
    end_line();
    for (const ToldFailure& each : missing.rules) failure(each);
    unfit_rules(missing);
  }
  if (!missing.contrary.empty()) {
    indent(1);
    (out_ += missing.contrary) += " holds";
    end_line();
  }
  hand_on();
}

void ToldText::unfit_rules(const ToldMissing& missing) {
  if (missing.rules.empty() && missing.other_rules.empty()) {
    indent(1);
    out_ += "it is no fact, and no rule has this head";
    return end_line();
  }
  for (const ToldStatement& rule : missing.other_rules) {
    indent(1);
    statement(rule);
    end_line();
    indent(2);
    out_ += "gives other atoms only";
    end_line();
  }
}

void ToldText::failure(const ToldFailure& failure) {
  using State = ToldFailure::Literal::State;
  indent(1);
  statement(failure.statement);
  values(failure.with);
  end_line();
  for (const ToldFailure::Literal& literal : failure.literals) {
    indent(2);
    out_ += literal.state == State::kHolds   ? "holds  "
            : literal.state == State::kFails ? "FAILS  "
                                             : "open   ";
    out_ += literal.text;
    if (!literal.value.empty()) ((out_ += "    [value ") += literal.value) += ']';
    end_line();
    for (const std::string& reason : literal.because) {
      indent(2);
      (out_ += "         ") += reason;
      end_line();
    }
  }
  if (!failure.other_heads.empty()) {
    indent(2);
    std::string_view separator = "the body holds, but the head is true by ";
    for (const std::string& head : failure.other_heads) {
      (out_ += separator) += head;
      separator = ", ";
    }
    end_line();
  }
  if (failure.bindings > 1) {
    indent(2);
    append_number(out_ += "(", failure.bindings - 1);
    out_ += failure.bindings == 2 ? " other choice of values comes as near)"
                                  : " other choices of values come as near)";
    end_line();
  }
  if (failure.was_cut) {
    indent(2);
    out_ += "(not all choices of values were looked at)";
    end_line();
  }
}

void ToldText::outcome(ToldOutcome outcome, bool has_demand) {
  has_demand_ = has_demand;
  switch (outcome) {
    case ToldOutcome::kNone:
      return sentence(has_demand ? "Another answer set holds it." : "There is an answer set.");
    case ToldOutcome::kConstraints:
      return sentence(has_demand ? "No answer set holds it." : "There is no answer set.");
    case ToldOutcome::kRules:
      return sentence(has_demand ? "No answer set holds it, with or without the constraints."
                                 : "There is no answer set, with or without the constraints.");
    case ToldOutcome::kUnknown:
      return sentence(
          has_demand ? "The time was over before it was known whether an answer set holds it."
                     : "The time was over before it was known whether there is an answer set.");
  }
}

void ToldText::lines(const ToldLines& lines) {
  for (const ToldStatement& each : lines.statements) {
    indent(1);
    statement(each);
    end_line();
  }
  for (const std::string& predicate : lines.clashes) {
    indent(1);
    (((out_ += predicate) += " and -") += predicate) += ", which exclude each other";
    end_line();
  }
}

void ToldText::give_up(const ToldLines& given_up, bool has_demand) {
  out_ += has_demand ? "It could hold without" : "There is one without";
  append_unproven(out_, given_up.is_proven);
  out_ += ":";
  end_line();
  lines(given_up);
  hand_on();
}

// What stands against a demand, or against the rules, or against each other.
std::string_view ToldText::conflict_heading(bool is_one) const {
  if (has_demand_) return "It does not go together with";
  return is_one ? "This does not go with the rules" : "These do not go together";
}

void ToldText::conflict(const ToldLines& conflicting) {
  out_ += conflict_heading(conflicting.statements.size() + conflicting.clashes.size() == 1);
  append_unproven(out_, conflicting.is_proven);
  out_ += ':';
  end_line();
  lines(conflicting);
  hand_on();
}

void ToldText::give_up_instances(const ToldInstances& given_up) {
  instances(given_up, "Of these, it is enough to give up");
}

void ToldText::conflict_instances(const ToldInstances& conflicting) {
  instances(conflicting, conflict_heading(conflicting.instances.size() == 1));
}

void ToldText::instances(const ToldInstances& told, std::string_view heading) {
  const auto is_line = [](const ToldInstance& each) {
    return each.statement && each.with.empty() && each.times == 1;
  };
  if (std::ranges::all_of(told.instances, is_line)) return;
  out_ += heading;
  append_unproven(out_, told.is_proven);
  out_ += ':';
  end_line();
  for (const ToldInstance& each : told.instances) {
    indent(1);
    instance(each);
    end_line();
  }
  hand_on();
}

void ToldText::rules(const ToldLines& rules) {
  out_ += "There is one without";
  append_unproven(out_, rules.is_proven);
  out_ += ':';
  end_line();
  lines(rules);
  hand_on();
}

void ToldText::costs(const ToldCosts& costs, bool is_best) {
  (out_ += is_best ? "The best answer set pays " : "The best answer set found pays ") +=
      text_of(costs);
  out_ += is_best ? "." : ", not proven to be the best.";
  end_line();
  hand_on();
}

void ToldText::payment(const ToldPayment& payment) {
  level_ = payment.level;
  (out_ += "pays ") += std::to_string(payment.weight);
  (out_ += " at level ") += std::to_string(payment.level);
  out_ += ": ";
  instance(payment.instance);
  end_line();
  hand_on();
}

void ToldText::avoidance(const ToldAvoidance& avoidance) {
  using Outcome = ToldAvoidance::Outcome;
  indent(1);
  switch (avoidance.outcome) {
    case Outcome::kSameCost:
      out_ += "avoided at the same cost";
      break;
    case Outcome::kDearer:
      (out_ += "avoided only at ") += text_of(avoidance.costs);
      break;
    case Outcome::kUnproven:
      (out_ += "avoided at ") += text_of(avoidance.costs);
      out_ += ", best found";
      break;
    case Outcome::kNever:
      return sentence("no answer set avoids it");
    case Outcome::kCut:
      return sentence("the time was over before it was known what avoids it");
  }
  std::string_view separator = ": then ";
  for (const ToldPayment& each : avoidance.instead) {
    (out_ += separator) += std::to_string(each.weight);
    separator = "; ";
    if (each.level != level_) (out_ += " at level ") += std::to_string(each.level);
    out_ += " for ";
    if (each.instance.statement) place(each.instance.statement->place);
    values(each.instance.with, " with ");
    append_times(out_, each.instance.times);
  }
  if (avoidance.others != 0) {
    append_number(out_ += separator, avoidance.others);
    out_ += " more";
  }
  end_line();
  hand_on();
}

std::string text_of(const ToldCosts& costs) {
  std::string text;
  for (const ToldCost& each : costs) {
    if (each.cost == 0) continue;
    if (!text.empty()) text += ' ';
    (text += '[') += std::to_string(each.cost);
    (text += ':') += std::to_string(each.level);
    text += ']';
  }
  return text.empty() ? "nothing" : text;
}

}    // namespace dl
