#pragma once
// instances.h - what the variables among the keys of atoms can stand for.
//
// Note [instances]
// A rule with a variable among its keys, a_3(R,d,Y,X) :- a_2(symmetric,d,R), a_3(R,d,X,Y), makes
// all relations depend on each other: clingo grounds them as one recursive component, in which no
// negation is stratified. So the rule is written once for each relation that R can stand for, and
// a_3 is folded nevertheless (see Note [folded atoms]).
//
// What can stand for a variable is what can reach all places of the body that give it a value. A
// constant can reach an argument from a fact, from a head that has it there, and from a head with a
// variable there for which it can stand. The least fixpoint of this is more than what will be
// derived, never less. Nothing is known of a variable that only a builtin or an aggregate gives a
// value, and of other terms. A predicate is kept as it is where a head could be in any of its
// relations, where a key is a compound term or #maxint, and where the instances would be too many.
//
// An atom whose relations are not those of the rule's instances becomes a helper that has the atom
// of each relation as a rule: inside an aggregate, and where "_" or an unknown value is negated.

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "dl/relations.h"
#include "dl/values.h"

namespace dl {

// What of an open statement has instances.
struct InstancePlan {
  struct Slot {             // what varies
    VariableId variable;    // kUnnamed: a "_" of its own
    Values values;
  };
  struct Key {
    bool is_slot;
    std::uint32_t id;    // a slot or a Symbol
  };
  struct Atom {    // one that is written by its keys
    AtomShape shape;
    std::array<Key, kMostKeys> keys;
    bool must_exist;    // in a relation that something derives
  };
  std::vector<Slot> slots;
  std::vector<Atom> atoms;
  std::vector<AtomShape> views;    // atoms that become helpers
};

class Instances {
 public:
  // For the predicates that the folding, which has seen the whole program, leaves undecided.
  explicit Instances(Folding& folding)
      : folding_(folding), undecided_(folding.undecided()), relations_(folding) {}

  // First all rules, weak constraints and the query are added, then all facts, with their arguments
  // listed; then decide() has the folding keep those predicates that have to be.
  void add_rule(const Statement& statement);
  void end_rules();
  void add_fact(const Statement& statement);
  void decide();
  // Whether the attributes of frames cannot be folded: then all of this is of no use.
  bool has_failed() const { return has_failed_; }
  // The predicates that decide() has kept.
  const PredicateNames& kept() const { return kept_; }

  // How an open statement of the program, whose arguments are listed, is written.
  InstancePlan plan(const Statement& statement);
  // Calls `visit` with the values of the plan's slots, instance by instance.
  using Visit = std::function<void(const std::vector<Symbol>&)>;
  void each(const InstancePlan& plan, const Visit& visit) const;
  // The relation of an atom in the instance with these values.
  static Relation relation_of(const InstancePlan::Atom& atom, const std::vector<Symbol>& values);
  // The relations of an atom of the last plan.
  std::vector<Relation> relations_of(const AtomShape& atom) const;

  const std::string& text(Symbol symbol) const { return relations_.text(symbol); }
  std::uint32_t keys(PredicateId predicate) const { return relations_.predicate(predicate).keys; }

 private:
  using Domains = std::unordered_map<VariableId, Values>;
  using Variables = std::unordered_set<VariableId>;
  using RuleId = std::uint32_t;
  struct Head {
    RuleId rule;
    std::uint32_t atom;
  };
  // Facts that begin alike.
  struct FactKind {
    RelationId relation = 0;
    std::vector<std::uint32_t> places;    // that have to be known
  };

  std::span<const Argument> keys_of(const Shapes& all, const AtomShape& atom) const;
  bool has_open_keys(const Shapes& all, const AtomShape& atom) const;
  bool is_open(const Shapes& all, const AtomShape& atom) const;
  RelationId relation_of(const Shapes& all, const AtomShape& atom);
  RelationId every_relation(PredicateId predicate);
  bool check_keys(const AtomShape& atom, bool is_head);

  void want_variable(RuleId rule, VariableId variable);
  void want_argument(const AtomShape& atom, std::uint32_t place);
  void want_heads(const std::vector<Head>& heads, std::uint32_t place);
  bool is_wanted(RelationId relation, std::uint32_t place) const;

  FactKind kind_of(const Statement& statement, std::uint32_t head);
  void add_relation(RelationId relation);
  void add_argument(RelationId relation, std::uint32_t place, const Argument& argument,
                    const Domains& domains);
  void add_head(const AtomShape& head, RelationId relation, const Domains& domains);
  void add_open_head(const AtomShape& head, const Domains& domains);

  Variables passed_on(const RuleShape& rule) const;
  void watch(RuleId rule, const Variables& variables);
  void evaluate(RuleId rule);
  void settle();
  void changed(RelationId relation);
  void wake(const std::vector<RuleId>& rules);
  bool is_tired() const;

  bool matches(const Shapes& all, const AtomShape& atom, RelationId relation) const;
  Values values_at(const Shapes& all, const AtomShape& atom, std::uint32_t place);
  Domains domains(const Shapes& all, const RuleShape& rule, const Variables& variables);
  InstancePlan plan(const Shapes& all, const RuleShape& rule);
  bool walk(const InstancePlan& plan, std::uint64_t most_steps, const Visit& visit) const;
  bool is_derived(const Relation& relation) const;
  std::size_t count(const InstancePlan& plan);
  void keep(PredicateId predicate);
  void keep(std::string_view predicate);
  bool keep_the_most_numerous();
  std::size_t most() const;

  Folding& folding_;
  PredicateNames undecided_;
  PredicateNames kept_;
  Relations relations_;
  Shapes rules_;
  Shapes scratch_;    // of one statement
  std::vector<RuleId> open_rules_;
  std::unordered_map<RelationId, std::vector<Head>> heads_;    // open ones in every_relation()
  std::vector<std::vector<Head>> all_heads_;                   // by predicate

  // The arguments that have to be known, by relation or predicate, and place.
  std::unordered_set<std::uint64_t> wanted_;              // of a relation
  std::unordered_set<std::uint64_t> wanted_of_each_;      // of all relations of a predicate
  std::unordered_set<std::uint64_t> wanted_somewhere_;    // of some relation of a predicate
  std::unordered_set<std::uint64_t> wanted_variables_;    // by rule
  std::vector<std::pair<RuleId, VariableId>> new_variables_;

  std::unordered_map<std::string, FactKind> fact_kinds_;
  std::string fact_begin_;
  std::string last_begin_;
  FactKind* last_kind_ = nullptr;

  std::unordered_map<std::uint64_t, Values> values_;    // by relation and place
  std::vector<char> is_derived_;                        // by relation
  std::vector<std::vector<RelationId>> derived_;        // by predicate
  std::vector<char> derives_any_;                       // by predicate: an unknown relation
  std::unordered_map<RelationId, std::vector<RuleId>> readers_;
  std::vector<std::vector<RuleId>> open_readers_;    // by predicate
  std::vector<std::vector<RuleId>> all_readers_;     // by predicate
  std::unordered_map<RuleId, Variables> passed_on_;
  std::vector<RuleId> waiting_;
  std::vector<char> waits_;    // by rule
  std::uint64_t work_ = 0;
  bool has_failed_ = false;
};

}    // namespace dl
