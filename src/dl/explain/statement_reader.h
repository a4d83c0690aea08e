#pragma once
// statement_reader.h - a receiver of statements that are known to be without mistakes; what it does
// not override is passed over.

#include <string>
#include <string_view>

#include "dl/statement_builder.h"

namespace dl {

class StatementReader : public StatementReceiver {
 public:
  MaybeMistake fact(const Statement&) override { return {}; }
  MaybeMistake rule(const Statement&) override { return {}; }
  MaybeMistake weak_constraint(const Statement&, const Piece&, const Piece&) override { return {}; }
  MaybeMistake query(const Statement&) override { return {}; }
  MaybeMistake integer_bound(std::int64_t, const Piece&) override { return {}; }
  void include(std::string_view, const Piece&) override {}
  void needs_bound(std::uint32_t, const Piece&) override {}
  // Nothing is translated: atoms are looked at by their parts.
  std::string projection(const Statement& statement, const Term& atom, std::uint32_t,
                         std::uint32_t) override {
    return std::string(statement.slice(atom.text));
  }
};

}    // namespace dl
