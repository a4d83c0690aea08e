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
  begin_ = looked_ = end + 1;
  return true;
}

bool LineReader::wait() {
  // Only the piece of a line that has begun is kept, and the buffer grows only with the longest
  // line.
  if (begin_ != 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    looked_ -= begin_;
    begin_ = 0;
  }
  if (buffer_.size() - end_ < kStep) buffer_.resize(2 * buffer_.size());
  const std::size_t got = read_(buffer_.data() + end_, buffer_.size() - end_);
  end_ += got;
  return got != 0;
}

void LineReader::shrink() {
  if (buffer_.size() <= kStep) return;
  std::string rest = buffer_.substr(begin_, end_ - begin_);
  end_ = rest.size();
  looked_ -= begin_;
  begin_ = 0;
  rest.resize(std::max(rest.size(), kStep));
  buffer_ = std::move(rest);
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
