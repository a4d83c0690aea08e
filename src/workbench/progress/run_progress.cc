#include "workbench/progress/run_progress.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <mutex>
#include <optional>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

#include "workbench/messages/characters.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kDelay{1000};
constexpr std::chrono::milliseconds kStep{200};
constexpr std::uint64_t kMegabyte = 1'000'000;

double seconds_from(Clock::time_point begin) {
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

std::uint64_t peak_memory() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return static_cast<std::uint64_t>(usage.ru_maxrss) * 1024;
}

// What the process has read so far of anything: nobody has to count while he reads.
std::uint64_t bytes_read() {
  std::ifstream file("/proc/self/io");
  std::string word;
  std::uint64_t bytes = 0;
  file >> word >> bytes;
  return bytes;
}

std::size_t columns() {
  winsize size{};
  constexpr std::size_t kUsual = 80;
  if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsual;
  return size.ws_col;
}

void write_error(std::string_view text) {
  // A terminal that takes no line is no reason to stop.
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

class RunProgress {
 public:
  ~RunProgress() { end_line(); }

  void begin(ProgressLine line);
  void enter(Phase phase);
  void will_read(std::uint64_t bytes);
  void note_found(std::uint64_t sets) { answer_sets_.store(sets, std::memory_order_relaxed); }
  void note_cost(std::string cost);
  void clear_line();
  bool has_line() const { return has_line_; }
  std::vector<PhaseFigures> end();
  double seconds() const { return seconds_from(begin_); }

 private:
  void show();
  void draw(std::string line);
  void end_line();
  std::string text() const;
  void end_phase();

  Clock::time_point begin_ = Clock::now();
  Clock::time_point phase_begin_ = begin_;
  std::vector<PhaseFigures> figures_;
  std::atomic<std::uint64_t> answer_sets_ = 0;
  std::atomic<bool> is_drawn_ = false;
  bool has_line_ = false;

  std::mutex mutex_;    // of all below, and of the terminal
  std::condition_variable ends_;
  bool has_ended_ = false;
  std::optional<Phase> phase_;
  std::uint64_t bytes_to_read_ = 0;
  std::uint64_t bytes_before_ = 0;
  std::string cost_;
  std::string drawn_;
  std::thread thread_;
};

void RunProgress::begin(ProgressLine line) {
  begin_ = phase_begin_ = Clock::now();
  phase_ = Phase::kReading;
  if (line == ProgressLine::kNone) return;
  has_line_ = true;
  bytes_before_ = bytes_read();
  // Signals are for the thread that knows what to do with them.
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  thread_ = std::thread([this] { show(); });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void RunProgress::show() {
  std::unique_lock lock(mutex_);
  ends_.wait_for(lock, kDelay, [this] { return has_ended_; });
  while (!has_ended_) {
    draw(shown_text(text(), columns() - 1));
    ends_.wait_for(lock, kStep, [this] { return has_ended_; });
  }
}

void RunProgress::draw(std::string line) {
  if (is_drawn_ && line == drawn_) return;
  write_error(std::string(kClearLine) + line);
  drawn_ = std::move(line);
  is_drawn_ = true;
}

std::string RunProgress::text() const {
  std::string text(name_of(*phase_));
  if (*phase_ == Phase::kReading && bytes_to_read_ != 0) {
    const std::uint64_t done = std::min(bytes_read() - bytes_before_, bytes_to_read_);
    ((text += ' ') += std::to_string(done / kMegabyte)) += " of ";
    (text += std::to_string(bytes_to_read_ / kMegabyte)) += " MB";
  }
  std::array<char, 32> seconds{};
  std::snprintf(seconds.data(), seconds.size(), ", %.0f s", seconds_from(phase_begin_));
  text += seconds.data();
  if (*phase_ != Phase::kSearching) return text;
  const std::uint64_t sets = answer_sets_.load(std::memory_order_relaxed);
  if (sets != 0) (text += ": ") += counted(sets, "answer set");
  if (!cost_.empty()) (text += ", best cost ") += cost_;
  return text;
}

void RunProgress::end_phase() {
  if (!phase_) return;
  figures_.push_back({*phase_, seconds_from(phase_begin_), peak_memory()});
  phase_begin_ = Clock::now();
}

void RunProgress::enter(Phase phase) {
  const std::lock_guard lock(mutex_);
  end_phase();
  phase_ = phase;
}

void RunProgress::will_read(std::uint64_t bytes) {
  const std::lock_guard lock(mutex_);
  bytes_to_read_ += bytes;
}

void RunProgress::note_cost(std::string cost) {
  const std::lock_guard lock(mutex_);
  cost_ = std::move(cost);
}

void RunProgress::clear_line() {
  if (!is_drawn_) return;
  const std::lock_guard lock(mutex_);
  if (is_drawn_.exchange(false)) write_error(kClearLine);
}

void RunProgress::end_line() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    has_ended_ = true;
  }
  ends_.notify_one();
  thread_.join();
  clear_line();
}

std::vector<PhaseFigures> RunProgress::end() {
  end_line();
  end_phase();
  phase_.reset();
  return figures_;
}

RunProgress& progress() {
  static RunProgress of_the_process;
  return of_the_process;
}

}    // namespace

std::string_view name_of(Phase phase) {
  constexpr std::array<std::string_view, 6> kNames{"reading",   "expanding", "grounding",
                                                   "searching", "writing",   "cutting"};
  return kNames.at(static_cast<std::size_t>(phase));
}

void begin_progress(ProgressLine line) {
  progress().begin(line);
}

void enter(Phase phase) {
  progress().enter(phase);
}

void will_read(std::uint64_t bytes) {
  progress().will_read(bytes);
}

void note_found(std::uint64_t answer_sets) {
  progress().note_found(answer_sets);
}

void note_cost(std::string cost) {
  progress().note_cost(std::move(cost));
}

void clear_progress_line() {
  progress().clear_line();
}

bool has_progress_line() {
  return progress().has_line();
}

std::vector<PhaseFigures> end_progress() {
  return progress().end();
}

double seconds_since_begin() {
  return progress().seconds();
}

}    // namespace workbench
