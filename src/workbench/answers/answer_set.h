#pragma once
// answer_set.h - one answer set in memory, as the forms of answers take it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/answer_sink.h"

namespace workbench {

enum class ItemKind : std::uint8_t {
  kAtom,          // relation(arguments)
  kMembership,    // object : class
  kSubclass,      // class :: class
  kValue,         // object[attribute -> value]
  kAttribute,     // object[attribute]
};

// A statement of an answer set, as the parts of its encoding relation(arguments)@space, which stand
// in the set's text: the relation from `begin` on, the space and the arguments behind it, with one
// character between.
struct Item {
  std::size_t begin = 0;
  std::uint32_t relation_size = 0;
  std::uint32_t space_size = 0;
  std::uint32_t arguments_size = 0;
  ItemKind kind = ItemKind::kAtom;
  bool is_negated = false;    // strongly
};

// What an object says of one attribute.
struct ObjectStatement {
  zarel::AnswerTerm object, attribute;
  std::string_view space;
  bool is_negated = false;
  std::string_view arrow;    // without quotes; nothing without a value
  zarel::AnswerTerm value;
};

// What a best answer set costs at one level: numbers of any length.
struct Cost {
  std::string weight, level;
};

class AnswerSet {
 public:
  // Qualified constants are of these name spaces, which outlive the set; null: there are none.
  explicit AnswerSet(const zarel::NamespaceTable* namespaces = nullptr) : namespaces_(namespaces) {}

  std::uint64_t number = 0;     // from 1, in the order of the solver; improving ones by themselves
  bool is_improving = false;    // better than all before it, and not known to be a best one
  std::vector<Cost> costs;      // the highest level first; none without weak constraints

  std::span<const Item> items() const { return items_; }

  // What is looked at stays valid until the set is changed. Spaces are as the program names them,
  // "default" where it names none.
  zarel::AnswerAtom atom(const Item& item) const;                   // of kAtom
  zarel::ClassStatement class_statement(const Item& item) const;    // kMembership, kSubclass
  ObjectStatement statement(const Item& item) const;                // kValue, kAttribute
  std::string_view space(const Item& item) const;
  // Of any kind, as the atom that it is to the solver: frames in a space with their marker.
  zarel::AnswerAtom encoded_atom(const Item& item) const;
  std::size_t arity(const Item& item) const;    // as the program sees it, space left out
  // The whole item as the solver knows it; equal items, and no others, have equal ones.
  std::string_view encoding(const Item& item) const;

  // Calls `visit` with all that each object says, in the byte-wise order of object and space;
  // attributes and values are in order of arrival. The view is valid during the call. All is in
  // their own order where items were put in one.
  using ObjectVisitor = std::function<void(const zarel::AnswerObject&)>;
  void each_object(const ObjectVisitor& visit) const;

  // Leaves out the items that the predicate, of an Item, does not keep.
  template <typename Keeps>
  void keep_if(Keeps&& keeps) {
    std::erase_if(items_, [&keeps](const Item& item) { return !keeps(item); });
  }
  // Gives the items in another order, in which what is said of an object stands together.
  void put_in_order(std::vector<Item> items);

  // For the reader.
  void clear();
  std::string& text() { return text_; }
  void add(const Item& item) { items_.push_back(item); }

 private:
  void each_object_in_order(const ObjectVisitor& visit) const;
  std::string_view relation(const Item& item) const { return part(item.begin, item.relation_size); }
  std::string_view raw_space(const Item& item) const;
  zarel::AnswerTerms arguments(const Item& item) const;
  std::string_view part(std::size_t begin, std::size_t size) const {
    return std::string_view(text_).substr(begin, size);
  }

  std::string text_;
  std::vector<Item> items_;
  bool is_in_order_ = false;
  const zarel::NamespaceTable* namespaces_;
};

}    // namespace workbench
