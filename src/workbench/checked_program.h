#pragma once
// checked_program.h - a program with all that looks at it: what the commands have in common.

#include <iostream>

#include "workbench/checks/checks.h"
#include "workbench/command_line.h"
#include "workbench/data/data_reader.h"
#include "workbench/loading.h"
#include "workbench/messages/findings.h"
#include "workbench/messages/reporter.h"
#include "workbench/messages/source_texts.h"
#include "zarel/program.h"

namespace workbench {

class CheckedProgram {
 public:
  // Messages are written to `messages`.
  explicit CheckedProgram(const CommandLine& line, std::ostream& messages = std::cerr);

  // Reads, checks and rewrites. Without a status all went well: there is a program to be solved, or
  // to be looked at. What was found last waits in the reporter for what may still be found.
  std::optional<ExitStatus> prepare(zarel::PlainFacts facts = zarel::PlainFacts::kWritten);

  zarel::Program& program() { return program_; }
  Reporter& reporter() { return reporter_; }
  SourceTexts& texts() { return texts_; }
  const std::vector<StatedRange>& ranges() const { return ranges_; }    // that it states

 private:
  void take(const zarel::Diagnostic& finding);
  void look_at(const zarel::WrittenStatement& statement);

  const CommandLine& line_;
  LoadedTexts loaded_;
  zarel::Program program_;
  SourceTexts texts_;
  SyntaxMessages syntax_{texts_};
  Reporter reporter_;
  DataReader data_;
  Checks checks_;
  std::vector<StatedRange> ranges_;
  bool has_unreadable_file_ = false;
};

}    // namespace workbench
