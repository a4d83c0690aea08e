#pragma once
// printed_search.h - from a search to its answers, to what is said of them, and to an exit status.

#include <functional>
#include <string>

#include "model/run.h"
#include "workbench/answers/answer_options.h"
#include "workbench/messages/exit_status.h"
#include "workbench/messages/reporter.h"
#include "workbench/search/search.h"

namespace workbench {

struct PrintedSearch {
  int output;                                            // where answers without a file go
  std::function<SearchResult(AnswerPrinter&)> search;    // throws SearchFailure
  // Says what is to be said besides, behind what was found. The flag: there is no answer set.
  std::function<void(const SearchResult&, bool)> tell_more;
};

// Of the run it looks at the name spaces alone. What is wrong is reported.
ExitStatus print_search(const zarel::Run& run, const AnswerOptions& answers, Reporter& reporter,
                        const PrintedSearch& steps);

ExitStatus report_failure(const SearchFailure& failure, Reporter& reporter);

}    // namespace workbench
