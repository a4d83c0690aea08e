#include "dl/clingo_failure.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <unistd.h>
#include <utility>

#include "dl/answer_writer.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/model_reader.h"
#include "dl/options.h"

namespace dl {
namespace {

using zarel::Code;

std::string_view first_line(std::string_view text) {
  return text.substr(0, text.find('\n'));
}

[[noreturn]] void fail_with(Code code, std::string text) {
  throw Failure{{code, {}, std::move(text)}};
}

// clingo's first error, with the place in the input instead of the one in the translation:
// "-:12:3-4: error: text".
std::optional<zarel::Diagnostic> clingo_error(std::string_view errors, const FailedSearch& search) {
  const Translated& program = search.program;
  // clasp counts in 32 bits, too, but it notices.
  const bool has_overflow = errors.find("Integer overflow!") != std::string_view::npos;
  if (program.parts.traits.has_sums && has_overflow) {
    if (const std::optional<std::size_t> fault =
            sum_at_fault(search.clingo, search.given, program.parts)) {
      return diagnostic_of(program.parts.faults.at(*fault), program.sources);
    }
  }
  if (has_overflow || errors.find("weight too large") != std::string_view::npos) {
    return zarel::Diagnostic{
        Code::kSolverWeights, {}, "the weights of weak constraints leave the 32 bits of clingo"};
  }
  constexpr std::string_view kLoud = "ERROR: (clingo): ";
  const std::size_t found = errors.find("rror: ");
  const std::size_t loud = errors.find(kLoud);
  if (found == std::string_view::npos && loud == std::string_view::npos) return {};
  zarel::Diagnostic diagnostic{Code::kSolverError, {}, "clingo: "};
  if (loud < found) {
    diagnostic.text += first_line(errors.substr(loud + kLoud.size()));
    return diagnostic;
  }
  const std::size_t begin = errors.rfind('\n', found) + 1;
  std::string_view line = first_line(errors.substr(begin));
  diagnostic.text += line.substr(line.find("rror: ") + 6);
  std::size_t number = 0;
  const std::size_t colon = line.find(':');
  const auto [end, error] =
      std::from_chars(line.data() + colon + 1, line.data() + line.size(), number);
  if (!line.starts_with("-:") || error != std::errc()) return diagnostic;
  const zarel::SourceLocation location = program.lines.source_of(number).location;
  diagnostic.place = program.sources.place(location);
  diagnostic.parser_line = static_cast<int>(location.line);
  return diagnostic;
}

}    // namespace

// See Note [sums that could wrap].
std::optional<std::size_t> sum_at_fault(const std::string& clingo, std::string_view translation,
                                        const ProgramParts& parts) {
  ClingoProcess grounder;
  grounder.start(clingo, {"--mode=gringo", "--warn=none", "-"});
  grounder.write(translation);
  grounder.finish_input();
  std::optional<std::size_t> first;
  LineReader reader(output_of(grounder));
  do {
    std::string_view line;
    while (reader.next(line)) {
      const std::size_t atom = line.starts_with("4 ") ? line.find(" _fault(") : line.npos;
      if (atom == line.npos) continue;
      const std::optional<std::size_t> fault = numbered_helper(line.substr(atom + 1), "_fault(");
      const bool is_sum = parts.faults.at(*fault).kind == FaultKind::kSum;
      if (is_sum && (!first || *fault < *first)) first = fault;
    }
  } while (reader.wait());
  return first;
}

// It is no search: an interruption of the program ends it, too.
std::string version_of(const std::string& clingo, ProcessEnd* end) {
  Pipe pipe = make_pipe();
  const Descriptor nothing = make_memory_file("nothing");
  const Descriptor errors = make_memory_file("clingo-errors");
  const pid_t child = start_child(clingo, {"--version"},
                                  {nothing.number(), pipe.writing.number(), errors.number()});
  pipe.writing.close();
  constexpr std::string_view kBegin = "clingo version ";
  std::string version;
  LineReader reader([&pipe](char* buffer, std::size_t size) {
    ssize_t got = -1;
    do {
      got = ::read(pipe.reading.number(), buffer, size);
    } while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<std::size_t>(got) : std::size_t{0};
  });
  do {
    std::string_view line;
    while (reader.next(line)) {
      if (version.empty() && line.starts_with(kBegin)) version = line.substr(kBegin.size());
    }
  } while (reader.wait());
  const ProcessEnd ended = wait_for_child(child, errors.number());
  if (end != nullptr) *end = ended;
  return version;
}

bool is_older_clingo(const std::string& clingo, int minor) {
  const std::string version = version_of(clingo);
  if (!version.starts_with(kClingoMajor)) return false;
  int found = 0;
  const auto [end, error] =
      std::from_chars(version.data() + kClingoMajor.size(), version.data() + version.size(), found);
  return error == std::errc() && found < minor;
}

// A program's start costs time, so a clingo that answers as it should is not asked.
std::string untested_version(const std::string& clingo) {
  const std::string version = version_of(clingo);
  if (version.empty() || version.starts_with(kClingoMajor)) return {};
  std::string text("this is clingo ");
  return ((text += version) += ", and it was tested with ") += kTestedClingo;
}

void fail_search(const ProcessEnd& end, const FailedSearch& search) {
  if (end.signalled) {
    std::string text = "clingo died of signal ";
    (((text += std::to_string(end.code)) += " (") += ::strsignal(end.code)) += ')';
    fail_with(Code::kSolverKilled, std::move(text));
  }
  if (end.code == kCannotRun) {
    fail_with(Code::kSolverMissing,
              "cannot run \"" + search.clingo + "\": " + std::string(first_line(end.errors)));
  }
  if (end.code == kOutOfMemory) fail_with(Code::kSolverMemory, "clingo ran out of memory");
  if (std::optional<zarel::Diagnostic> error = clingo_error(end.errors, search)) {
    if (const std::string version = untested_version(search.clingo); !version.empty())
      (error->text += "; ") += version;
    throw Failure{std::move(*error)};
  }
  std::string status(" (status ");
  (status += std::to_string(end.code)) += ')';
  if (const std::string version = untested_version(search.clingo); !version.empty())
    (status += "; ") += version;
  if ((end.code & kInterrupted) != 0) {
    fail_with(Code::kSolverInterrupted,
              "clingo was interrupted before its search was complete" + status);
  }
  fail_with(Code::kSolverIncomplete, "clingo ended without a complete answer" + status);
}

}    // namespace dl
