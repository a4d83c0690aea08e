#pragma once
// printed_program.h - what whoever prints answers, or tells what is wrong with them, needs of a
// program: as lines that go with a search in parts, so that the program itself need not.

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "dl/translate.h"
#include "model/run.h"
#include "workbench/answers/answer_options.h"
#include "workbench/checked_program.h"
#include "zarel/program.h"

namespace workbench {

// What a search in parts keeps of its program.
class PrintedProgram {
 public:
  // Reads lines that lines_of() has made. Throws dl::Failure for others.
  explicit PrintedProgram(const std::vector<std::string>& lines);
  PrintedProgram(const PrintedProgram&) = delete;
  PrintedProgram& operator=(const PrintedProgram&) = delete;

  // With the name spaces that are shown, and the files in which an answer can be at fault, which
  // are texts in memory.
  zarel::Run& run() { return run_; }
  bool leaves_out_facts() const { return leaves_out_facts_; }
  const std::vector<StatedRange>& ranges() const { return ranges_; }    // that are left out
  // Where a line of the rewritten program comes from: one that can be at fault.
  zarel::LineOrigin origin_of_line(std::uint32_t line) const;

 private:
  zarel::Run run_;
  std::deque<std::string> texts_;
  std::unordered_map<std::uint32_t, zarel::LineOrigin> origins_;
  zarel::LineOrigin* last_ = nullptr;    // of these, while lines are read
  std::vector<StatedRange> ranges_;
  bool leaves_out_facts_ = false;
};

// Of a program that was rewritten and translated.
std::vector<std::string> lines_of(CheckedProgram& checked, const dl::Translated& translated,
                                  bool leaves_out_facts);

}    // namespace workbench
