#include "dl/model_reader.h"

#include <algorithm>
#include <cstring>

namespace dl {

bool LineReader::next(std::string_view& line) {
  const void* found = std::memchr(buffer_.data() + looked_, '\n', end_ - looked_);
  if (found == nullptr) {
    looked_ = end_;
    return false;
  }
  const auto end = static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data());
  line = std::string_view(buffer_).substr(begin_, end - begin_);
  begin_ = looked_ = scanned_ = blank_end_ = end + 1;
  is_in_line_ = in_string_ = false;
  return true;
}

bool LineReader::next_piece(std::string_view& piece) {
  constexpr std::size_t kMuch = kStep / 4;
  const std::string_view rest = std::string_view(buffer_).substr(begin_, end_ - begin_);
  if (rest.size() < kMuch || kind_of_line(rest) != LineKind::kAnswerSet) return false;
  look_for_blank();
  if (blank_end_ == begin_) return false;
  piece = rest.substr(0, blank_end_ - begin_);
  begin_ = blank_end_;
  is_in_line_ = true;
  return true;
}

void LineReader::look_for_blank() {
  const std::string_view all = std::string_view(buffer_).substr(0, end_);
  while (scanned_ < end_) {
    if (in_string_) {
      in_string_ = all[scanned_] != '"';
      scanned_ += all[scanned_] == '\\' ? 2 : 1;
      continue;
    }
    const std::size_t quote = std::min(all.find('"', scanned_), end_);
    const std::size_t blank = all.substr(scanned_, quote - scanned_).rfind(' ');
    if (blank != std::string_view::npos) blank_end_ = scanned_ + blank + 1;
    in_string_ = quote != end_;
    scanned_ = quote + (in_string_ ? 1 : 0);
  }
}

// Only the piece of a line that has begun is kept.
void LineReader::move_to_front() {
  std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
  for (std::size_t* const place : {&end_, &looked_, &scanned_, &blank_end_}) *place -= begin_;
  begin_ = 0;
}

bool LineReader::wait() {
  if (begin_ != 0) move_to_front();
  // The buffer grows only with the longest line that is not taken in pieces.
  if (buffer_.size() - end_ < kStep) buffer_.resize(2 * buffer_.size());
  const std::size_t got = read_(buffer_.data() + end_, buffer_.size() - end_);
  end_ += got;
  return got != 0;
}

void LineReader::shrink() {
  if (buffer_.size() <= kStep) return;
  move_to_front();
  buffer_.resize(std::max(end_, kStep));
  buffer_.shrink_to_fit();
}

LineKind kind_of_line(std::string_view line) {
  if (line.empty() || line.front() < 'A' || line.front() > 'Z') return LineKind::kAnswerSet;
  if (line.starts_with("Optimization:")) return LineKind::kCosts;
  if (line == "OPTIMUM FOUND") return LineKind::kOptimumFound;
  if (line == "SATISFIABLE") return LineKind::kSatisfiable;
  if (line == "UNSATISFIABLE") return LineKind::kUnsatisfiable;
  return line == "UNKNOWN" ? LineKind::kUnknown : LineKind::kOther;
}

}    // namespace dl
