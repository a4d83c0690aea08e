#pragma once
// item_text.h - the text of the item that is being read, without what stands between its tokens.

#include <cstddef>
#include <string>
#include <string_view>

namespace zarel {

// A piece of the text: the positions of its first character and of the one behind its last. It is
// the semantic value of the grammar, so it stays without constructors.
struct TextRange {
  std::size_t begin;
  std::size_t end;
};

// Note [text without blanks]
// An answer set of a million atoms has ten million tokens. Instead of a string for each, the
// scanner appends their texts to one buffer: what is one phrase of the grammar, say a list of
// terms, then is one piece of the buffer, and is printed as it stands. Positions count from the
// first token ever read, so that they survive the dropping of texts in front of them, which is how
// the buffer stays as small as an atom.
class ItemText {
 public:
  // Appends a token's text and returns where it stands.
  TextRange add(std::string_view token) {
    const std::size_t begin = end();
    text_ += token;
    return {begin, end()};
  }

  // The text of a range not dropped so far; valid until the next add.
  std::string_view view(TextRange range) const {
    return std::string_view(text_).substr(range.begin - start_, range.end - range.begin);
  }

  std::size_t end() const { return start_ + text_.size(); }    // where the next token will stand
  void drop_last(TextRange range);    // drops a range, unless something was read behind it
  void drop_in_front_of(std::size_t position);    // drops everything before a position

 private:
  std::string text_;
  std::size_t start_ = 0;    // the position of the first character of text_
};

}    // namespace zarel
