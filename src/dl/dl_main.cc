// dl_main.cc - the phases of dl, in order.

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "dl/clingo_process.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/options.h"
#include "dl/parse.h"
#include "dl/survey.h"
#include "dl/translator.h"

namespace {

int print(std::string_view text) {
  std::cout << text << std::flush;
  if (!std::cout) throw dl::Failure{"dl: cannot write to standard output"};
  return dl::kSuccess;
}

// A message may quote a token, of any length. Its two ends tell where and what.
std::string shortened(std::string message) {
  constexpr std::size_t kEnd = 500;
  if (message.size() > 3 * kEnd) message.replace(kEnd, message.size() - 2 * kEnd, "...");
  return message;
}

int run(const std::vector<std::string_view>& arguments) {
  const dl::Options options = dl::read_options(arguments);
  if (options.help || options.version) {
    return print(options.help ? dl::help_text() : dl::version_text());
  }
  dl::watch_interruptions(static_cast<unsigned>(options.seconds));
  dl::Survey survey;
  dl::InputFiles input = dl::survey_program(options.files, survey);
  dl::ProgramParts parts;
  parts.has_query = survey.has_query();
  parts.has_weak_constraints = survey.has_weak_constraints();
  parts.has_sums = survey.has_sums();
  parts.has_bound = options.bound || survey.bound();
  dl::Translation translation;
  dl::Translator translator(options, parts, translation);
  dl::ClingoRun clingo(options, parts, translation.lines);
  if (!options.translate_only && !input.has_mistake) clingo.read_along(translation);
  dl::translate_program(input, options.fold ? survey.folding() : dl::Folding(), translator);
  translator.end_program();
  if (options.translate_only) return print(translation.text);
  return clingo.solve(translation.text);
}

}    // namespace

int main(int argc, char** argv) {
  if (argc > 3 && argv[1] == dl::kBecomeClingo) dl::become_clingo(argv + 2);
  try {
    return run({argv + 1, argv + argc});
  } catch (const dl::Failure& failure) {
    std::cerr << shortened(failure.message) << '\n';
  } catch (const std::bad_alloc&) {
    std::cerr << "dl: out of memory\n";
  }
  return dl::kError;
}
