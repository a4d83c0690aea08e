#pragma once
// text_table.h - a table whose columns are aligned, for people.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

class TextTable {
 public:
  // Shows at most `limit` rows, and how many there are besides; 0: all.
  explicit TextTable(std::size_t limit) : limit_(limit) {}

  void begin(std::string title);    // nothing for none; forgets what was there
  void add_column(std::string_view name);
  // Fills the rows from left to right, after all columns are there. A column of numbers is aligned
  // at the right.
  void add_cell(std::string_view text, bool is_number);

  // Appends title, columns and rows, each line within the width; 0: of any. What a terminal should
  // not get is replaced. Calls `on_line` behind each line, which may take the text away.
  void append_to(std::string& text, std::size_t width, const std::function<void()>& on_line) const;

 private:
  struct Column {
    std::string name;
    std::size_t width = 0;
    bool has_numbers = true;    // and nothing else
  };
  struct Cell {
    std::size_t end;    // in the text
    std::size_t width;
  };

  std::vector<std::size_t> fitted_widths(std::size_t width) const;
  void append_cell(std::string& line, std::string_view text, std::size_t text_width,
                   std::size_t column, std::size_t width) const;

  std::size_t limit_;
  std::string title_;
  std::vector<Column> columns_;
  std::string text_;    // of all cells
  std::vector<Cell> cells_;
  std::size_t column_ = 0;    // of the next cell
  std::size_t rows_ = 0;      // begun
};

}    // namespace workbench
