#pragma once
// user_statements.h - where a statement that the solver got stands in the user's texts, and how it
// reads there.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dl/explain/statement_store.h"
#include "dl/explain/told.h"
#include "dl/sources.h"
#include "workbench/messages/source_texts.h"
#include "zarel/program.h"

namespace workbench {

struct UserStatement {
  dl::ToldStatement told;
  std::vector<std::string> variables;    // that it names, each once, in the order of its text
  // The literals of its body in the order of writing.
  struct Literal {
    bool is_negated = false;    // "not" stands in front
    // How many literals it is without "not", as a frame can be several; nothing where only the
    // program knows.
    std::optional<std::uint32_t> parts = 1;
  };
  std::vector<Literal> body;
  // What made the line that the solver got: nothing where the statement is as it was written.
  zarel::OriginKind made_by = zarel::OriginKind::kWritten;
};

class UserStatements {
 public:
  // Both must outlive the object. The program was rewritten; of the solver's texts the first is the
  // rewritten program, the others are the files that it includes.
  UserStatements(zarel::Program& program, SourceTexts& texts) : program_(program), texts_(texts) {}

  // From now on the solver's texts are these, which have to last.
  void look_at(const dl::Sources& sources) { sources_ = &sources; }

  const UserStatement& of(const dl::StoredStatement& statement);

  // Of a fact: the text is that of the statement which states it.
  dl::ToldStatement of(const dl::FactPlace& fact);
  zarel::OriginKind made_by(const dl::StoredStatement& statement) const;

 private:
  UserStatement read(std::uint32_t file, const zarel::SourceRange& range, std::string_view written);
  dl::ToldPlace place(const zarel::Place& place) const;
  std::string text_at(const zarel::Place& place);

  zarel::Program& program_;
  SourceTexts& texts_;
  const dl::Sources* sources_ = nullptr;
  std::map<std::pair<std::uint32_t, std::uint32_t>, UserStatement> read_;    // by file and line
  std::map<std::pair<std::uint32_t, std::uint32_t>, dl::ToldStatement> facts_;
};

// The text on one line, without its comments.
std::string on_one_line(std::string_view text);

}    // namespace workbench
