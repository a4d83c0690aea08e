#pragma once
// output_scanner.h - the scanner of one reading, and from where it reads on.

#include <cstdio>
#include <string_view>

#include "output/answer_events.h"
#include "output/answer_set_reader.h"

namespace zarel {

// Of the input that the scanner has: the length of the last token, and of all from there on.
struct BytesAhead {
  std::size_t token, all;
};

// Owns the generated scanner, which keeps all that it knows in it, and is what that calls to read
// on, and to give up. One that cannot be made ends the run like any other failure of the scanner.
class outputScanner {
 public:
  // `events` get the tokens' texts, and outlive this. Where a file ends, `grown` is asked.
  explicit outputScanner(AnswerEvents& events, HasGrown grown = {});
  ~outputScanner();
  outputScanner(const outputScanner&) = delete;
  outputScanner& operator=(const outputScanner&) = delete;

  // Makes the file, nothing of which was read, what is scanned.
  void scan_file(std::FILE* in);
  // Makes the text what the scanner reads on from. One too long for it ends the run.
  void scan_text(std::string_view text);

  // Where the last token stands; not known when nothing was scanned, or in a pipe. The input is
  // read again up to there.
  Place place() const;

  void* scanner() const { return scanner_; }    // as the generated parser takes it
  AnswerEvents& events() const { return *events_; }

  // Reads what is there, waiting only when there is nothing, into `room` bytes at `into`; the sink
  // is flushed before, and when it loses something, that ends the run with status 1. `held` is
  // the length of the unfinished token in front of `into`. Returns the number of bytes, 0 at the
  // end of the input. A failed read ends the run; when it is the first, as one of which nothing can
  // be opened.
  int read_piece(std::FILE* in, char* into, int room, int held);

  // Flushes the sink, prints the message as a line on standard_error(), and ends the run with
  // status 2.
  [[noreturn]] void end_scanning(const char* message);

 private:
  int read_some(std::FILE* in, char* into, int room);

  AnswerEvents* events_;
  HasGrown has_grown_;
  bool was_read_ = false;    // once at least
  std::size_t given_ = 0;    // bytes that the scanner has got
  std::FILE* file_ = nullptr;
  std::string_view text_;    // without a file
  void* scanner_ = nullptr;
};

}    // namespace zarel
