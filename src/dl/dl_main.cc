// dl_main.cc - the phases of dl, in order; the texts of its messages, and its exit statuses.

#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>
#include <vector>

#include "dl/clingo_run.h"
#include "dl/explain/questions.h"
#include "dl/failure.h"
#include "dl/instance_counts.h"
#include "dl/interruption.h"
#include "dl/options.h"
#include "dl/parts/divided_search.h"
#include "dl/parts/job_commands.h"
#include "dl/read_files.h"
#include "dl/translate.h"

namespace {

// A search that was cut has printed what was found, so it is neither success nor an error.
enum ExitStatus : int { kSuccess = 0, kError = 1, kCut = 2 };

[[noreturn]] void fail_output(const std::string& reason) {
  throw dl::Failure{{zarel::Code::kOutputFailure, {}, "cannot write to standard output" + reason}};
}

int print(std::string_view text) {
  std::cout << text << std::flush;
  if (!std::cout) fail_output("");
  return kSuccess;
}

void write_answers(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail_output(std::string(": ") + std::strerror(errno));
    }
  }
}

// "file:line: text"; "dl: text" of what has no place. See Note [lines as shown].
std::string message(const zarel::Diagnostic& diagnostic, const dl::Sources& sources) {
  std::string text = "dl";
  if (diagnostic.place.is_known() && diagnostic.place.first.file < sources.size()) {
    text = sources.name(diagnostic.place.first.file);
    (text += ':') += std::to_string(diagnostic.parser_line);
  }
  return (text += ": ") += diagnostic.text;
}

// A message may quote a token, of any length. Its two ends tell where and what.
std::string shortened(std::string message) {
  constexpr std::size_t kEnd = 500;
  if (message.size() > 3 * kEnd) message.replace(kEnd, message.size() - 2 * kEnd, "...");
  return message;
}

// The most expensive rules.
void show_costs(const dl::Options& options) {
  constexpr std::size_t kMost = 20;
  const dl::InstanceCounts counts = dl::count_instances(dl::survey_files(options.files), options);
  for (const dl::InstanceCount& count : counts.largest) {
    if (&count == counts.largest.data() + kMost) break;
    std::cerr << counts.sources.name(count.location.file) << ':' << count.location.line << ": "
              << count.instances << (count.instances == 1 ? " instance\n" : " instances\n");
  }
}

// The answer, instead of answer sets. Mistakes are told by the names of the program's texts.
int answer(dl::Program program, const dl::Options& options, dl::Sources& names) {
  for (std::uint32_t file = 0; file < program.sources.size(); ++file) {
    names.add(program.sources.name(file), {});
  }
  if (dl::answer_question(std::move(program), options, write_answers)) return kSuccess;
  std::cerr << "dl: " << dl::interruption_text() << "; the answer is not complete\n";
  return kCut;
}

int run(const std::vector<std::string_view>& arguments, dl::Translated& program) {
  const dl::Options options = dl::read_options(arguments);
  if (options.help || options.version) {
    return print(options.help ? std::string(dl::help_text()) : dl::version_text());
  }
  dl::watch_interruptions(static_cast<unsigned>(options.seconds), kCut);
  if (options.question != dl::QuestionKind::kNone) {
    return answer(dl::survey_files(options.files), options, program.sources);
  }
  const dl::SearchOutput output{write_answers,
                                [&program](const zarel::Diagnostic& note) {
                                  std::cerr << message(note, program.sources) << '\n';
                                },
                                [](std::string_view said) { std::cerr << "dl: " << said << '\n'; }};
  if (options.job != dl::JobCommand::kNone) {
    return dl::do_job(options, output, program) ? kSuccess : kCut;
  }
  dl::ClingoRun clingo(options, output);
  dl::Program surveyed = dl::survey_files(options.files);
  dl::TextReceiver receiver;
  if (!options.translate_only && !surveyed.has_failed()) {
    clingo.start(dl::traits_of(surveyed, options));
    receiver = [&clingo](std::string_view text) { clingo.give(text); };
  }
  program = dl::translate(std::move(surveyed), options, receiver);
  if (program.mistake) throw dl::Failure{*program.mistake};
  if (options.translate_only) return print(program.text);
  if (clingo.solve(program) != dl::Search::kComplete) return kCut;
  if (options.shows_costs) show_costs(options);
  return kSuccess;
}

}    // namespace

int main(int argc, char** argv) {
  dl::become_helper(argc, argv);
  dl::Translated program;
  try {
    return run({argv + 1, argv + argc}, program);
  } catch (const dl::Failure& failure) {
    std::cerr << shortened(message(failure.diagnostic, program.sources)) << '\n';
  } catch (const std::bad_alloc&) {
    std::cerr << "dl: out of memory\n";
  }
  return kError;
}
