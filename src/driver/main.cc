// main.cc - one run, phase by phase.

#include <iostream>
#include <new>
#include <span>

#include "base/standard_streams.h"
#include "driver/banner.h"
#include "driver/diagnostics.h"
#include "driver/intermediate_files.h"
#include "driver/options.h"
#include "driver/rewriting.h"
#include "driver/solver_call.h"
#include "driver/solver_guard.h"
#include "model/predicate_table.h"
#include "model/run.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"
#include "zarel/phases.h"

namespace zarel {
namespace {

constexpr int kUsageStatus = -1;

int end_with_usage() {
  printUsage(standard_error(), Usage::kShort);
  return kUsageStatus;
}

// The scan of the command line ended the run.
int end_of_scan(const Options& options) {
  printLogo();
  if (options.end == ScanEnd::kUsageError) return end_with_usage();
  if (options.end == ScanEnd::kHelp) printUsage(standard_output(), Usage::kLong);
  if (options.end == ScanEnd::kLicense) print_license();
  return 0;
}

void set_display(const Options& options) {
  DisplaySettings& display = display_settings();
  display.set_filters(options.filters, options.positive_filters);
  display.space = !options.shows_frame_spaces;
  display.address = !options.shows_uris;
}

int run(std::span<char* const> arguments) {
  IntermediateFiles files;
  report_state().WhoAmI = arguments.empty() ? "zarel" : arguments[0];

  const Options options = scan_arguments(arguments.subspan(arguments.empty() ? 0 : 1));
  report_state().OptionVerbosity = options.OptionVerbosity ? 1 : 0;
  current_run().options = options;
  set_display(options);
  if (options.end != ScanEnd::kRun) return end_of_scan(options);

  if (!options.OptionSilent) printLogo();
  if (options.is_postparsing) {
    read_answer_sets(stdin);
    return 0;
  }
  if (options.files.empty()) return options.OptionVerbosity ? 0 : end_with_usage();

  read_program(options.files, options.semantics, files.verbatim());
  expand_templates(*files.legend());
  files.begin_program();
  if (options.OptionSafetyCheck) check_safety();
  files.write_program();
  if (options.is_preparsing) {
    files.show_program(standard_output());
    return 0;
  }

  solve(solver_command(options));
  return 0;
}

int run_to_status(std::span<char* const> arguments) {
  Run whole;
  const Run::Scope scope(whole);
  show_findings(std::cout, std::cerr);
  try {
    return run(arguments);
  } catch (const RunEnd& end) {
    return end.status;
  } catch (const std::bad_alloc&) {
    std::cerr << "Memory exhausted.\n";
    return 1;
  }
}

}    // namespace
}    // namespace zarel

int main(int argument_count, char** argument_list) {
  const std::span arguments(argument_list, static_cast<std::size_t>(argument_count));
  if (zarel::is_guard(arguments)) zarel::guard_solver(arguments);
  zarel::occupy_closed_streams();
  std::ios::sync_with_stdio(false);
  const int status = zarel::run_to_status(arguments);
  if (std::cout.flush()) return status;
  std::cerr << "Standard output could not be written.\n";
  return 1;
}
