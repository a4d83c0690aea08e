#pragma once
// clingo_failure.h - why a search failed, in words, and with places in the program.

#include <optional>
#include <string>
#include <string_view>

#include "dl/child_process.h"
#include "dl/translate.h"

namespace dl {

struct FailedSearch {
  const std::string& clingo;
  const Translated& program;
  std::string_view given;    // the translation, where sums are watched
};

// Throws the Failure.
[[noreturn]] void fail_search(const ProcessEnd& end, const FailedSearch& search);

// The sum for which clasp gave up, if it was one: grounds the translation once more. Throws Failure
// when no process can be made.
std::optional<std::size_t> sum_at_fault(const std::string& clingo, std::string_view translation,
                                        const ProgramParts& parts);

// "5.4.1"; nothing where the program does not tell, for which there may be a reason in how it ended.
std::string version_of(const std::string& clingo, ProcessEnd* end = nullptr);

// Whether it is clingo 5 before 5.`minor`; not where it does not tell. Asks it, as few options need
// to know: a program's start costs time.
bool is_older_clingo(const std::string& clingo, int minor);

// What is to be said of a clingo that failed, if its major version is another one than that of
// which it is known that it does what we ask for: asks it.
std::string untested_version(const std::string& clingo);

}    // namespace dl
