#pragma once
// reading_fixture.h - text in, printed text and messages out.

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

#include "model/namespaces.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"
#include "support/caught_findings.h"
#include "support/fresh_run.h"
#include "support/text_file.h"
#include "support/texts.h"

namespace zarel {

// A run of its own, results and messages caught.
template <typename Base>
class ReadingTest : public Base {
 protected:
  ReadingTest() {
    catch_findings(output_, errors_);
    current_run().findings.parser_line = 1;
  }

  // Everything that reading the text prints, the messages last.
  std::string read(std::string_view text) { return printed_by_reading(text); }
  // The same of a file with that text, which begins with line 1.
  std::string read_as_file(std::string_view text) {
    const File file = file_with(text);
    current_run().findings.parser_line = 1;
    return printed_by_reading(file.get());
  }

  template <typename Source>
  std::string printed_by_reading(const Source& source) {
    output_.str("");
    errors_.str("");
    status_ = read_answer_sets(source);
    return output_.str() + errors_.str();
  }

  FreshRun run_;
  int status_ = -1;
  std::ostringstream output_, errors_;
};

// A text, how it is to be shown, and what is printed. One test takes them all, wherever they stand.
struct Case {
  std::string_view name, input, output;
  void (*prepare)() = [] {};
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};
class Reader : public ReadingTest<testing::TestWithParam<Case>> {};
class ReaderState : public ReadingTest<testing::Test> {};

}    // namespace zarel
