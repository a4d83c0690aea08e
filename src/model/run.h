#pragma once
// run.h - all that one run keeps. A new Run is the only reset, and its end frees everything.
//
// Note [current run]
// Established accessors (names(), CLAUSES(), LocalVariables(), ...) take no argument: they read the
// run that the innermost Run::Scope of the thread has set. So several runs can live side by side,
// on one thread in turn or on a thread each. Without a scope there is no run to read.

#include <array>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "base/diagnostic.h"
#include "base/file_table.h"
#include "base/line_map.h"
#include "model/clause.h"
#include "model/function_term_table.h"
#include "model/generic_names.h"
#include "model/name_table.h"
#include "model/namespaces.h"
#include "model/origin.h"
#include "model/predicate_table.h"
#include "model/program.h"
#include "model/program_storage.h"
#include "model/report.h"
#include "model/term.h"

namespace zarel {

class StatementObserver;    // see parser/written_statement.h

// What is chosen for a run: the one place of each option, under its one name. Most are read by a
// function of that name.
struct RunOptions {
  bool OptionArityCheck = false;
  bool OptionSafetyCheck = false;
  bool OptionHigherOrder = true;    // predicates may be variables
  bool OptionFramelogic = true;
  bool links_templates = false;
  bool skips_faulty_statements = false;    // reading goes on behind them, see parser/recovery.h
};

// What was found wrong, and what the established messages show of the reading.
struct Findings {
  static constexpr std::size_t kMostKept = 10'000;

  DiagnosticSink sink;             // takes findings at once; none: they are kept
  std::vector<Diagnostic> kept;    // in their order, kMostKept of them
  std::size_t left_out = 0;        // findings behind those: a file may be no program at all
  int parser_line = 0;             // the line that messages show; the scanners advance it
  int parser_errors = 0;           // errors that keep the program from being solved
  int errors = 0;                  // findings of that severity, among them files that are missing
};

// Tables of the folders above the model: each knows its own type alone.
class RunParts {
 public:
  RunParts() = default;
  ~RunParts();    // the last made goes first
  RunParts(const RunParts&) = delete;
  RunParts& operator=(const RunParts&) = delete;

  // The part of that type, made when it is first asked for.
  template <class Part>
  Part& get() {
    static const std::size_t slot = new_slot();
    if (by_slot_[slot] == nullptr) {
      auto holder = std::make_unique<Holder<Part>>();
      by_slot_[slot] = &holder->part;
      made_.push_back(std::move(holder));
    }
    return *static_cast<Part*>(by_slot_[slot]);
  }

 private:
  struct AnyHolder {
    virtual ~AnyHolder() = default;
  };
  template <class Part>
  struct Holder : AnyHolder {
    Part part{};
  };
  static constexpr std::size_t kMostParts = 32;
  static std::size_t new_slot();    // a number for a type, the same in every run

  std::array<void*, kMostParts> by_slot_{};
  std::vector<std::unique_ptr<AnyHolder>> made_;
};

struct Run {
  explicit Run(const RunOptions& chosen = {});    // with the builtins registered
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // The thread works on the run until the scope ends; then on the one before.
  class Scope {
   public:
    explicit Scope(Run& run);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    Run* run_before_;
  };

  // In the order in which they are made: what stands below may point into what stands above.
  RunOptions options;
  std::ostream* output = nullptr;                     // see standard_output()
  StatementObserver* statement_observer = nullptr;    // of the files that are read from now on
  FileTable files;                                    // that were read
  OriginTable origins;
  Findings findings;
  Work work;
  ProgramStorage storage;
  NameTable names;
  WideValues wide_values;
  PredicateTable predicates;
  std::set<std::uint32_t> negative_predicates;    // of strongly negated atoms
  GenericNames generic_names;
  VariableNumbering local_variables;
  VariableRegistry variables;
  FunctionTermTable function_terms;
  NamespaceTable namespaces;
  bool prefix_was_used = false;
  int template_labels = 0;    // cont()
  std::vector<CLAUSET> clauses;
  std::vector<Body> queries;
  std::vector<SourceLocation> query_places;
  std::vector<std::string> includes;
  std::vector<SourceLocation> include_places;
  LineMap verbatim_lines;    // of what went to the verbatim sections
  NameList globals;
  NameList atom_globals;
  int generated_clauses = 0;    // nclause()
  RunParts parts;
};

// The run of this thread's innermost scope. See Note [current run].
Run& current_run();

}    // namespace zarel
