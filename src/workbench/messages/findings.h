#pragma once
// findings.h - what the library finds, in the words of `zrl`.

#include <optional>
#include <set>
#include <string>

#include "base/diagnostic.h"
#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// The findings of the scanner and the grammar. They come in the order of the text; what only
// follows from one that was told before is left out.
class SyntaxMessages {
 public:
  explicit SyntaxMessages(SourceTexts& texts) : texts_(texts) {}

  static bool is_about(zarel::Code code);

  // Of a finding of such a code; nothing when there is nothing to say of it.
  std::optional<Message> message(const zarel::Diagnostic& finding);

 private:
  std::optional<Message> of_character(const zarel::Diagnostic& finding);
  std::optional<Message> of_bound(const zarel::Diagnostic& finding);
  std::optional<Message> of_starred_comment(const zarel::Place& mark);
  std::optional<Message> of_refusal(const zarel::Diagnostic& finding);
  std::optional<Message> of_block_comment(const zarel::Diagnostic& finding);
  bool follows(const zarel::Diagnostic& finding) const;

  SourceTexts& texts_;
  zarel::Position told_;              // what the scanner refused last, and was told: its end
  std::string character_;             // the unknown one that was met last
  zarel::Position refused_;           // the token that the grammar refused last
  zarel::Position passed_;            // up to here unknown characters are no matter any more
  zarel::Position comment_;           // the end of a comment of another language
  bool has_faulty_bound_ = false;     // "#maxint" was refused, or told of
  std::set<std::string> prefixes_;    // the findings of unknown ones
  bool has_faulty_prefix_ = false;    // a "#namespace" was
};

// Of any other finding of the front end: of the program as a whole, of templates, of reading files.
// To be called while the program of the finding works.
Message program_message(const zarel::Diagnostic& finding, SourceTexts& texts);

// Of a file that cannot be read, with the reason, and the file beside it that may have been meant.
// The place is the file as a whole (line 0), or not known.
Message unreadable_file(const zarel::Place& place, const std::string& path);

}    // namespace workbench
