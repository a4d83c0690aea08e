#pragma once
// caught_findings.h - what a run finds wrong, as text.

#include <ostream>

#include "model/run.h"

namespace zarel {

// From now on the current run's results go to `output`, and what it finds to `errors`: in a line
// behind the line that the scanner has reached, or alone, as the established command line does it
// while it reads.
inline void catch_findings(std::ostream& output, std::ostream& errors) {
  current_run().output = &output;
  current_run().findings.sink = [&output, &errors](const Diagnostic& finding) {
    const Shown shown = kind_of(finding.code).shown;
    if (shown == Shown::kNever) return;
    if (shown == Shown::kAsOutput) {
      output << finding.text;
    } else if (shown == Shown::kAlone) {
      errors << finding.text << '\n';
    } else {
      errors << "line " << finding.parser_line << ": " << finding.text << ".\n";
    }
  };
}

}    // namespace zarel
