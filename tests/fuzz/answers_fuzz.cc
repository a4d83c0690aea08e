// answers_fuzz.cc - the reader of the solver's output. What is printed without options prints the
// same again when it is put back into the solver's format; and blanks between tokens change
// nothing.

#include <fcntl.h>
#include <sstream>

#include "answer_encoding.h"
#include "driver/diagnostics.h"
#include "harness.h"
#include "model/namespaces.h"
#include "model/run.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"
#include "zarel/input_file.h"

namespace {

struct Printed {
  int status = 0;
  std::string text;
  std::string messages;
};

template <class Source>
Printed printed(const Source& source) {
  std::ostringstream output;
  std::ostringstream messages;
  zarel::show_findings(output, messages);
  zarel::current_run().findings.parser_line = 0;
  Printed result;
  try {
    result.status = zarel::read_answer_sets(source);
  } catch (const zarel::RunEnd& end) {
    result.status = end.status;
  }
  result.text = std::move(output).str();
  result.messages = std::move(messages).str();
  return result;
}

// As the command line says; with one name space that the program is taken to have used.
void set_display(const zarel::Options& options) {
  zarel::DisplaySettings& display = zarel::display_settings();
  display.set_filters(options.filters, options.positive_filters);
  display.space = !options.shows_frame_spaces;
  display.address = !options.shows_uris;
  zarel::vectorName().declare("ex", "\"http://example.org/#\"");
  zarel::note_prefix_use();
}

}    // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Input input = fuzz::read_input(data, size);
  zarel::Run run;
  const zarel::Run::Scope scope(run);
  if (!input.words.empty()) set_display(fuzz::zarel_options(input.words));
  const fuzz::MemoryFile file(input.text);
  // By its descriptor: opened by its path, a file would have its first piece in its buffer already.
  const zarel::InputFile answers(::open(file.path().c_str(), O_RDONLY | O_CLOEXEC));
  const Printed first = printed(answers.handle());
  const Printed spread = printed(std::string_view(fuzz::with_blanks(input.text)));
  fuzz::expect_equal("the same with blanks", first.text + first.messages,
                     spread.text + spread.messages);
  if (!input.words.empty() || first.status != 0) return 0;
  const auto encoded = fuzz::encoded_answers(first.text);
  if (!encoded) return 0;
  const std::string again = printed(std::string_view(*encoded)).text;
  if (again == first.text || fuzz::has_unknown_arrow(input.text)) return 0;
  fuzz::expect_equal("printed again from\n" + *encoded, first.text, again);
  return 0;
}
