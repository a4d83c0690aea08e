#pragma once
// check_relations.h - predicates, attributes and classes that are used and not given, or the other
// way round.

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>

#include "workbench/answers/item_pattern.h"
#include "workbench/checks/check_context.h"
#include "workbench/syntax/foreign_text.h"

namespace workbench {

// A predicate of the program (then `scope` is 0), or a local one of a template (by its number).
struct RelationKey {
  zarel::NameId name = {};
  zarel::NameId space = {};    // the same for all of a template
  std::uint32_t arity = 0;
  std::uint32_t scope = 0;

  friend bool operator==(const RelationKey&, const RelationKey&) = default;
};

struct RelationKeyHash {
  std::size_t operator()(const RelationKey& key) const {
    std::uint64_t hash = zarel::to_index(key.name);
    for (const std::uint32_t part : {zarel::to_index(key.space), key.arity, key.scope}) {
      hash = (hash ^ part) * 0x9E3779B97F4A7C15U;
    }
    return static_cast<std::size_t>(hash ^ (hash >> 32U));
  }
};

// Where something happens first, and how often.
struct Occurrences {
  std::size_t count = 0;
  zarel::SourceSpan first = {};

  void add(const zarel::SourceSpan& span) {
    if (count++ == 0) first = span;
  }
};

struct Relation {
  RelationKey key;
  std::uint32_t number;
  std::array<Occurrences, 2> given;    // [1]: strongly negated
  std::array<Occurrences, 2> read;     // outside of "not"
  std::array<Occurrences, 2> read_under_not;
  std::array<std::size_t, 2> facts;    // of those that are given; of a range 2
};

class Relations {
 public:
  explicit Relations(CheckContext& context) : context_(context) {}

  // The templates' names and formal predicates must be known before their clauses come.
  void look_at(const zarel::WrittenStatement& statement);
  void look_at(const zarel::WrittenFlatFact& fact);

  // When all was read.
  void report(std::span<const ItemPattern> filters, const ForeignText& foreign);

  const std::deque<Relation>& all() const { return relations_; }    // by number
  // The relation of an atom of the program; null when its name or its frame space is a variable.
  const Relation* find(const zarel::WrittenNode& atom, std::size_t arity) const;
  bool is_given(zarel::NameId name, std::size_t arity) const;    // in any frame space
  // How often an attribute is given with "->".
  std::size_t times_given(zarel::NameId attribute) const;
  // Whether a head with a variable for a name may give it.
  bool may_be_given_by_variable(const RelationKey& key) const;

 private:
  struct Template;
  struct Attribute {
    std::array<Occurrences, 8> given;    // by arrow; [0]: without a value
    std::array<Occurrences, 8> read;
  };

  void look_at_clause(const zarel::WrittenStatement& clause, std::uint32_t scope);
  void look_at_template(const zarel::WrittenStatement& definition);
  void give(const zarel::WrittenStatement& clause, const zarel::WrittenNode& disjunct);
  void give_frame(const zarel::WrittenStatement& clause, const zarel::WrittenNode& disjunct);
  void read(const zarel::WrittenStatement& clause, const zarel::WrittenNode& literal);
  std::optional<RelationKey> key_of(zarel::NameId name, zarel::NameId space, std::size_t arity);
  Relation& at(const RelationKey& key);
  void give_frames_by_variable(zarel::NameId space);

  const Relation* given_elsewhere(const RelationKey& key, std::size_t sign);
  void report_unknown(const Relation& relation, int sign, const ForeignText& foreign);
  void report_unused(const Relation& relation, int sign, const ForeignText& foreign);
  void report_frames(const ForeignText& foreign);
  void report_attribute(zarel::NameId name, const Attribute& attribute, const ForeignText& foreign);
  void report_filters(std::span<const ItemPattern> filters, const ForeignText& foreign);
  bool is_named(const ItemPattern& filter, const ItemPattern::Reading& reading,
                const ForeignText& foreign) const;
  std::string filter_help(const ItemPattern& filter) const;
  std::string shown(const Relation& relation, int sign) const;
  void suggest(Message& message, zarel::NameId name, std::span<const std::string_view> candidates);
  std::vector<std::string_view> given_names(std::uint32_t scope) const;

  CheckContext& context_;
  std::deque<Relation> relations_;    // in the order of the text
  std::unordered_map<RelationKey, Relation*, RelationKeyHash> by_key_;
  std::unordered_map<zarel::NameId, std::vector<const Relation*>> by_name_;
  // By sign; without frame space, once by arity and once without. Filled when first asked for.
  std::array<std::unordered_map<RelationKey, const Relation*, RelationKeyHash>, 2> given_anywhere_;
  std::unordered_set<std::uint64_t> given_by_variable_;    // arity, and the frame space if known
  bool spaces_vary_ = false;                               // such a head in any frame space
  Relation* last_flat_ = nullptr;

  std::vector<zarel::NameId> template_names_ = {zarel::NameId{}};    // by scope
  std::uint32_t scope_ = 0;                                          // of the clause
  std::unordered_map<zarel::NameId, bool> bound_names_;    // formal predicates (false), globals

  std::map<zarel::NameId, Attribute> attributes_;
  std::map<zarel::NameId, Attribute> classes_;    // in [0]
  bool attributes_vary_ = false;                  // a head has a variable there
  bool classes_vary_ = false;
  std::size_t suggestions_ = 0;
};

}    // namespace workbench
