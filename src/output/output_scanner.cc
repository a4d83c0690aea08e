#include "output/output_scanner.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <unistd.h>
#include <utility>

#include "grammar.h"
#include "output/reading_errors.h"
#define YYSTYPE OUTPUT_YYSTYPE    // the scanner's header knows the value type by this name alone
#include "scanner.h"

zarel::BytesAhead output_bytes_ahead(void* scanner);    // at the end of scanner.l

namespace zarel {
namespace {

// The scanner looks at an unfinished token from its beginning whenever it gets more of it. A token
// that is longer than this gets at least as much again each time, else reading it from a pipe would
// take quadratic time.
constexpr int kLongToken = 64 * 1024;

}    // namespace

outputScanner::outputScanner(AnswerEvents& events, HasGrown grown)
    : events_(&events), has_grown_(std::move(grown)) {
  if (output_yylex_init_extra(this, &scanner_) != 0) {
    end_scanning("out of dynamic memory in yylex_init_extra()");
  }
}

outputScanner::~outputScanner() {
  output_yylex_destroy(scanner_);
}

void outputScanner::scan_file(std::FILE* in) {
  file_ = in;
  output_yyrestart(in, scanner_);
}

void outputScanner::scan_text(std::string_view text) {
  constexpr std::size_t kEndMarks = 2;    // the scanner puts them behind the text
  if (text.size() > INT_MAX - kEndMarks) {
    end_scanning("out of dynamic memory in yy_scan_bytes()");
  }
  output_yy_scan_bytes(text.data(), static_cast<int>(text.size()), scanner_);
  if (given_ != 0) return;    // the end of what was given is scanned again
  text_ = text;
  given_ = text.size();
}

Place outputScanner::place() const {
  const BytesAhead ahead = output_bytes_ahead(scanner_);
  if (ahead.all > given_) return {};
  const std::size_t begin = given_ - ahead.all;
  const std::size_t last = begin + std::max<std::size_t>(ahead.token, 1) - 1;
  return file_ == nullptr ? place_in_text(text_, begin, last) : place_in_file(file_, begin, last);
}

int outputScanner::read_some(std::FILE* in, char* into, int room) {
  ssize_t count = -1;
  do {
    count = ::read(fileno(in), into, static_cast<std::size_t>(room));
  } while (count < 0 ? errno == EINTR : count == 0 && has_grown_ && has_grown_());
  // Whether a file can be read shows when it is.
  if (count < 0 && !was_read_) end_unread();
  if (count < 0) end_scanning("input in flex scanner failed");
  was_read_ = true;
  return static_cast<int>(count);
}

int outputScanner::read_piece(std::FILE* in, char* into, int room, int held) {
  if (!events_->flush()) end_unwritten();
  const int wanted = held > kLongToken ? std::min(held, room) : 1;
  int total = 0;
  while (total < wanted) {
    const int count = read_some(in, into + total, room - total);
    if (count == 0) break;
    total += count;
  }
  given_ += static_cast<std::size_t>(total);
  return total;
}

void outputScanner::end_scanning(const char* message) {
  events_->flush();
  end_unscanned(message, scanner_ == nullptr ? Place{} : place());
}

}    // namespace zarel
