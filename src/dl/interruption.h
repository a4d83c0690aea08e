#pragma once
// interruption.h - what may end a run before its search is complete: SIGINT, SIGTERM and the time
// limit, and a terminal that is gone.

#include <string>
#include <string_view>

namespace dl {

// What asked the search to end, if anything did.
enum class Interruption { kNone, kTime, kSignal };

// How a program wants to be interrupted.
struct InterruptionPlan {
  double seconds = 0;       // the time limit; 0: none
  double grace = 2;         // seconds between asking the search to end and ending it
  bool hangs_up = false;    // SIGHUP interrupts too, unless it is ignored
  // A search that does not have its whole input yet is not asked, but ended: it has found nothing.
  bool ends_while_feeding = false;
  // After the grace, so long as nothing moves what is being written (see note_writing), the run
  // ends as it is.
  bool ends_while_writing = false;
  int status = 0;             // of a run that has nothing to show
  std::string time_line;      // what it says on standard error, with its line end
  std::string signal_line;    // the same
  std::string stuck_line;     // the same, of a run that ends while it writes
};

// From now on SIGINT, SIGTERM and the end of the time limit interrupt the program, whatever started
// it had ignored or blocked. Before the search there is nothing to show: it says that it was
// interrupted and ends, wherever it reads, waits or translates.
void watch_interruptions(InterruptionPlan plan);

// As dl is: its texts, and no hurry. The time limit is in seconds, 0: none.
void watch_interruptions(unsigned seconds, int status);

// From now on an interruption is noted only; who looks at interruption() ends in order.
void hold_interruptions();
// The process that searches is asked to end, so that it shows the best it has, and is killed when
// it does not listen. A group of processes has a negative number.
void begin_search(int process);
void end_feeding();    // it has its whole input
void end_search();     // as hold_interruptions()

// Told around each piece that is written where a reader may be slow, and when a part of it is.
void note_writing(bool begins);
void note_progress();

Interruption interruption();
// "the search was ", and why it ended.
std::string_view interruption_text();

}    // namespace dl
