#pragma once
// jobs.h - what is done with a search in parts that lies in a folder: it is cut, its parts run,
// divided where they take too long, and joined.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/parts/job_folder.h"
#include "dl/search_plan.h"

namespace dl {

// Cuts the search as the plan says, and makes the folder. `translation` is the whole of what clingo
// is given. Returns the number of parts. Throws FailedWorker where clingo fails, and Failure.
std::size_t make_jobs(const std::string& folder, const SearchPlan& plan,
                      std::string_view translation, const AnswerTables& tables);

// Throws Failure where the folder has no such part, or it was divided.
void expect_part(const JobFolder& jobs, std::size_t part);

enum class PartRun : bool { kCut, kDone };
// Runs the part and puts its result into the folder; that of a run that was interrupted beside it.
// `takes_bound`: what other parts have found need not be found again, if it is better. Throws
// FailedWorker, and Failure where the folder or clingo is not that of the cut.
PartRun run_part(const JobFolder& jobs, std::size_t part, const std::string& clingo,
                 bool takes_bound);

// Returns the numbers of the parts that stand for it from now on. Throws as make_jobs(), and Failure
// where it cannot be cut, or is done.
std::vector<std::size_t> divide_part(JobFolder& jobs, std::size_t part, std::size_t pieces,
                                     const std::string& clingo);

// Parts without a result of this search, in order of their numbers.
std::vector<std::size_t> missing_parts(const JobFolder& jobs);

struct JoinFigures {
  std::vector<std::size_t> missing;
  std::size_t parts = 0;      // with a result
  std::uint64_t found = 0;    // answer sets in all parts
  double seconds = 0;         // of cores
  double longest = 0;         // part
  std::size_t longest_part = 0;
  bool may_have_more = false;    // a limit of answer sets was met
};
// Prints the answers as clingo prints those of a whole search, with its final line, line by line,
// until `take` says that it wants no more.
// Throws Failure where results are missing and not `is_partial`, or foreign.
JoinFigures join_parts(const JobFolder& jobs, bool is_partial,
                       const std::function<bool(std::string_view)>& take);

}    // namespace dl
