#pragma once
// model_reader.h - clingo's output, line by line.

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace dl {

// Waits for output, in pieces of any length; returns how much was put into the buffer, 0 at the
// end.
using OutputSource = std::function<std::size_t(char* buffer, std::size_t size)>;

class LineReader {
 public:
  explicit LineReader(OutputSource read) : read_(std::move(read)), buffer_(kStep, '\0') {}

  // Takes the next complete line, without its end; valid until the next call of either function.
  // Returns false when none is there without waiting.
  bool next(std::string_view& line);
  // Where no line is complete: takes what is there of an answer set's, if it is much, up to a blank
  // between atoms, with which it ends. The rest comes with further calls, the last piece as a line.
  bool next_piece(std::string_view& piece);
  // Waits for more output; false at its end.
  bool wait();
  // Gives back what a long line needed, which is valid no longer.
  void shrink();
  // At the end: whether output was left that is no complete line.
  bool has_rest() const { return begin_ != end_ || is_in_line_; }

 private:
  void look_for_blank();
  void move_to_front();

  static constexpr std::size_t kStep = std::size_t{1} << 16;
  OutputSource read_;
  std::string buffer_;
  std::size_t begin_ = 0;     // of what has not been taken
  std::size_t looked_ = 0;    // no line ends before this
  std::size_t end_ = 0;
  bool is_in_line_ = false;    // pieces of it were taken
  // What next_piece() knows of the rest of the line: how far it has looked, possibly just behind
  // the end, and the end of the last blank between atoms.
  std::size_t scanned_ = 0;
  std::size_t blank_end_ = 0;
  bool in_string_ = false;
};

enum class LineKind {
  kAnswerSet,
  kCosts,
  kOptimumFound,
  kSatisfiable,
  kUnsatisfiable,
  kUnknown,
  kOther
};

// An answer set's line begins with a lower-case letter, "_" or "-", or is empty; all others begin
// with a capital.
LineKind kind_of_line(std::string_view line);

// Calls `visit` with each atom of an answer set's line. Blanks stand between atoms, and in strings.
template <typename Visit>
void each_atom(std::string_view line, Visit&& visit) {
  std::size_t begin = 0;
  bool in_string = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"') {
      in_string = !in_string;
    } else if (in_string) {
      if (c == '\\') ++i;
    } else if (c == ' ') {
      if (i > begin) visit(line.substr(begin, i - begin));
      begin = i + 1;
    }
  }
  if (begin < line.size()) visit(line.substr(begin));
}

}    // namespace dl
