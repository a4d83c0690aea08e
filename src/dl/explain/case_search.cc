#include "dl/explain/case_search.h"

#include <algorithm>
#include <tuple>

namespace dl {
namespace {

constexpr std::uint64_t kMostSteps = 20'000'000;
constexpr unsigned kMostNested = 64;

}    // namespace

// What follows from an atom that was not met gives nothing that is asked for, so a split with such
// an atom proves nothing.
CaseSearch::CaseSearch(const SupportGraph& graph, const BackwardSearch& met, Marking& marking)
    : graph_(graph), marking_(marking), contexts_(1) {
  for (std::uint32_t i = 0; i < graph.splits().size(); ++i) {
    const std::span<const AtomNumber> atoms = graph.atoms_of(graph.splits()[i]);
    const auto is_met = [&met](AtomNumber atom) { return met.has_met(atom); };
    if (std::ranges::all_of(atoms, is_met)) splits_.push_back(i);
  }
}

void CaseSearch::run() {
  const std::size_t deepest = std::min<std::size_t>(splits_.size(), kMostNested);
  for (unsigned depth = 1; depth <= deepest && may_go_on(); ++depth) saturate(0, depth);
}

bool CaseSearch::may_go_on() const {
  return !marking_.has_reached_goal() && marking_.steps() < kMostSteps;
}

// Tries all splits until none gives more.
void CaseSearch::saturate(ContextNumber context, unsigned depth) {
  std::size_t failed = 0;    // splits in a row
  for (std::size_t i = 0; failed < splits_.size() && may_go_on(); i = (i + 1) % splits_.size()) {
    const bool has_more = is_applicable(splits_[i]) && try_split(splits_[i], context, depth);
    failed = has_more ? 0 : failed + 1;
  }
}

bool CaseSearch::is_applicable(std::uint32_t split) const {
  const std::span<const AtomNumber> atoms = graph_.atoms_of(graph_.splits()[split]);
  const auto is_marked = [this](AtomNumber atom) { return marking_.is_marked(atom); };
  return marking_.is_open(split) && std::ranges::none_of(atoms, is_marked);
}

// Returns whether the split has given lemmas.
bool CaseSearch::try_split(std::uint32_t split, ContextNumber context, unsigned depth) {
  const std::span<const AtomNumber> atoms = graph_.atoms_of(graph_.splits()[split]);
  const auto first = static_cast<ContextNumber>(contexts_.size());
  const auto end = static_cast<ContextNumber>(first + atoms.size());
  const std::size_t lemmas = lemmas_.size();
  contexts_.resize(end, Context{context, {}});
  for (ContextNumber i = first; i < end; ++i) assume(atoms[i - first], i, depth);
  const std::vector<AtomNumber> common = common_atoms(first, end);
  if (common.empty()) {
    contexts_.resize(first);
    lemmas_.resize(lemmas);
    return false;
  }
  const Reason reason(Reason::kLemma, static_cast<std::uint32_t>(lemmas_.size()));
  lemmas_.push_back({split, first});
  for (const AtomNumber atom : common) {
    if (marking_.is_marked(atom)) continue;    // it follows from a lemma before
    marking_.mark(atom, reason);
    marking_.run();
  }
  return true;
}

// Notes what follows from the atom, which is taken back then.
void CaseSearch::assume(AtomNumber atom, ContextNumber context, unsigned depth) {
  const std::size_t before = marking_.marks().size();
  marking_.mark(atom, Reason(Reason::kAssumed));
  marking_.run();
  if (depth > 1) saturate(context, depth - 1);
  std::vector<ContextMark> marks;
  for (std::size_t i = before; i < marking_.marks().size(); ++i) {
    const Point point = marking_.marks()[i];
    marks.push_back({point, marking_.reason(point), marking_.order(point)});
  }
  std::ranges::sort(marks, std::ranges::less(), &ContextMark::point);
  contexts_[context].marks = std::move(marks);
  marking_.keep(before);
}

// The atoms that are marked in all of the contexts; first those that were marked soonest in all.
std::vector<AtomNumber> CaseSearch::common_atoms(ContextNumber first, ContextNumber end) const {
  struct Common {
    std::uint32_t last;     // of the places at which the contexts have it
    std::uint32_t first;    // at which the first one has it
    Point point;
    bool operator<(const Common& other) const {
      return std::tie(last, first, point) < std::tie(other.last, other.first, other.point);
    }
  };
  std::vector<Common> common;
  for (ContextNumber i = first; i < end; ++i) {
    const std::vector<ContextMark>& marks = contexts_[i].marks;
    const std::uint32_t start = std::ranges::min(marks, {}, &ContextMark::order).order;
    std::vector<Common> left;
    auto mark = marks.begin();
    if (i == first) {
      for (const ContextMark& each : marks) {
        left.push_back({each.order - start, each.order - start, each.point});
      }
    }
    for (const Common& each : common) {
      while (mark != marks.end() && mark->point < each.point) ++mark;
      if (mark == marks.end()) break;
      if (mark->point != each.point) continue;
      left.push_back({std::max(each.last, mark->order - start), each.first, each.point});
    }
    common = std::move(left);
  }
  std::sort(common.begin(), common.end());
  std::vector<AtomNumber> atoms;
  for (const Common& each : common) {
    if (!graph_.is_quota(each.point)) atoms.push_back(each.point);
  }
  return atoms;
}

}    // namespace dl
