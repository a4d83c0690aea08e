#pragma once
// report.h - how the folders of the front end tell what is wrong: values go to the current run,
// each with its place. Nothing is printed here.

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "base/diagnostic.h"
#include "base/place.h"
#include "model/origin.h"

namespace zarel {

// What a run works on: the construct that was read last, or the clause that is being expanded. What
// is reported without a place of its own stands there, and clauses that are made come from there.
struct Work {
  SourceSpan span = {};
  OriginId origin = OriginId::kWritten;
  const SourceRange* reading = nullptr;    // while a file is parsed: where, in place of the span's

  SourceSpan where() const { return {span.file, reading == nullptr ? span.range : *reading}; }
  ClauseSource source() const { return {where().first(), origin}; }
};

// The current run's work, and its place with columns in characters.
Work& work();
Place work_place();

// The work from now to the end of the scope; then what it was before.
class WorkScope {
 public:
  explicit WorkScope(const Work& next) : before_(std::exchange(work(), next)) {}
  explicit WorkScope(const ClauseSource& source);
  explicit WorkScope(OriginId origin);    // at the same place
  ~WorkScope() { work() = before_; }
  WorkScope(const WorkScope&) = delete;
  WorkScope& operator=(const WorkScope&) = delete;

 private:
  Work before_;
};

// A location, as the place of its one character, and a span, with columns in characters.
Place place_of(const SourceLocation& location);
Place place_of(const SourceSpan& span);

// Hands a finding to the run: to the sink that it was given, else to its list. The line that the
// scanner has reached is noted beside it, and what kind_of() says to count is counted.
void report(Diagnostic finding);
void report(Code code, std::string text);    // where the work stands

// The same, and then the end of the run. See Note [ends as exceptions].
[[noreturn]] void end_run(int status);
[[noreturn]] void report_and_end(Diagnostic finding, int status = 1);
[[noreturn]] void report_and_end(Code code, std::string text);

// Where the results of the run go: what its host gave it, else nowhere.
std::ostream& standard_output();

}    // namespace zarel
