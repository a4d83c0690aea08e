#include "workbench/data/values.h"

#include <algorithm>
#include <charconv>
#include <chrono>

#include "base/characters.h"
#include "parser/scanner_actions.h"

namespace workbench {
namespace {

using zarel::TERMT;

constexpr std::uint64_t kGreatestInteger = 2147483647;

bool are_digits(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, zarel::is_digit);
}

// Whole part and fraction of "12.50"; the fraction is empty without a full stop.
struct Decimal {
  std::string_view whole;
  std::string_view fraction;
};

std::optional<Decimal> decimal(std::string_view text) {
  const std::size_t stop = std::min(text.find('.'), text.size());
  const Decimal result{text.substr(0, stop), text.substr(std::min(stop + 1, text.size()))};
  if (!are_digits(result.whole) || (stop != text.size() && !are_digits(result.fraction)))
    return std::nullopt;
  return result;
}

bool is_negative(std::string_view text) {
  return text.size() > 1 && text[0] == '-' && decimal(text.substr(1)).has_value();
}

// None when it is greater than any integer.
std::optional<std::uint64_t> whole_number(std::string_view digits) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || value > kGreatestInteger) return std::nullopt;
  return value;
}

std::optional<unsigned> number_at(std::string_view text, std::size_t begin, std::size_t size) {
  const std::string_view digits = text.substr(std::min(begin, text.size()), size);
  if (digits.size() != size || !are_digits(digits)) return std::nullopt;
  return static_cast<unsigned>(*whole_number(digits));
}

TERMT integer_term(std::uint64_t value) {
  return TERMT::integer(static_cast<std::int32_t>(value));
}

bool is_constant(std::string_view text) {
  return text == "v" || is_relation_name(text);
}

std::string called(const DataColumn& column) {
  const std::string_view name = column.name;
  if (column.number != 0) return std::to_string(column.number);
  const bool is_word = !name.empty() && std::ranges::all_of(name, zarel::is_in_word);
  return is_word ? std::string(name) : '"' + std::string(name) + '"';
}

}    // namespace

std::string as_constant(std::string_view text) {
  if (is_relation_name(text)) return std::string(text);
  std::string quoted = "\"";
  return quoted.append(text).append("\"");
}

Values::Result Values::refuse(std::string text, std::string help, std::string_view code) {
  fault_ = {code, std::move(text), std::move(help)};
  return std::nullopt;
}

Values::Result Values::refuse_negative(std::string_view text, const DataColumn& column) {
  const std::string factor =
      column.factor == 1 ? "" : std::string("*").append(std::to_string(column.factor));
  std::string help = "write ";
  help.append(called(column)).append(factor);
  help.append("+100000, with a number that makes all of them positive, or ");
  help.append(called(column)).append(":text");
  return refuse(std::string("is negative: ").append(text), std::move(help), "negative-value");
}

Values::Result Values::read(FieldKind kind, std::string_view text, const DataColumn& column) {
  if (kind == FieldKind::kNested || kind == FieldKind::kList) {
    return refuse(kind == FieldKind::kList ? "is a list, which no value can hold"
                                           : "is an object, which no value can hold",
                  kind == FieldKind::kList
                      ? "in a frame, an arrow ->> in front of the column takes "
                        "each element for a value"
                      : "leave the column out, or write its parts as columns");
  }
  if (kind == FieldKind::kBytes)
    return refuse("holds bytes that are no text", "leave the column out, or convert it in a query");
  switch (column.kind) {
    case ColumnKind::kText:
      return string(text);
    case ColumnKind::kInteger:
      return integer(text, column);
    case ColumnKind::kConstant:
      return constant(text);
    case ColumnKind::kDate:
      return date(text);
    case ColumnKind::kScaled:
      return scaled(text, column);
    case ColumnKind::kAny:
      break;
  }
  return any(kind, text, column);
}

// What is certainly a text is no number.
Values::Result Values::any(FieldKind kind, std::string_view text, const DataColumn& column) {
  const bool may_be_number =
      kind != FieldKind::kText && !text.empty() && (zarel::is_digit(text[0]) || text[0] == '-');
  if (may_be_number && is_negative(text)) return refuse_negative(text, column);
  if (may_be_number && are_digits(text) && (text[0] != '0' || text.size() == 1)) {
    if (const auto value = whole_number(text)) {
      look_ = ValueLook::kInteger;
      return integer_term(*value);
    }
  }
  if (is_constant(text)) {
    look_ = ValueLook::kConstant;
    return constant(text);
  }
  const bool is_number = kind == FieldKind::kNumber || (may_be_number && decimal(text));
  look_ = is_number ? ValueLook::kNumeric : ValueLook::kString;
  return string(text);
}

Values::Result Values::integer(std::string_view text, const DataColumn& column) {
  if (is_negative(text)) return refuse_negative(text, column);
  if (!are_digits(text)) {
    std::string help = decimal(text) ? "write " + called(column) + "*100 for hundredths" : "";
    return refuse(std::string("is to be an integer, and is ").append(text), std::move(help));
  }
  if (const auto value = whole_number(text)) return integer_term(*value);
  return refuse(std::string("is too great for an integer: ").append(text),
                "integers go up to 2147483647; write " + called(column) + ":text");
}

// (whole + fraction / 10^n) * factor + offset, without ever leaving integers.
Values::Result Values::scaled(std::string_view text, const DataColumn& column) {
  const bool is_below_zero = is_negative(text);
  const std::optional<Decimal> number = decimal(is_below_zero ? text.substr(1) : text);
  if (!number) {
    return refuse(std::string("is to be a number, and is ").append(text),
                  text.find(',') == std::string_view::npos
                      ? ""
                      : "a full stop stands in front of the fraction, nothing between thousands");
  }
  constexpr std::size_t kMostDigits = 9;    // 10^9 times a factor is far below 2^63
  std::string_view fraction = number->fraction;
  while (fraction.ends_with('0')) fraction.remove_suffix(1);
  const std::optional<std::uint64_t> whole = whole_number(number->whole);
  const auto refuse_size = [&] {
    return refuse(std::string("is too great for an integer: ").append(text));
  };
  if (!whole || *whole * column.factor > 2 * kGreatestInteger) return refuse_size();
  std::uint64_t unit = 1;
  for (std::size_t i = 0; i < std::min(fraction.size(), kMostDigits); ++i) unit *= 10;
  const std::uint64_t part =
      fraction.empty() ? 0 : *whole_number(fraction.substr(0, kMostDigits)) * column.factor;
  if (fraction.size() > kMostDigits || part % unit != 0) {
    std::string problem = "has more digits than the factor ";
    problem.append(std::to_string(column.factor)).append(" keeps: ").append(text);
    return refuse(std::move(problem), "write a greater factor");
  }
  const std::uint64_t value = *whole * column.factor + part / unit;
  if (is_below_zero && value > column.offset) return refuse_negative(text, column);
  const std::uint64_t sum = is_below_zero ? column.offset - value : column.offset + value;
  return sum > kGreatestInteger ? refuse_size() : integer_term(sum);
}

Values::Result Values::constant(std::string_view text) {
  if (!is_constant(text)) {
    return refuse(std::string("is to be a constant, and is ").append(text),
                  "a constant is a small letter, then letters, digits and _");
  }
  return TERMT::constant(zarel::names().intern(text));
}

// 2026-11-22 is 20261122.
Values::Result Values::date(std::string_view text) {
  using std::chrono::day, std::chrono::month, std::chrono::year, std::chrono::year_month_day;
  const bool has_form = text.size() == 10 && text[4] == '-' && text[7] == '-';
  const auto of_year = number_at(text, 0, 4);
  const auto of_month = number_at(text, 5, 2);
  const auto of_day = number_at(text, 8, 2);
  const bool is_date =
      has_form && of_year && of_month && of_day &&
      year_month_day(year(static_cast<int>(*of_year)), month(*of_month), day(*of_day)).ok();
  if (!is_date) {
    return refuse(std::string("is to be a date, and is ").append(text),
                  "a date is written like 2026-11-22");
  }
  return integer_term((std::uint64_t{*of_year} * 100 + *of_month) * 100 + *of_day);
}

Values::Result Values::string(std::string_view text) {
  spelling_ = '"';
  std::size_t begin = 0;
  for (std::size_t end = text.find('"'); end != std::string_view::npos;
       end = text.find('"', begin)) {
    if (!quote_) {
      return refuse("holds a double quote, which no string can",
                    "add quote=\"'\" to the declaration: this text then takes its place",
                    "quote-in-value");
    }
    spelling_.append(text.substr(begin, end - begin)).append(*quote_);
    begin = end + 1;
  }
  spelling_.append(text.substr(begin)) += '"';
  if (spelling_.size() > zarel::kLongestIdentifier)
    return refuse("is longer than the 999 bytes of a string", "leave the column out, or cut it");
  if (spelling_.find('\0') != std::string::npos)
    return refuse("holds a zero byte, which no string can");
  return TERMT::constant(zarel::names().intern(spelling_));
}

}    // namespace workbench
