#include <algorithm>
#include <sqlite3.h>
#include <utility>

#include "workbench/data/rows.h"

namespace workbench {
namespace {

struct Closer {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

[[noreturn]] void refuse(sqlite3* database, std::string_view what) {
  throw RowFault{"malformed-data", {}, std::string(what) + ": " + sqlite3_errmsg(database)};
}

class Database {
 public:
  explicit Database(const std::string& path) {
    sqlite3* database = nullptr;
    const int status = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    database_.reset(database);
    if (status != SQLITE_OK) refuse(database, "the database cannot be opened");
  }

  sqlite3* handle() const { return database_.get(); }

  std::unique_ptr<sqlite3_stmt, Closer> prepared(const std::string& query) const {
    sqlite3_stmt* statement = nullptr;
    const char* rest = nullptr;
    const int status = sqlite3_prepare_v2(handle(), query.c_str(),
                                          static_cast<int>(query.size() + 1), &statement, &rest);
    std::unique_ptr<sqlite3_stmt, Closer> result(statement);
    if (status != SQLITE_OK) refuse(handle(), "the database refuses the query");
    const std::string_view more(rest);
    if (more.find_first_not_of(" \t\r\n;") != std::string_view::npos)
      throw RowFault{"malformed-data", {}, "one query is expected, and there are two"};
    if (statement == nullptr || sqlite3_stmt_readonly(statement) == 0 ||
        sqlite3_column_count(statement) == 0) {
      throw RowFault{"malformed-data", {}, "the query gives no rows"};
    }
    return result;
  }

 private:
  std::unique_ptr<sqlite3, Closer> database_;
};

std::string_view text_at(sqlite3_stmt* row, int column) {
  const unsigned char* const text = sqlite3_column_text(row, column);
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<const char*>(text), size);
}

// A row has no line: it stands at its number among the rows, and its fields at theirs.
class DatabaseRows : public RowSource {
 public:
  DatabaseRows(const std::string& path, const std::string& query)
      : database_(path), query_(database_.prepared(is_query(query) ? query : all_of(query))) {
    for (int i = 0; i < sqlite3_column_count(query_.get()); ++i) {
      columns_.emplace_back(sqlite3_column_name(query_.get(), i));
    }
  }

  void read(const std::function<bool(const Row&)>& use) override {
    int status = SQLITE_ROW;
    while ((status = sqlite3_step(query_.get())) == SQLITE_ROW) {
      ++number_;
      row_.clear();
      for (int i = 0; i < static_cast<int>(columns_.size()); ++i) add_field(i);
      if (!use(row_)) return;
    }
    if (status != SQLITE_DONE) refuse(database_.handle(), "the database cannot be read on");
  }

  zarel::SourceLocation place() const override { return {number_, 1}; }
  zarel::SourceRange place_of(std::size_t column) const override {
    const auto number = static_cast<std::uint32_t>(column + 1);
    return {number_, number, number_, number};
  }
  RowText row_text() const override { return {}; }

 private:
  static bool is_query(std::string_view query) {
    return query.find_first_of(" \t\n") != std::string_view::npos;
  }

  static std::string all_of(std::string_view table) {
    std::string query = "select * from \"";
    for (const char c : table) query.append(c == '"' ? 2 : 1, c);
    return query += '"';
  }

  void add_field(int column) {
    switch (sqlite3_column_type(query_.get(), column)) {
      case SQLITE_INTEGER:
      case SQLITE_FLOAT:
        row_.fields.push_back(row_.added(FieldKind::kNumber, text_at(query_.get(), column)));
        return;
      case SQLITE_TEXT:
        row_.fields.push_back(row_.added(FieldKind::kText, text_at(query_.get(), column)));
        return;
      case SQLITE_BLOB:
        row_.fields.push_back({FieldKind::kBytes, 0, 0});
        return;
      default:
        row_.fields.push_back({FieldKind::kEmpty, 0, 0});
    }
  }

  Database database_;
  std::unique_ptr<sqlite3_stmt, Closer> query_;
  Row row_;
  std::uint32_t number_ = 0;
};

}    // namespace

std::unique_ptr<RowSource> database_rows(const std::string& path, const std::string& query) {
  return std::make_unique<DatabaseRows>(path, query);
}

std::vector<std::string> tables_of(const std::string& path) {
  const Database database(path);
  const auto query = database.prepared(
      "select name from sqlite_master where type = 'table' and name not like 'sqlite_%'");
  std::vector<std::string> tables;
  int status = SQLITE_ROW;
  while ((status = sqlite3_step(query.get())) == SQLITE_ROW) {
    tables.emplace_back(text_at(query.get(), 0));
  }
  if (status != SQLITE_DONE) refuse(database.handle(), "the database cannot be read");
  return tables;
}

}    // namespace workbench
