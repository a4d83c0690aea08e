#include "driver/solver_call.h"

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "driver/diagnostics.h"
#include "driver/intermediate_files.h"
#include "driver/solver_process.h"
#include "model/run.h"
#include "output/answer_set_reader.h"

namespace zarel {
namespace {

// Where a shell without PATH looks.
constexpr std::string_view kDefaultPath =
    "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin";

// The solver beside this program is found when the user's own PATH has none.
void append_own_folder_to_path() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  const char* const path =
      std::getenv("PATH");    // NOLINT(concurrency-mt-unsafe): there are no threads
  std::string folders(path == nullptr || *path == '\0' ? kDefaultPath : std::string_view(path));
  folders.append(":").append(program.parent_path().string());
  static_cast<void>(
      setenv("PATH", folders.c_str(), 1));    // without it the shell itself says what it misses
}

// Holds what the reading says until the solver has ended: its own messages come first.
class HeldMessages {
 public:
  HeldMessages() { report_state().errors = &held_; }
  HeldMessages(const HeldMessages&) = delete;
  HeldMessages& operator=(const HeldMessages&) = delete;
  ~HeldMessages() {
    report_state().errors = before_;
    standard_error() << held_.view() << std::flush;
  }

 private:
  std::ostream* before_ = report_state().errors;
  std::ostringstream held_;
};

}    // namespace

std::string solver_command(const Options& options) {
  std::string command = "\"";
  command.append(options.solver)
      .append("\" ")
      .append(kSourceName)
      .append(" ")
      .append(options.solver_parameters);
  for (const NameId name : Atom_Globals().names()) {
    command.append("-filter=").append(names().spelling(name)).append(" ");
  }
  return command.append("-silent > ").append(kOutputName);
}

void solve(const std::string& command) {
  append_own_folder_to_path();
  standard_output().flush();
  const InputFile output = open_output();
  const HeldMessages messages;
  SolverProcess solver(command);
  if (output.is_open()) {
    current_run().findings.parser_line = 1;
    read_answer_sets(output.handle(), [&solver] { return solver.may_write(); });
  }
  solver.finish();
  if (!output.is_open()) output_yyerror("can't open input");
}

}    // namespace zarel
