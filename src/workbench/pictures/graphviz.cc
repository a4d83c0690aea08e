#include "workbench/pictures/graphviz.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <poll.h>
#include <sstream>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "dl/child_process.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "workbench/pictures/dot_text.h"

namespace workbench {
namespace {

constexpr std::size_t kMostForDot = 150;
// Graphviz takes the square of the time for boxes without arrows: for so many, about 6 s.
constexpr DotLimits kLimits{.boxes = 1000, .arrows = 3000, .lines = 40, .characters = 200};
constexpr std::string_view kHelp =
    "install Graphviz (Debian has it in the package graphviz), or write --format=dot, which needs "
    "no other program";

Message failure(std::string text) {
  return {"graphviz-failure", {}, std::move(text)};
}

// The child, and its end whatever happens.
class Child {
 public:
  void start(const std::vector<std::string>& command, dl::ChildStreams streams) {
    pid_ = dl::start_child(command.front(), {command.begin() + 1, command.end()}, streams);
  }
  // Returns the status as waitpid gives it.
  int wait() {
    int status = 0;
    while (::waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    return status;
  }
  void kill() const { ::kill(pid_, SIGKILL); }

  Child() = default;
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child() {
    if (pid_ <= 0) return;
    kill();
    wait();
  }

 private:
  pid_t pid_ = -1;
};

using Clock = std::chrono::steady_clock;

enum class Reading : std::uint8_t { kWhole, kLate, kInterrupted };

// Reads to the end, or to the deadline, or to an interrupt that was not there when it began.
Reading read_until(int descriptor, Clock::time_point deadline, std::string& text) {
  constexpr std::int64_t kGlance = 100;    // milliseconds between two looks at interrupts
  const dl::Interruption before = dl::interruption();
  std::array<char, 65536> piece{};
  for (;;) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return Reading::kLate;
    if (dl::interruption() != before) return Reading::kInterrupted;
    pollfd watched{descriptor, POLLIN, 0};
    if (::poll(&watched, 1, static_cast<int>(std::min(left, kGlance))) <= 0) continue;
    const ssize_t got = ::read(descriptor, piece.data(), piece.size());
    if (got == 0) return Reading::kWhole;
    if (got > 0) text.append(piece.data(), static_cast<std::size_t>(got));
    if (got < 0 && errno != EINTR) return Reading::kWhole;
  }
}

std::string first_line(int descriptor) {
  std::array<char, 400> text{};
  const ssize_t got = ::pread(descriptor, text.data(), text.size(), 0);
  const std::string_view all(text.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
  return std::string(all.substr(0, all.find('\n')));
}

struct Outcome {
  std::string svg = {};
  bool is_late = false;
  std::optional<Message> failure = {};
};

Outcome run_graphviz(const std::string& engine, const std::string& text, double seconds) {
  const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                           std::chrono::duration<double>(seconds));
  Outcome outcome;
  Child child;
  dl::Descriptor output;
  dl::Descriptor errors;
  try {
    const dl::Descriptor input = dl::make_memory_file("graph");
    errors = dl::make_memory_file("graphviz-errors");
    dl::append_to(input, text);
    ::lseek(input.number(), 0, SEEK_SET);
    dl::Pipe pipe = dl::make_pipe();
    output = std::move(pipe.reading);
    std::string engine_option("-K");
    child.start({"dot", engine_option += engine, "-Tsvg", "-Goverlap=prism"},
                {input.number(), pipe.writing.number(), errors.number()});
  } catch (const dl::Failure& error) {
    outcome.failure = failure("Graphviz cannot be started: " + error.diagnostic.text);
    return outcome;
  }
  const Reading reading = read_until(output.number(), deadline, outcome.svg);
  outcome.is_late = reading == Reading::kLate;
  if (reading == Reading::kInterrupted) {
    outcome.failure = failure("the drawing by Graphviz was interrupted");
  }
  if (reading != Reading::kWhole) return outcome;
  const int status = child.wait();
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0 && !outcome.svg.empty()) return outcome;
  std::string said("Graphviz failed to draw the picture");
  const std::string line = first_line(errors.number());
  if (!line.empty()) (said += ", and said: ") += line;
  outcome.failure = failure(std::move(said));
  return outcome;
}

std::string left_out_of(const Graph& graph, const DotLimits& limits) {
  const std::size_t boxes = std::min(graph.boxes.size(), limits.boxes);
  const std::size_t arrows = std::min(arrows_between(graph, boxes), limits.arrows);
  if (boxes == graph.boxes.size() && arrows == graph.arrows.size()) return {};
  std::string text = std::to_string(graph.boxes.size() - boxes);
  ((text += " of ") += std::to_string(graph.boxes.size())) += " boxes and ";
  (text += std::to_string(graph.arrows.size() - arrows)) += " of ";
  return (text += std::to_string(graph.arrows.size())) += " arrows";
}

}    // namespace

std::optional<Message> graphviz_missing() {
  const char* const path = std::getenv("PATH");    // NOLINT(concurrency-mt-unsafe): no threads
  std::istringstream folders(path == nullptr ? "" : path);
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (folder.empty()) folder.push_back('.');
    if (::access((folder += "/dot").c_str(), X_OK) == 0) return std::nullopt;
  }
  Message message{"graphviz-missing", {}, "a picture needs Graphviz, and there is no program dot"};
  message.help = kHelp;
  return message;
}

Drawing draw(const Graph& graph, double seconds) {
  const auto begin = Clock::now();
  const bool is_small = graph.boxes.size() <= kMostForDot;
  DotLimits limits = kLimits;
  Outcome outcome{.is_late = true};
  if (is_small) outcome = run_graphviz("dot", dot_text(graph, limits), seconds / 2);
  if (outcome.is_late) {
    limits.has_clusters = false;    // sfdp draws none
    const double left = seconds - std::chrono::duration<double>(Clock::now() - begin).count();
    outcome = run_graphviz("sfdp", dot_text(graph, limits), left);
  }
  if (outcome.is_late) {
    std::string text("Graphviz does not draw the picture within ");
    outcome.failure = failure((text += std::to_string(static_cast<int>(seconds))) += " s");
    outcome.failure->help =
        "show less, with --graph or --filter, or write --format=dot and draw "
        "that";
  }
  return {std::move(outcome.svg), left_out_of(graph, limits), std::move(outcome.failure)};
}

}    // namespace workbench
