#include "workbench/search/answer_output.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

#include "dl/interruption.h"
#include "workbench/progress/run_progress.h"

namespace workbench {
namespace {

constexpr std::size_t kPiece = std::size_t{1} << 16;

ssize_t write_piece(int descriptor, std::string_view text) {
  dl::note_writing(true);
  const ssize_t written = ::write(descriptor, text.data(), std::min(text.size(), kPiece));
  dl::note_writing(false);
  return written;
}

}    // namespace

std::streamsize AnswerOutput::xsputn(const char* text, std::streamsize size) {
  return write_all({text, static_cast<std::size_t>(size)}) ? size : 0;
}

AnswerOutput::int_type AnswerOutput::overflow(int_type character) {
  if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(0);
  const char written = traits_type::to_char_type(character);
  return write_all({&written, 1}) ? character : traits_type::eof();
}

void AnswerOutput::note_closed() {
  if (error_ == 0) error_ = EPIPE;
}

// A descriptor that is shared with someone who has made it so may be one that never waits.
bool AnswerOutput::wait() {
  dl::note_writing(true);
  pollfd watched{descriptor_, POLLOUT, 0};
  const bool is_ready = ::poll(&watched, 1, -1) >= 0 || errno == EINTR;
  dl::note_writing(false);
  return is_ready;
}

bool AnswerOutput::write_all(std::string_view text) {
  clear_progress_line();
  while (error_ == 0 && !text.empty()) {
    const ssize_t written = write_piece(descriptor_, text);
    if (written >= 0) {
      dl::note_progress();
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN ? !wait() : errno != EINTR) {
      error_ = errno;
    }
  }
  return error_ == 0;
}

}    // namespace workbench
