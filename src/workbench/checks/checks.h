#pragma once
// checks.h - what is legal and seldom meant, and rules that are not safe.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "parser/written_statement.h"
#include "workbench/answers/item_pattern.h"
#include "workbench/messages/message.h"
#include "zarel/program.h"

namespace workbench {

// What the warnings need to know of the command line.
struct CheckOptions {
  std::vector<ItemPattern> filters;
  bool has_maxint = false;               // there is a bound on integers besides the program's
  std::string_view query_option = {};    // an option that is about the program's query
};

// Told of the remarks and statements of a program while it is read.
struct ReadingWatch {
  std::function<void(std::string_view, const zarel::SourceLocation&)> remark;
  std::function<void(const zarel::WrittenStatement&)> statement;
};

// Looks at a program while it is read, and judges it when all was read.
class Checks {
 public:
  // Watches the program, of which nothing was read so far. It must outlive the checks. What they
  // are told of, `watch` is told before.
  Checks(zarel::Program& program, const CheckOptions& options, ReadingWatch watch);
  ~Checks();

  // Tells what it found: errors, then warnings, each in the order of the text. For a program without errors, before its
  // templates are expanded.
  void report(const MessageSink& sink);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}    // namespace workbench
