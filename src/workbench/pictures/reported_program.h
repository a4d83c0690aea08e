#pragma once
// reported_program.h - a program and what was said of it, for the page of a report.

#include <string>
#include <vector>

#include "base/file_table.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// What a report shows of the program. What it looks at outlives it.
struct ReportedProgram {
  static constexpr std::size_t kMostMessages = 1000;    // the rest is on the terminal alone

  const zarel::FileTable& files;
  SourceTexts& texts;
  std::vector<std::string> messages = {};    // that were shown, as JSON; see message_json.h
};

// Appends {"files": [{"name", "lines", "more"}...], "messages": [...]}: of each file the first
// lines, and how many more there are.
void append_program(std::string& out, const ReportedProgram& program);

}    // namespace workbench
