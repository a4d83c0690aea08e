#pragma once
// interruption.h - what may end dl before its search is complete: SIGINT, SIGTERM and the time
// limit.

#include <string_view>

namespace dl {

// What asked the search to end, if anything did.
enum class Interruption { kNone, kTime, kSignal };

// From now on SIGINT, SIGTERM and the end of the time limit (in seconds, 0: none) interrupt dl,
// whatever started it had ignored or blocked. Before the search there is nothing to show: dl says
// that it was interrupted and ends with this status, wherever it reads, waits or translates.
void watch_interruptions(unsigned seconds, int status);

// The process that searches is asked to end, so that it shows the best it has, and is killed when
// it does not listen.
void begin_search(int process);
void end_search();

Interruption interruption();
// "the search was ", and why it ended.
std::string_view interruption_text();

}    // namespace dl
