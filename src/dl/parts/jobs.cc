#include "dl/parts/jobs.h"

#include <algorithm>
#include <charconv>
#include <unistd.h>
#include <utility>

#include "dl/clingo_failure.h"
#include "dl/clingo_process.h"
#include "dl/clingo_run.h"
#include "dl/cores.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/model_reader.h"
#include "dl/options.h"
#include "dl/parts/crew.h"
#include "dl/parts/cut.h"

namespace dl {
namespace {

constexpr std::string_view kVersionLine = "clingo version ";

[[noreturn]] void refuse(std::string text) {
  throw Failure{{zarel::Code::kJobFolder, {}, std::move(text)}};
}

std::string known_version_of(const std::string& clingo) {
  ProcessEnd end;
  std::string version = version_of(clingo, &end);
  if (version.empty()) throw FailedWorker{end};
  return version;
}

// A part of a folder tells which clingo it ran with.
std::vector<std::string> talkative(std::vector<std::string> arguments) {
  std::ranges::replace(arguments, "--verbose=0", "--verbose=1");
  return arguments;
}

std::vector<std::string> silent(std::vector<std::string> arguments) {
  std::ranges::replace(arguments, "--verbose=1", "--verbose=0");
  return arguments;
}

// "CPU Time     : 0.001s"
void read_seconds(std::string_view line, double& seconds) {
  if (!line.starts_with("CPU Time")) return;
  const std::size_t colon = line.find(": ");
  if (colon != std::string_view::npos) {
    std::from_chars(line.data() + colon + 2, line.data() + line.size(), seconds);
  }
}

void expect_version(const JobFolder& jobs, const std::string& version) {
  const std::string& wanted = jobs.manifest().clingo_version;
  if (version == wanted) return;
  refuse("this is clingo " + version + ", and the search was cut for clingo " + wanted);
}

class PartReader {
 public:
  PartReader(const JobFolder& jobs, ClingoProcess& process)
      : output(jobs.aim()), jobs_(jobs), lines_(output_of(process)) {}

  void read() {
    bool is_first = true;
    do {
      std::string_view line;
      while (lines_.next(line)) {
        if (!std::exchange(is_first, false)) {
          read_seconds(line, head.seconds);
          output.read(line);
          output.read("\n");
        } else if (line.starts_with(kVersionLine)) {
          head.clingo_version = line.substr(kVersionLine.size());
          expect_version(jobs_, head.clingo_version);
        }
      }
    } while (lines_.wait());
    is_whole = !lines_.has_rest();
  }

  PartOutput output;
  ResultHead head;
  bool is_whole = false;

 private:
  const JobFolder& jobs_;
  LineReader lines_;
};

}    // namespace

std::size_t make_jobs(const std::string& folder, const SearchPlan& plan,
                      std::string_view translation, const AnswerTables& tables) {
  const Descriptor program = make_memory_file("program");
  append_to(program, translation);
  ::lseek(program.number(), 0, SEEK_SET);
  Crew crew(plan.clingo);
  const GroundProgram ground(*dl::ground(crew, program.number()));
  const std::vector<std::string> arguments = part_arguments(plan.arguments);
  const std::vector<Cube> cubes =
      *cut(ground, {}, crew, {arguments, plan.parts, plan.workers, true}, nullptr);
  Manifest manifest;
  manifest.dl_version = kDlVersion;
  manifest.clingo_version = known_version_of(plan.clingo);
  manifest.arguments = talkative(arguments);
  JobFolder::make(folder, std::move(manifest), ground, cubes, tables);
  return cubes.size();
}

void expect_part(const JobFolder& jobs, std::size_t part) {
  if (part >= jobs.count()) {
    refuse("there is no part " + std::to_string(part) +
           (jobs.count() == 0 ? "; there are none at all"
                              : "; the parts are 0 to " + std::to_string(jobs.count() - 1)));
  }
  if (!jobs.is_divided(part)) return;
  const std::vector<std::size_t>& pieces = jobs.pieces_of(part);
  refuse("part " + std::to_string(part) + " was divided" +
         (pieces.empty() ? std::string(", and nothing is left of it")
                         : " into " + ranges(pieces, ", ", " and ")));
}

namespace {

// It only saves others time.
void hand_on(const JobFolder& jobs, std::int64_t highest) {
  try {
    jobs.offer_bound(highest);
  } catch (const Failure&) {
    return;
  }
}

}    // namespace

PartRun run_part(const JobFolder& jobs, std::size_t part, const std::string& clingo,
                 bool takes_bound) {
  const GroundProgram program = jobs.program();
  std::vector<std::string> arguments = jobs.manifest().arguments;
  if (jobs.aim().has_costs && takes_bound) {
    if (const auto bound = jobs.bound()) bound_costs(arguments, *bound);
  }
  ClingoProcess process;
  process.start(clingo, arguments);
  process.write(program.whole_rules());
  process.write(cube_text(jobs.cube(part)));
  process.finish_input();
  PartReader reader(jobs, process);
  reader.read();
  const ProcessEnd end = process.end();
  ResultHead& head = reader.head;
  head.is_complete = reader.is_whole && reader.output.is_complete(end);
  if (!head.is_complete && interruption() == Interruption::kNone) throw FailedWorker{end};
  PartOutput& output = reader.output;
  head.found = output.count;
  head.has_consequences = output.consequences.has_value();
  if (output.has_found()) head.costs = output.costs;
  if (head.is_complete && jobs.aim().has_costs) output.sort_sets();
  if (head.is_complete || output.has_found()) jobs.put_result(part, head, output);
  if (head.costs && takes_bound) hand_on(jobs, head.costs->front());
  return head.is_complete ? PartRun::kDone : PartRun::kCut;
}

std::vector<std::size_t> divide_part(JobFolder& jobs, std::size_t part, std::size_t pieces,
                                     const std::string& clingo) {
  ResultHead head;
  if (jobs.look_at_result(part, head) == JobFolder::Result::kComplete) {
    refuse("part " + std::to_string(part) + " is done");
  }
  Crew crew(clingo);
  expect_version(jobs, known_version_of(clingo));
  const GroundProgram program = jobs.program();
  const std::vector<Cube> cubes =
      *cut(program, jobs.cube(part), crew,
           {silent(jobs.manifest().arguments), pieces, cores(), true}, nullptr);
  if (cubes.size() == 1) {
    refuse("part " + std::to_string(part) +
           " cannot be cut: clingo finishes it, or finds nothing "
           "to cut it by");
  }
  const std::size_t first = jobs.count();
  jobs.divide(part, cubes);
  std::vector<std::size_t> numbers;
  for (std::size_t number = first; number < jobs.count(); ++number) numbers.push_back(number);
  return numbers;
}

std::vector<std::size_t> missing_parts(const JobFolder& jobs) {
  std::vector<std::size_t> missing;
  ResultHead head;
  for (const std::size_t part : jobs.order()) {
    if (jobs.look_at_result(part, head) != JobFolder::Result::kComplete) missing.push_back(part);
  }
  std::ranges::sort(missing);
  return missing;
}

namespace {

// A result to be joined.
struct Joined {
  std::size_t part;
  ResultHead head;
};

std::vector<Joined> results_of(const JobFolder& jobs, bool is_partial, JoinFigures& figures) {
  std::vector<Joined> pieces;
  std::vector<std::size_t> foreign;
  for (const std::size_t part : jobs.order()) {
    ResultHead head;
    const JobFolder::Result result = jobs.look_at_result(part, head);
    if (result == JobFolder::Result::kForeign) foreign.push_back(part);
    if (result == JobFolder::Result::kMissing) figures.missing.push_back(part);
    if (result == JobFolder::Result::kMissing && is_partial) {
      if (auto cut = jobs.look_at_cut_result(part)) pieces.push_back({part, std::move(*cut)});
    }
    if (result == JobFolder::Result::kComplete) {
      ++figures.parts;
      pieces.push_back({part, std::move(head)});
    }
  }
  std::ranges::sort(foreign);
  std::ranges::sort(figures.missing);
  if (!foreign.empty()) {
    refuse((foreign.size() == 1 ? "the result of part " : "the results of parts ") +
           ranges(foreign, ", ", " and ") +
           (foreign.size() == 1 ? " is that of another search, or damaged: run it again"
                                : " are those of another search, or damaged: run them again"));
  }
  if (!figures.missing.empty() && !is_partial) {
    refuse((figures.missing.size() == 1 ? "part " : "parts ") +
           ranges(figures.missing, ", ", " and ") +
           (figures.missing.size() == 1 ? " is missing" : " are missing"));
  }
  return pieces;
}

}    // namespace

JoinFigures join_parts(const JobFolder& jobs, bool is_partial,
                       const std::function<bool(std::string_view)>& take) {
  JoinFigures figures;
  const std::vector<Joined> pieces = results_of(jobs, is_partial, figures);
  const SearchAim& aim = jobs.aim();
  std::optional<PartCosts> best;
  for (const Joined& piece : pieces) {
    const ResultHead& head = piece.head;
    if (are_better(head.costs, best)) best = head.costs;
    figures.found += head.found;
    figures.seconds += head.seconds;
    if (head.seconds < figures.longest) continue;
    figures.longest = head.seconds;
    figures.longest_part = piece.part;
  }
  const bool is_whole = figures.missing.empty();
  Consequences consequences(aim.is_brave);
  std::uint64_t printed = 0;
  if (best) {
    const std::string text = costs_text(*best);
    if (!take(std::string_view(text).substr(0, text.size() - 1))) return figures;
  }
  for (const Joined& piece : pieces) {
    if (piece.head.costs != best || figures.may_have_more) continue;
    const bool goes_on =
        jobs.read_answers(piece.part, piece.head.is_complete, [&](std::string_view line) {
          if (aim.has_query) {
            consequences.add(line);
          } else if (aim.limit != 0 && printed++ >= aim.limit) {
            figures.may_have_more = true;
          } else {
            return take(line);
          }
          return true;
        });
    if (!goes_on) return figures;
    if (aim.limit != 0 && piece.head.found >= aim.limit) figures.may_have_more = true;
  }
  // What holds in all answer sets that are known need not hold in all, and what holds in some of
  // the best that are known not in one of the best.
  if (is_whole || (aim.is_brave && !aim.has_costs)) {
    if (const auto line = consequences.line()) take(*line);
  }
  const bool has_found = std::ranges::any_of(pieces, [](const Joined& piece) {
    return piece.head.found != 0 || piece.head.has_consequences;
  });
  const std::string_view status = is_whole ? status_text(aim, has_found) : "UNKNOWN\n";
  take(status.substr(0, status.size() - 1));
  return figures;
}

}    // namespace dl
