#include "solver/parse.h"

#include <deque>
#include <set>
#include <utility>

#include "grammar.h"
#define YYSTYPE DL_STYPE    // the scanner's header knows the value type by this name alone
#include "scanner.h"
#include "solver/failure.h"
#include "solver/folding.h"
#include "solver/source_file.h"

namespace dl {
namespace {

// The scanner's state, freed with it.
class Scanner {
 public:
  Scanner(std::string& text, StatementBuilder& builder) {
    dl_lex_init_extra(&builder, &state_);
    dl__scan_buffer(text.data(), text.size(), state_);
  }
  ~Scanner() { dl_lex_destroy(state_); }
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

// Note [reading along]
// clingo takes longer to read the translation than we take to make it, so it reads while we
// translate. But its command line tells of queries and weak constraints, which may stand in the
// last line. So clingo is started early for a plain program only: one file whose text, comments and
// strings too, has nothing that could begin or end one of those, nor include another file. A
// mistake that is found later ends the clingo that was started, before it has said anything: it
// reads all before it solves.
bool is_plain(std::string_view text) {
  return text.find('?') == std::string_view::npos && text.find(":~") == std::string_view::npos;
}

}    // namespace

bool parse_text(std::string& text, StatementBuilder& builder) {
  const Scanner scanner(text, builder);
  return dl_parse(scanner.state(), &builder) == 0 && !builder.has_failed();
}

void read_program(const std::vector<std::string>& files, Translator& translator,
                  const std::function<void()>& before_plain) {
  std::set<std::pair<std::uint64_t, std::uint64_t>> read;
  for (const std::string& file : files) {
    std::deque<Waiting> waiting{{file, "dl: "}};
    while (!waiting.empty()) {
      const Waiting next = std::move(waiting.front());
      waiting.pop_front();
      SourceFile source = read_source_file(next.path, next.place);
      if (!read.insert(source.identity).second) continue;
      translator.begin_file(next.path);
      // Folding, too, must know all of the program: see Note [folded atoms].
      const bool is_all = files.size() == 1 && source.text.find("#include") == std::string::npos;
      if (is_all && is_plain(source.text)) before_plain();
      const Folding folding = is_all ? Folding(source.text) : Folding();
      StatementBuilder builder(translator, folding);
      if (!parse_text(source.text, builder)) {
        throw Failure{at_place(next.path, builder.mistake_line(), builder.mistake())};
      }
      for (const Translator::Include& include : translator.take_includes()) {
        waiting.push_back({resolve_include(next.path, include.name),
                           at_place(next.path, include.place.line, "")});
      }
    }
  }
}

}    // namespace dl
