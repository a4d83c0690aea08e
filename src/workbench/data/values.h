#pragma once
// values.h - a field of a file of data as a term.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/term.h"
#include "workbench/data/declaration.h"
#include "workbench/data/rows.h"

namespace workbench {

// What values look like in a column that nobody declared a kind for. A kNumeric one is a string:
// a number with a fraction, one that is too great, or one that begins with 0.
enum class ValueLook : std::uint8_t { kInteger, kConstant, kString, kNumeric };

// Why a field is no value of its column.
struct ValueFault {
  std::string_view code;
  std::string text;    // behind the column's name
  std::string help = {};
};

class Values {
 public:
  explicit Values(const std::optional<std::string>& quote) : quote_(quote) {}

  // The field, which is not empty, as a term of the current run; none, with fault(), when it cannot
  // be.
  std::optional<zarel::TERMT> read(FieldKind kind, std::string_view text, const DataColumn& column);

  const ValueFault& fault() const { return fault_; }
  ValueLook look() const { return look_; }    // of the last value

 private:
  using Result = std::optional<zarel::TERMT>;
  Result any(FieldKind kind, std::string_view text, const DataColumn& column);
  Result integer(std::string_view text, const DataColumn& column);
  Result scaled(std::string_view text, const DataColumn& column);
  Result constant(std::string_view text);
  Result date(std::string_view text);
  Result string(std::string_view text);
  Result refuse(std::string text, std::string help = {}, std::string_view code = "data-value");
  Result refuse_negative(std::string_view text, const DataColumn& column);

  const std::optional<std::string>& quote_;
  ValueLook look_ = ValueLook::kString;
  ValueFault fault_;
  std::string spelling_;    // of a string, with its quotes
};

// A name as it is written where a constant stands: in double quotes when it is no plain word.
std::string as_constant(std::string_view text);

}    // namespace workbench
