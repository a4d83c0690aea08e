#pragma once
// reported_jobs.h - what goes wrong with a search in parts, told as zrl tells it.

#include <functional>
#include <string>

#include "workbench/messages/exit_status.h"
#include "workbench/messages/reporter.h"

namespace workbench {

// Does the work; what it throws (dl::Failure, dl::FailedWorker of this clingo) is reported, and
// gives the status.
ExitStatus with_reports(Reporter& reporter, const std::string& clingo,
                        const std::function<ExitStatus()>& work);

}    // namespace workbench
