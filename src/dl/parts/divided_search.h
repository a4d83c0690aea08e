#pragma once
// divided_search.h - the process that stands for clingo where a search is divided: it reads what
// clingo would read, has it grounded once, lets several clingos solve it, and prints what one
// clingo would print, besides lines that begin with kSearchNote.

#include <string>
#include <string_view>

#include "dl/parts/crew.h"
#include "dl/search_plan.h"

namespace dl {

// Does what `--become-clingo` or `--divide-search` in the arguments of a program ask for, and then
// does not return. To be called before anything else.
void become_helper(int count, char** arguments);

// Writes to standard output, or ends this process, when nobody reads it.
void print_for_host(std::string_view text);
void note_for_host(std::string_view text);

// As clingo would fail: what it says goes to standard error. Returns its exit status, or ends this
// process by the signal that ended it.
int fail_as(const ProcessEnd& end);

// The searches. Each reads the ground program, works with the crew and returns the exit status that
// clingo would have. Waiting of the crew is interrupted when the host wants no more than what was
// found.
int race(const SearchPlan& plan, std::string ground, Crew& crew);
int solve_parts(const SearchPlan& plan, std::string ground, Crew& crew);

// How long others may still show what they have found after an interruption, in milliseconds: the
// host is not patient for longer.
inline constexpr int kLastWords = 200;

}    // namespace dl
