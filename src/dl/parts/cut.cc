#include "dl/parts/cut.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <list>
#include <map>
#include <queue>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "dl/clingo_run.h"
#include "dl/parts/part_arguments.h"

namespace dl {
namespace {

constexpr std::size_t kMostBranches = 32;    // of one cut

struct Leaf {
  Cube cube;
  double share = 1;    // of the whole, as it is guessed
};
using Leaves = std::list<Leaf>;

// The next leaf to cut has the greatest share; of equals, the first that was made.
struct Candidate {
  double share;
  std::size_t age;
  Leaves::iterator leaf;
  friend bool operator<(const Candidate& left, const Candidate& right) {
    return left.share != right.share ? left.share < right.share : left.age > right.age;
  }
};

// What a short run has shown.
struct Trial {
  enum class Result { kRefuted, kFinished, kOpen } result = Result::kOpen;
  double variables = 0;
  double models = 0;    // that were found
};

// How hard it may be to solve what was tried.
double size_of(const Trial& trial) {
  constexpr int kPower = 4;
  constexpr double kEasy = 1e-9;
  const double size = std::pow(std::max(trial.variables, 1.0), kPower);
  return trial.result == Trial::Result::kOpen ? size : size * kEasy;
}

struct Stopped {};

class Cutter {
 public:
  Cutter(const GroundProgram& program, Crew& crew, const CutSettings& settings,
         const Meanwhile& meanwhile)
      : program_(program),
        choices_(choices_of(program)),
        crew_(crew),
        settings_(settings),
        meanwhile_(meanwhile) {}

  std::vector<Cube> cut(const Cube& root) {
    leaves_.push_back({root, 1});
    offer(leaves_.begin());
    while (!candidates_.empty() && leaves_.size() < settings_.parts) {
      const Candidate next = candidates_.top();
      candidates_.pop();
      split(next.leaf);
    }
    std::vector<Cube> cubes;
    cubes.reserve(leaves_.size());
    for (Leaf& leaf : leaves_) cubes.push_back(std::move(leaf.cube));
    return cubes;
  }

 private:
  void offer(Leaves::iterator leaf) { candidates_.push({leaf->share, ages_++, leaf}); }
  void split(Leaves::iterator leaf);
  bool can_be_cut(const Trial& trial) const {
    return trial.result == Trial::Result::kOpen || (settings_.cuts_easy_parts && trial.models > 1);
  }
  Trial probe(const Cube& cube);
  std::vector<Trial> try_all(const std::vector<Cube>& cubes);
  std::vector<Trial> run(const std::vector<Cube>& cubes, const std::vector<std::string>& arguments);
  void count_lemmas(const Descriptor& file);
  std::vector<GroundAtom> choose(const Cube& cube) const;
  std::uint32_t count_of(GroundAtom atom) const {
    return atom < counts_.size() ? counts_[atom] : 0;
  }

  const GroundProgram& program_;
  const Choices choices_;
  Crew& crew_;
  const CutSettings& settings_;
  const Meanwhile& meanwhile_;
  Leaves leaves_;
  std::priority_queue<Candidate> candidates_;
  std::size_t ages_ = 0;
  std::vector<std::uint32_t> counts_;    // of lemmas, by atom
  bool logs_lemmas_ = true;
};

// The children stand where their parent stood: the order of the parts is that of the cut.
void Cutter::split(Leaves::iterator leaf) {
  const Trial trial = probe(leaf->cube);
  if (trial.result == Trial::Result::kRefuted) {
    leaves_.erase(leaf);
    return;
  }
  if (!can_be_cut(trial)) return;
  const std::vector<GroundAtom> atoms = choose(leaf->cube);
  if (atoms.empty()) return;
  std::vector<Cube> cubes;
  Cube rest = leaf->cube;
  for (const GroundAtom atom : atoms) {
    cubes.push_back(rest);
    cubes.back().push_back(static_cast<GroundLiteral>(atom));
    rest.push_back(-static_cast<GroundLiteral>(atom));
  }
  cubes.push_back(std::move(rest));
  const std::vector<Trial> trials = try_all(cubes);
  std::vector<double> sizes;
  double sum = 0;
  for (const Trial& child : trials) sum += sizes.emplace_back(size_of(child));
  for (std::size_t i = 0; i < cubes.size(); ++i) {
    if (trials[i].result == Trial::Result::kRefuted) continue;
    const auto child = leaves_.insert(leaf, {std::move(cubes[i]), leaf->share * sizes[i] / sum});
    if (can_be_cut(trials[i])) offer(child);
  }
  leaves_.erase(leaf);
}

// Of the heads that the cube leaves open, the atoms of the one that is learnt most about; the atom
// that is learnt most about where there is no such head.
std::vector<GroundAtom> Cutter::choose(const Cube& cube) const {
  std::map<GroundAtom, bool> decided;
  for (const GroundLiteral literal : cube) {
    decided[static_cast<GroundAtom>(std::abs(literal))] = literal > 0;
  }
  const std::vector<GroundAtom>* best = nullptr;
  std::uint64_t most = 0;
  for (const std::vector<GroundAtom>& head : choices_.heads) {
    std::uint64_t sum = 0;
    std::size_t open = 0;
    bool holds = false;
    for (const GroundAtom atom : head) {
      const auto found = decided.find(atom);
      if (found == decided.end()) {
        sum += count_of(atom);
        ++open;
      } else {
        holds = holds || found->second;
      }
    }
    if (holds || open < 2 || (best != nullptr && sum <= most)) continue;
    best = &head;
    most = sum;
  }
  std::vector<GroundAtom> atoms;
  if (best != nullptr) {
    for (const GroundAtom atom : *best) {
      if (!decided.contains(atom) && atoms.size() < kMostBranches) atoms.push_back(atom);
    }
    return atoms;
  }
  const auto consider = [&](GroundAtom atom) {
    if (decided.contains(atom) || (!atoms.empty() && count_of(atom) <= count_of(atoms.front())))
      return;
    atoms.assign(1, atom);
  };
  for (const GroundAtom atom : choices_.negated) consider(atom);
  return atoms;
}

Trial Cutter::probe(const Cube& cube) {
  std::vector<std::string> arguments = settings_.arguments;
  arguments.emplace_back("--solve-limit=1000");
  limit_models(arguments, 1000);
  if (!logs_lemmas_) return run({cube}, arguments).front();
  const Descriptor lemmas = make_memory_file("lemmas");
  std::string file("--lemma-out=/proc/");
  ((file += std::to_string(::getpid())) += "/fd/") += std::to_string(lemmas.number());
  std::vector<std::string> logging = arguments;
  logging.insert(logging.end(), {"--lemma-out-dom=input", file});
  try {
    const std::vector<Trial> trials = run({cube}, logging);
    count_lemmas(lemmas);
    return trials.front();
  } catch (const FailedWorker& failed) {
    // A clingo that sees no files of ours can be cut for all the same, if less well.
    if (failed.end.errors.find("lemma log file") == std::string::npos) throw;
    logs_lemmas_ = false;
  }
  return run({cube}, arguments).front();
}

std::vector<Trial> Cutter::try_all(const std::vector<Cube>& cubes) {
  std::vector<std::string> arguments = settings_.arguments;
  arguments.emplace_back("--solve-limit=1");
  limit_models(arguments, 1);
  return run(cubes, arguments);
}

// Of the figure "Variables    : 121      (Eliminated:    0 Frozen:    0)" the number.
double figure_of(std::string_view name, std::string_view output) {
  std::string begin("\n");
  const std::size_t found = output.find(begin += name);
  if (found == std::string_view::npos) return 0;
  std::string_view rest = output.substr(found + 1 + name.size());
  rest.remove_prefix(std::min(rest.find_first_of("0123456789"), rest.size()));
  std::uint64_t number = 0;
  std::from_chars(rest.data(), rest.data() + rest.size(), number);
  return static_cast<double>(number);
}

// clasp ends with 0 where the limit came before any answer set.
Trial trial_of(const ProcessEnd& end, std::string_view output) {
  constexpr int kNothingKnown = 0;
  if (end.signalled || (!has_finished(end) && end.code != kNothingKnown)) throw FailedWorker{end};
  if (end.code == kNoneExists) return {Trial::Result::kRefuted};
  return {end.code == kAllFound ? Trial::Result::kFinished : Trial::Result::kOpen,
          figure_of("Variables", output), figure_of("Models", output)};
}

std::vector<Trial> Cutter::run(const std::vector<Cube>& cubes,
                               const std::vector<std::string>& chosen) {
  std::vector<std::string> arguments = chosen;
  std::erase_if(arguments, [](std::string_view word) { return word.starts_with("--quiet="); });
  arguments.emplace_back("--stats");
  arguments.emplace_back("--quiet=2,2,2");
  std::vector<Trial> trials(cubes.size());
  std::map<Crew::Id, std::pair<std::size_t, std::string>> running;    // which, and its output
  std::size_t started = 0;
  bool goes_on = true;
  const auto hear = [&](const Crew::Event& event) {
    const auto mine = running.find(event.id);
    if (mine == running.end()) {
      goes_on = goes_on && meanwhile_ && meanwhile_(event);
    } else if (event.end == nullptr) {
      mine->second.second += event.output;
    } else {
      trials[mine->second.first] = trial_of(*event.end, mine->second.second);
      running.erase(mine);
    }
  };
  while (started < cubes.size() || !running.empty()) {
    while (started < cubes.size() && running.size() < settings_.workers) {
      const Descriptor input = program_.part(cubes[started]);
      running.emplace(crew_.start(arguments, input.number()), std::pair(started, std::string()));
      ++started;
    }
    if (crew_.wait(hear) == Crew::Waiting::kAsked || !goes_on) {
      for (const auto& [id, mine] : running) crew_.dismiss(id);
      throw Stopped{};
    }
  }
  return trials;
}

// Lemmas are constraints in aspif: "1 0 0 0 3 4 -5 6".
void Cutter::count_lemmas(const Descriptor& file) {
  counts_.assign(std::size_t{choices_.greatest_atom} + 1, 0);
  std::string text;
  std::string buffer(std::size_t{1} << 16, '\0');
  ::lseek(file.number(), 0, SEEK_SET);
  for (ssize_t got = 0; (got = ::read(file.number(), buffer.data(), buffer.size())) > 0;)
    text.append(buffer, 0, static_cast<std::size_t>(got));
  constexpr std::string_view kBegin = "1 0 0 0 ";
  for (std::string_view rest(text); !rest.empty();) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    if (!line.starts_with(kBegin)) continue;
    line.remove_prefix(kBegin.size());
    Cube numbers;    // their count comes first
    if (!read_cube(line, numbers)) continue;
    for (std::size_t i = 1; i < numbers.size(); ++i) {
      const auto atom = static_cast<std::size_t>(std::abs(numbers[i]));
      if (atom < counts_.size()) ++counts_[atom];
    }
  }
}

}    // namespace

std::optional<std::vector<Cube>> cut(const GroundProgram& program, const Cube& root, Crew& crew,
                                     const CutSettings& settings, const Meanwhile& meanwhile) {
  try {
    return Cutter(program, crew, settings, meanwhile).cut(root);
  } catch (const Stopped&) {
    return std::nullopt;
  }
}

}    // namespace dl
