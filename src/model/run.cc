#include "model/run.h"

#include <atomic>
#include <utility>

namespace zarel {
namespace {

constinit thread_local Run* run_of_thread = nullptr;

}    // namespace

RunParts::~RunParts() {
  while (!made_.empty()) made_.pop_back();
}

std::size_t RunParts::new_slot() {
  static std::atomic<std::size_t> slots = 0;
  return slots++;
}

Run::Run(const RunOptions& chosen) : options(chosen) {
  const Scope scope(*this);
  register_builtins();
}

Run::Scope::Scope(Run& run) : run_before_(std::exchange(run_of_thread, &run)) {}

Run::Scope::~Scope() {
  run_of_thread = run_before_;
}

Run& current_run() {
  return *run_of_thread;
}

// The established accessors, and others of their kind.

NameTable& names() {
  return current_run().names;
}

WideValues& wide_values() {
  return current_run().wide_values;
}

PredicateTable& ATOMT::Predicates() {
  return current_run().predicates;
}

std::set<std::uint32_t>& NegativeAtoms() {
  return current_run().negative_predicates;
}

ProgramStorage& program_storage() {
  return current_run().storage;
}

VariableNumbering& LocalVariables() {
  return current_run().local_variables;
}

VariableRegistry& Variables() {
  return current_run().variables;
}

FunctionTermTable& FTermTable() {
  return current_run().function_terms;
}

NamespaceTable& vectorName() {
  return current_run().namespaces;
}

bool prefix_was_used() {
  return current_run().prefix_was_used;
}

void note_prefix_use() {
  current_run().prefix_was_used = true;
}

int& cont() {
  return current_run().template_labels;
}

bool OptionHigherOrder() {
  return current_run().options.OptionHigherOrder;
}

std::vector<CLAUSET>& CLAUSES() {
  return current_run().clauses;
}

std::vector<Body>& QUERIES() {
  return current_run().queries;
}

std::vector<std::string>& Includes() {
  return current_run().includes;
}

NameList& GLOBALS() {
  return current_run().globals;
}

NameList& Atom_Globals() {
  return current_run().atom_globals;
}

int& nclause() {
  return current_run().generated_clauses;
}

}    // namespace zarel
