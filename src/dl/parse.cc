#include "dl/parse.h"

#include "grammar.h"
#define YYSTYPE DL_STYPE    // the scanner's header knows the value type by this name alone
#include "scanner.h"
void dl_leave_text(yyscan_t scanner);    // at the end of scanner.l

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

}    // namespace

bool parse_text(std::string& text, StatementBuilder& builder) {
  builder.begin_text(text.data());
  const Scanner scanner(text, builder);
  return dl_parse(scanner.state(), &builder) == 0 && !builder.has_failed();
}

}    // namespace dl
