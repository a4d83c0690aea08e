#pragma once
// reading_fixture.h - text in, printed text and messages out.

#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>

#include "../model/fresh_run.h"
#include "driver/diagnostics.h"
#include "model/namespaces.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"

namespace zarel {

// A run of its own, results and messages caught.
template <typename Base>
class ReadingTest : public Base {
 protected:
  ReadingTest() {
    report_state().ParserStateInternal = false;
    report_state().parser_line = 1;
    report_state().output = &output_;
    report_state().errors = &errors_;
  }

  // Everything that reading the text prints, the messages last.
  std::string read(std::string_view text) {
    output_.str("");
    errors_.str("");
    status_ = read_answer_sets(text);
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

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  all.reserve(text.size() * count);
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

inline std::string joined(std::initializer_list<std::string_view> pieces) {
  std::string all;
  for (const std::string_view piece : pieces) all += piece;
  return all;
}

}    // namespace zarel
