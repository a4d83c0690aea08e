#pragma once
// program_graph.h - what a program consists of, as a graph: taken from its statements while they
// are read.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "parser/written_statement.h"
#include "workbench/pictures/graph.h"
#include "zarel/program.h"

namespace workbench {

// Watches a program of which nothing was read so far, which outlives it. Every statement is passed
// on to who has watched the program before.
class ProgramWatch : public zarel::StatementObserver {
 public:
  explicit ProgramWatch(zarel::Program& program);
  ~ProgramWatch() override;
  ProgramWatch(const ProgramWatch&) = delete;
  ProgramWatch& operator=(const ProgramWatch&) = delete;

  void statement(const zarel::WrittenStatement& statement) override;
  void flat_fact(const zarel::WrittenFlatFact& fact) override;
  void remark(std::string_view text, const zarel::SourceLocation& place) override;

  // When all was read.
  virtual const Graph& graph() { return graph_; }
  virtual std::string left_out() const { return {}; }    // what it does not show, in words

 protected:
  virtual void look_at(const zarel::WrittenStatement& statement) = 0;
  virtual void look_at(const zarel::WrittenFlatFact& /*fact*/) {}

  std::string spelling(zarel::NameId name) const;
  bool is_variable(zarel::NameId name) const;
  // A term as its name: "any" for a variable, f(...) for a function term.
  std::string name_of(const zarel::WrittenNode& term) const;
  std::uint32_t box(const std::string& title);    // made when it is not there
  void add(const Arrow& arrow);                   // unless it is there
  std::size_t times_added(const Arrow& arrow) const;
  Graph& drawn() { return graph_; }

 private:
  zarel::Program& program_;
  zarel::StatementObserver* next_;
  Graph graph_;
  std::unordered_map<std::string, std::uint32_t> boxes_;    // by title
  std::unordered_map<std::string, std::size_t> arrows_;     // how often each was added
};

// What can be shown.
//   "classes"     below their upper classes, with the attributes that the program gives them and
//                 the number of objects that it puts into them
//   "calls"       which template is called from where
//   "predicates"  an arrow from what rules give to what they need for it, dashed under "not"
std::unique_ptr<ProgramWatch> watch_for(std::string_view what, zarel::Program& program);

}    // namespace workbench
