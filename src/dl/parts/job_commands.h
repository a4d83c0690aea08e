#pragma once
// job_commands.h - dl's side of searches in parts that lie in a folder.

#include <functional>
#include <string>
#include <string_view>

#include "dl/clingo_run.h"
#include "dl/options.h"

namespace dl {

// Does what `options.job` says. What users ask for goes to `output.answers`, figures and warnings to
// `output.said`. `program` is what mistakes are told by. Returns false where what was printed is
// not all: a part was cut, or results are missing. Throws Failure.
bool do_job(const Options& options, const SearchOutput& output, Translated& program);

}    // namespace dl
