#include "workbench/checks/check_constants.h"

#include <algorithm>
#include <utility>

#include "model/names.h"

namespace workbench {
namespace {

using zarel::CLAUSET;
using zarel::NameId;
using zarel::Place;
using zarel::SourceLocation;
using zarel::SourceSpan;
using zarel::TermKind;
using zarel::TERMT;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

// Of a program with more quoted names, the others are not compared: each costs a look into the
// table of names.
constexpr std::size_t kMostQuoted = 50'000;

bool is_fact(const CLAUSET& clause) {
  return clause.kind() == CLAUSET::Kind::kRule && clause.body().empty() &&
         clause.head().size() == 1;
}

// An atom's own terms stand behind its relation and its frame space.
std::span<const TERMT> own_terms(const zarel::ATOMT& atom) {
  return atom.terms().subspan(std::min<std::size_t>(2, atom.terms().size()));
}

bool is_plain_word(std::string_view text) {
  return !text.empty() && zarel::is_lower_case(text[0]) &&
         std::ranges::all_of(text, [](char c) { return zarel::is_in_word(c); });
}

std::uint64_t hash_of(std::span<const TERMT> terms) {
  std::uint64_t hash = terms.size();
  for (const TERMT& term : terms) {
    hash = (hash ^ term.index() ^ (static_cast<std::uint64_t>(term.kind) << 32U)) *
           0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return hash;
}

}    // namespace

void Constants::look_at(const WrittenStatement& statement) {
  ++statements_;
  if (statement.kind == WrittenStatement::Kind::kTemplate) {
    for (const WrittenStatement& clause : statement.clauses) look_at(clause);
    return;
  }
  for (const WrittenNode& node : statement.nodes) {
    if (node.kind != WrittenKind::kConstant) continue;
    const auto [entry, is_new] =
        uses_.try_emplace(node.name, Use{{statement.span.file, node.place}, statements_, false});
    if (!is_new && entry->second.statement != statements_) entry->second.is_elsewhere = true;
  }
  if (statement.kind == WrittenStatement::Kind::kRule && !statement.is_fact()) {
    look_for_candidate(statement);
  }
}

// A constant of a rule without variables that stands in its head and in its body.
void Constants::look_for_candidate(const WrittenStatement& rule) {
  std::unordered_map<NameId, SourceSpan> in_head;
  const std::uint32_t last_of_head = [&] {
    std::uint32_t last = 0;
    for (const WrittenNode& disjunct : rule.head()) last = rule.index(disjunct);
    return last;
  }();
  std::optional<Candidate> found;
  for (std::uint32_t i = 0; i < rule.nodes.size(); ++i) {
    const WrittenNode& node = rule.nodes[i];
    if (node.kind == WrittenKind::kVariable || node.kind == WrittenKind::kAnonymous) return;
    if (node.kind == WrittenKind::kAtom && context_.is_variable(node.name)) return;
    if (node.kind != WrittenKind::kConstant || !is_plain_word(context_.spelling(node.name)))
      continue;
    const bool is_term_of_atom =
        node.parent != zarel::kNoNode && (rule.nodes[node.parent].kind == WrittenKind::kAtom ||
                                          rule.nodes[node.parent].kind == WrittenKind::kFunction);
    if (!is_term_of_atom) continue;
    const SourceSpan span{rule.span.file, node.place};
    if (i <= last_of_head) {
      in_head.try_emplace(node.name, span);
    } else if (const auto head = in_head.find(node.name); head != in_head.end() && !found) {
      found = Candidate{node.name, statements_, head->second, span};
    }
  }
  if (found) candidates_.push_back(*found);
}

// Names that occur with and without quotes.
std::vector<std::pair<NameId, NameId>> Constants::quoted_pairs() const {
  const zarel::NameTable& names = context_.run().names;
  std::vector<std::pair<NameId, NameId>> pairs;
  std::size_t quoted = 0;
  for (std::uint32_t i = 0; i < names.size() && quoted < kMostQuoted; ++i) {
    const std::string_view spelling = names.spelling(NameId{i});
    if (spelling.size() < 3 || spelling.front() != '"') continue;
    const std::string_view inside = spelling.substr(1, spelling.size() - 2);
    if (!is_plain_word(inside)) continue;
    ++quoted;
    if (const auto plain = names.find(inside)) pairs.emplace_back(*plain, NameId{i});
  }
  return pairs;
}

void Constants::find_in_facts(const std::unordered_set<NameId>& names) {
  if (names.empty()) return;
  for (const CLAUSET& clause : context_.run().clauses) {
    if (!is_fact(clause)) continue;
    for (const TERMT& term : own_terms(clause.head().front())) {
      if (term.kind != TermKind::kConstant) continue;
      const NameId name{term.index()};
      if (names.contains(name)) in_facts_.try_emplace(name, clause.source().location);
    }
  }
}

// The word, as a whole, in the line from the location on; else the location.
Place Constants::word_at(const SourceLocation& location, std::string_view word) {
  if (!texts_) texts_.emplace(context_.run().files);
  const std::string_view line = texts_->line(location.file, location.line);
  const bool is_word = zarel::is_in_word(word.front());
  for (std::size_t at = line.find(word, location.column - 1); at != std::string_view::npos;
       at = line.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    if (is_word && ((at > 0 && (zarel::is_in_word(line[at - 1]) || line[at - 1] == '"')) ||
                    (end < line.size() && zarel::is_in_word(line[end]))))
      continue;
    const auto first = static_cast<std::uint32_t>(at + 1);
    const auto last = static_cast<std::uint32_t>(end);
    return context_.place({location.file, {location.line, first, location.line, last}});
  }
  return context_.run().files.place(location);
}

// The atom that begins there, as far as its line goes.
Place Constants::atom_at(const SourceLocation& location) {
  if (!texts_) texts_.emplace(context_.run().files);
  const std::string_view line = texts_->line(location.file, location.line);
  bool is_in_string = false;
  int depth = 0;
  std::size_t end = location.column - 1;
  for (; end < line.size(); ++end) {
    const char c = line[end];
    if (c == '"') is_in_string = !is_in_string;
    if (is_in_string) continue;
    if (c == '(' || c == '[') ++depth;
    if (c == ')' || c == ']') --depth;
    if (c == '.' && depth == 0) break;
  }
  return context_.place({location.file,
                         {location.line, location.column, location.line,
                          std::max(location.column, static_cast<std::uint32_t>(end))}});
}

Place Constants::place_of(NameId name) {
  if (const auto use = uses_.find(name); use != uses_.end())
    return context_.place(use->second.first);
  return word_at(in_facts_.at(name), context_.spelling(name));
}

void Constants::report_contradictions() {
  const zarel::PredicateTable& predicates = context_.run().predicates;
  std::unordered_set<std::uint32_t> negative;
  std::unordered_map<std::uint32_t, std::uint32_t> opposites;    // positive to negative
  for (std::uint32_t predicate = 0; predicate < predicates.size(); ++predicate) {
    const std::string_view name = predicates.name(predicate);
    if (!name.starts_with('-')) continue;
    negative.insert(predicate);
    const auto positive = predicates.find(zarel::without_minus(name));
    if (positive) opposites[*positive] = predicate;
  }
  if (opposites.empty()) return;
  std::unordered_map<std::uint64_t, std::vector<const CLAUSET*>> denied;
  for (const CLAUSET& clause : context_.run().clauses) {
    if (!is_fact(clause) || !negative.contains(clause.head().front().predicate())) continue;
    denied[hash_of(clause.head().front().terms())].push_back(&clause);
  }
  if (denied.empty()) return;
  for (const CLAUSET& clause : context_.run().clauses) {
    if (!is_fact(clause)) continue;
    const zarel::ATOMT& atom = clause.head().front();
    const auto opposite = opposites.find(atom.predicate());
    if (opposite == opposites.end()) continue;
    const auto same = denied.find(hash_of(atom.terms()));
    if (same == denied.end()) continue;
    for (const CLAUSET* other : same->second) {
      if (other->head().front().predicate() != opposite->second ||
          !std::ranges::equal(other->head().front().terms(), atom.terms()))
        continue;
      Message& message = context_.tell("contradiction", atom_at(other->source().location),
                                       "this contradicts another fact: no answer set holds both");
      message.label = "says that it is false";
      message.notes.push_back({atom_at(clause.source().location), "says that it is true"});
      message.help = "leave one of the two out";
      break;
    }
  }
}

void Constants::report(const ForeignText& foreign) {
  const auto pairs = quoted_pairs();
  std::unordered_set<NameId> asked;
  for (const auto& [plain, quoted] : pairs) asked.insert({plain, quoted});
  for (const Candidate& candidate : candidates_) {
    if (!uses_.at(candidate.constant).is_elsewhere) asked.insert(candidate.constant);
  }
  find_in_facts(asked);
  for (const Candidate& candidate : candidates_) {
    const std::string name = context_.text(candidate.constant);
    if (uses_.at(candidate.constant).is_elsewhere || in_facts_.contains(candidate.constant) ||
        foreign.mentions(name))
      continue;
    Message& message = context_.tell("constant-rule", context_.place(candidate.head),
                                     name + " is a constant, which only this rule speaks of");
    message.label = "lower-case words are constants";
    message.notes.push_back({context_.place(candidate.body), "the same constant"});
    std::string upper = name;
    upper[0] = static_cast<char>(upper[0] - 'a' + 'A');
    message.help = "variables begin with an upper-case letter: " + upper;
  }
  for (const auto& [plain, quoted] : pairs) {
    const auto is_term = [this](NameId name) {
      return uses_.contains(name) || in_facts_.contains(name);
    };
    if (!is_term(plain) || !is_term(quoted)) continue;
    // A fact that has both tells them apart.
    const auto a = uses_.find(plain);
    const auto b = uses_.find(quoted);
    if (a != uses_.end() && b != uses_.end() && a->second.statement == b->second.statement)
      continue;
    const auto first = in_facts_.find(plain);
    const auto second = in_facts_.find(quoted);
    if (first != in_facts_.end() && second != in_facts_.end() &&
        first->second.line == second->second.line &&
        first->second.column == second->second.column && first->second.file == second->second.file)
      continue;
    const std::string word = context_.text(plain);
    Message& message = context_.tell("quoted-and-plain", place_of(quoted),
                                     concat({"\"", word, "\" and ", word, " are two constants"}));
    message.label = "with quotes here";
    message.notes.push_back({place_of(plain), "without quotes here"});
    message.help = "write one of them everywhere";
  }
  report_contradictions();
}

}    // namespace workbench
