#include "dl/parse.h"

#include <deque>
#include <set>
#include <utility>

#include "grammar.h"
#define YYSTYPE DL_STYPE    // the scanner's header knows the value type by this name alone
#include "scanner.h"
void dl_leave_text(yyscan_t scanner);    // at the end of scanner.l
#include "dl/failure.h"
#include "dl/folding.h"
#include "dl/source_file.h"

namespace dl {
namespace {

// The scanner's state, freed with it.
class Scanner {
 public:
  Scanner(std::string& text, StatementBuilder& builder) {
    dl_lex_init_extra(&builder, &state_);
    dl__scan_buffer(text.data(), text.size(), state_);
  }
  ~Scanner() {
    dl_leave_text(state_);
    dl_lex_destroy(state_);
  }
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;
  yyscan_t state() const { return state_; }

 private:
  yyscan_t state_ = nullptr;
};

// A file waiting to be read; `place` is that of its include line, for messages.
struct Waiting {
  std::string path;
  std::string place;
};

}    // namespace

bool parse_text(std::string& text, StatementBuilder& builder) {
  const Scanner scanner(text, builder);
  return dl_parse(scanner.state(), &builder) == 0 && !builder.has_failed();
}

InputFiles survey_program(const std::vector<std::string>& paths, Survey& survey) {
  InputFiles input;
  const Folding unfolded;
  std::set<std::pair<std::uint64_t, std::uint64_t>> read;
  for (const std::string& path : paths) {
    std::deque<Waiting> waiting{{path, "dl: "}};
    while (!waiting.empty()) {
      const Waiting next = std::move(waiting.front());
      waiting.pop_front();
      SourceFile source = read_source_file(next.path, next.place);
      if (!read.insert(source.identity).second) continue;
      std::string& text =
          input.files.emplace_back(InputFile{next.path, std::move(source.text)}).text;
      StatementBuilder builder(survey, unfolded);
      input.has_mistake = !parse_text(text, builder);
      if (input.has_mistake) return input;
      for (const Include& include : survey.take_includes()) {
        waiting.push_back(
            {resolve_include(next.path, include.name), at_place(next.path, include.line, "")});
      }
    }
  }
  return input;
}

void translate_program(InputFiles& input, const Folding& folding, Translator& translator) {
  for (InputFile& file : input.files) {
    translator.begin_file(file.path);
    StatementBuilder builder(translator, folding);
    if (!parse_text(file.text, builder)) {
      throw Failure{at_place(file.path, builder.mistake_line(), builder.mistake())};
    }
    file.text = std::string();
  }
}

}    // namespace dl
