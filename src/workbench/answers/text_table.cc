#include "workbench/answers/text_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "workbench/messages/characters.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

constexpr std::string_view kGap = "  ";
constexpr std::string_view kCut = "...";
constexpr std::size_t kLeastWidth = 4;    // a character and what tells of the others

bool is_plain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

std::size_t width_of(std::string_view text) {
  if (is_plain(text)) return text.size();
  std::size_t width = 0;
  for (std::size_t place = 0; place < text.size();) {
    const Character character = character_at(text, place);
    width += character.is_shown ? character.width : 1;
    place += character.bytes;
  }
  return width;
}

// The beginning of the text that fits, and what tells of the rest.
std::string cut(std::string_view text, std::size_t width) {
  std::size_t used = kCut.size();
  std::size_t place = 0;
  while (place < text.size()) {
    const Character character = character_at(text, place);
    if (used + character.width > width) break;
    used += character.width;
    place += character.bytes;
  }
  return std::string(text.substr(0, place)).append(kCut);
}

}    // namespace

void TextTable::begin(std::string title) {
  title_ = std::move(title);
  columns_.clear();
  text_.clear();
  cells_.clear();
  column_ = rows_ = 0;
}

void TextTable::add_column(std::string_view name) {
  Column column;
  column.name = shown_text(name, name.size());
  column.width = width_of(column.name);
  columns_.push_back(std::move(column));
}

void TextTable::add_cell(std::string_view text, bool is_number) {
  if (column_ == 0) ++rows_;
  Column& column = columns_[column_];
  column_ = (column_ + 1) % columns_.size();
  if (limit_ != 0 && rows_ > limit_) return;
  if (!is_number) column.has_numbers = false;
  const std::size_t begin = text_.size();
  text_ += is_plain(text) ? std::string(text) : shown_text(text, text.size());
  const std::size_t width = width_of(std::string_view(text_).substr(begin));
  column.width = std::max(column.width, width);
  cells_.push_back({text_.size(), width});
}

// The widest columns give way first; when all are as narrow as can be, the last ones go.
std::vector<std::size_t> TextTable::fitted_widths(std::size_t width) const {
  std::vector<std::size_t> widths;
  for (const Column& column : columns_) widths.push_back(column.width);
  if (width == 0) return widths;
  const auto least = [&widths] {
    std::size_t sum = kGap.size() * (widths.size() - 1);
    for (const std::size_t each : widths) sum += std::min(each, kLeastWidth);
    return sum;
  };
  while (widths.size() > 1 && least() > width) widths.pop_back();
  std::size_t rest = width - std::min(width, kGap.size() * (widths.size() - 1));
  std::vector<std::size_t> sorted = widths;
  std::ranges::sort(sorted);
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const std::size_t share = std::max(rest / (sorted.size() - i), kLeastWidth);
    if (sorted[i] > share) {
      for (std::size_t& each : widths) each = std::min(each, share);
      break;
    }
    rest -= std::min(rest, sorted[i]);
  }
  return widths;
}

void TextTable::append_cell(std::string& line, std::string_view text, std::size_t text_width,
                            std::size_t column, std::size_t width) const {
  if (column != 0) line += kGap;
  const bool is_right = columns_[column].has_numbers && rows_ != 0;
  if (text_width > width) {
    const std::string head = cut(text, width);
    line += head;
    return line.append(width - std::min(width, width_of(head)), ' '), void();
  }
  if (is_right) line.append(width - text_width, ' ');
  line += text;
  if (!is_right) line.append(width - text_width, ' ');
}

void TextTable::append_to(std::string& text, std::size_t width,
                          const std::function<void()>& on_line) const {
  const auto end_line = [&text, &on_line] {
    text.resize(text.find_last_not_of(' ') + 1);
    text += '\n';
    on_line();
  };
  if (!title_.empty()) {
    text += shown_text(title_, title_.size());
    end_line();
  }
  const std::vector<std::size_t> widths =
      columns_.empty() ? std::vector<std::size_t>() : fitted_widths(width);
  for (std::size_t i = 0; i < widths.size(); ++i) {
    append_cell(text, columns_[i].name, width_of(columns_[i].name), i, widths[i]);
  }
  if (!widths.empty()) end_line();
  for (std::size_t i = 0; i < widths.size(); ++i) {
    (text += i == 0 ? "" : kGap).append(widths[i], '-');
  }
  if (!widths.empty()) end_line();
  std::size_t begin = 0;
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    const std::size_t column = i % columns_.size();
    const std::string_view cell = std::string_view(text_).substr(begin, cells_[i].end - begin);
    begin = cells_[i].end;
    if (column < widths.size()) append_cell(text, cell, cells_[i].width, column, widths[column]);
    if (column + 1 == columns_.size()) end_line();
  }
  if (limit_ != 0 && rows_ > limit_) {
    (text += "and ") += counted(rows_ - limit_, "more row");
    end_line();
  }
  if (widths.size() < columns_.size()) {
    (text += "and ") += counted(columns_.size() - widths.size(), "more column");
    end_line();
  }
}

}    // namespace workbench
