#pragma once
// run_progress.h - what the run is doing: shown on a terminal while it lasts, and told afterwards.
// It is the process that has a progress, like its clock and its terminal.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

enum class Phase : std::uint8_t {
  kReading,
  kExpanding,
  kGrounding,
  kSearching,
  kWriting,
  kCutting    // of a search into parts, grounding included
};

std::string_view name_of(Phase phase);

struct PhaseFigures {
  Phase phase;
  double seconds;
  std::uint64_t peak_memory;    // in bytes, of this process since it began
};

// The first phase begins. With a line, standard error shows after a second what goes on, in place,
// until end_progress().
enum class ProgressLine : bool { kNone, kShown };
void begin_progress(ProgressLine line);
// The next phase begins.
void enter(Phase phase);
void will_read(std::uint64_t bytes);    // so many more
void note_found(std::uint64_t answer_sets);
void note_cost(std::string cost);    // of the best answer set so far, in words
// Takes the line away, before something else is written to the terminal; it comes back.
void clear_progress_line();
// Whether the line may be there, and what takes it away, for who cannot call a function.
bool has_progress_line();
inline constexpr std::string_view kClearLine = "\r\x1b[K";

// Nothing goes on any more: the phases in their order.
std::vector<PhaseFigures> end_progress();

double seconds_since_begin();

}    // namespace workbench
