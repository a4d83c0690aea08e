#pragma once
// answer_graph.h - answer sets as a graph.

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbench/answers/answer_set.h"
#include "workbench/pictures/graph.h"

namespace workbench {

// Each object of each space is a box: with its attributes, and the relations that it alone is in,
// as lines; with memberships, subclasses, attributes whose value has a box, and relations of two as
// arrows. A relation of more is a box with an arrow for each argument, one of none a line of a box
// without an object.
class AnswerGraph {
 public:
  // Of these relations and attributes alone, ":" being membership and "::" subclass; of all when
  // there are none.
  explicit AnswerGraph(std::span<const std::string> chosen);

  // Adds an answer set, in a frame of that label; of an empty one, in none.
  void add(const AnswerSet& set, const std::string& label = {});

  const Graph& graph() const { return graph_; }
  std::vector<std::string> never_met() const;    // of the chosen ones, in their order

 private:
  struct Place {    // where the boxes of a set are
    const AnswerSet& set;
    std::uint32_t cluster;
  };
  bool is_chosen(std::string_view name);
  bool takes(const AnswerSet& set, const Item& item);
  void add_boxes(const Place& place, const Item& item);
  void add_item(const Place& place, const Item& item);
  void add_atom(const Place& place, const Item& item);
  void add_statement(const Place& place, const Item& item);
  std::uint32_t cluster(const Place& place, std::string_view space);
  std::uint32_t box(const Place& place, std::string_view space, const zarel::AnswerTerm& term);
  std::uint32_t text_box(std::uint32_t cluster);

  Graph graph_;
  std::vector<std::string> chosen_;
  std::unordered_map<std::string, bool> is_met_;               // the chosen ones
  std::unordered_map<std::string, std::uint32_t> boxes_;       // of the set that is being added,
  std::unordered_map<std::string, std::uint32_t> clusters_;    // by space and name, and by space
  std::unordered_map<std::uint32_t, std::uint32_t> text_boxes_;    // by cluster
};

}    // namespace workbench
