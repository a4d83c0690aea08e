#include "dl/parse.h"

#include <algorithm>
#include <array>

#include "dl/sources.h"
#include "grammar.h"
#define YYSTYPE DL_STYPE    // the scanner's header knows the value type by this name alone
#include "scanner.h"
void dl_leave_text(yyscan_t scanner);    // at the end of scanner.l

namespace dl {
namespace {

// The scanner's state, freed with it.
class Scanner {
 public:
  // Of `size` bytes, the last two of which are NUL.
  Scanner(char* text, std::size_t size, StatementBuilder& builder) {
    dl_lex_init_extra(&builder, &state_);
    dl__scan_buffer(text, size, state_);
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

bool parse_bytes(char* text, std::size_t size, StatementBuilder& builder) {
  const Scanner scanner(text, size, builder);
  return dl_parse(scanner.state(), &builder) == 0 && !builder.has_failed();
}

}    // namespace

bool parse_text(std::string& text, StatementBuilder& builder) {
  builder.begin_text(text.data());
  return parse_bytes(text.data(), text.size(), builder);
}

PartParser::PartParser(std::string& text, StatementBuilder& builder)
    : text_(text), builder_(builder) {
  builder_.begin_text(text_.data());
}

bool PartParser::parse(std::size_t begin, std::size_t end) {
  if (begin == end) return true;
  char* const part = text_.data() + begin;
  char* const behind = text_.data() + end;
  const std::array<char, kEndMarks> kept{behind[0], behind[1]};
  std::fill_n(behind, kEndMarks, '\0');
  builder_.begin_part(part);
  const bool is_read = parse_bytes(part, end - begin + kEndMarks, builder_);
  std::ranges::copy(kept, behind);
  return is_read;
}

}    // namespace dl
