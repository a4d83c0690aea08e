#include "workbench/data/data_reader.h"

#include <filesystem>
#include <system_error>

#include "workbench/data/fact_rows.h"
#include "workbench/loading.h"
#include "workbench/messages/findings.h"
#include "zarel/input_file.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kTables = "sqlite_master";    // the table of them, in every database

bool is_json(std::string_view path) {
  return !path.ends_with("sv") && !path.ends_with("SV");    // .csv and .tsv
}

bool stands_in(const zarel::SourceLocation& place, const zarel::SourceSpan& span) {
  const auto [first_line, first_column, last_line, last_column] = span.range;
  return place.file == span.file &&
         std::pair(first_line, first_column) < std::pair(place.line, place.column) &&
         std::pair(place.line, place.column) < std::pair(last_line, last_column);
}

}    // namespace

void DataReader::look_at(std::string_view remark, const zarel::SourceLocation& place) {
  if (!is_data_declaration(remark)) return;
  if (file_ != place.file) frame_space_ = "default";
  declared_.push_back({std::string(remark), place, frame_space_});
}

void DataReader::look_at(const zarel::WrittenStatement& statement) {
  using enum zarel::WrittenStatement::Kind;
  if (statement.kind == kDefaultSpace) {
    frame_space_ = program_.run().names.spelling(statement.name);
    file_ = statement.span.file;
  }
  if (statement.kind != kTemplate) return;
  for (Declared& each : declared_) {
    if (stands_in(each.place, statement.span)) each.is_in_template = true;
  }
}

void DataReader::tell_fault(const DeclarationFault& fault) {
  Message message{"data-declaration", program_.files().place(fault.place), fault.text};
  message.help = fault.help;
  sink_(std::move(message));
}

void DataReader::read_declared(std::span<const std::string> folders) {
  for (const Declared& each : std::exchange(declared_, {})) {
    auto read_as = read_declaration(each.text, each.place);
    if (const auto* const fault = std::get_if<DeclarationFault>(&read_as)) {
      tell_fault(*fault);
      continue;
    }
    auto& how = std::get<DataDeclaration>(read_as);
    if (each.is_in_template) {
      tell_fault({how.place, "data cannot be declared inside a template"});
      continue;
    }
    if (!is_data_file(how.file)) {
      tell_fault({how.file_place, "the name of the file does not tell what it holds",
                  "names of data end in .csv, .tsv, .json, .jsonl, .ndjson, .db or .sqlite"});
      continue;
    }
    if (how.frame_space.empty()) how.frame_space = each.frame_space;
    const fs::path beside = fs::path(texts_.path(each.place.file)).parent_path() / how.file;
    std::error_code error;
    const std::string path =
        fs::exists(beside, error) ? beside.string() : found_file(how.file, folders);
    read(std::move(how), path);
  }
}

void DataReader::read_file(const std::string& path) {
  DataDeclaration how;
  how.file = path;
  how.relation = fs::path(path).stem().string();
  how.frame_space = "default";
  if (!is_database_file(path)) return read(std::move(how), path);
  try {
    std::error_code error;
    if (!fs::exists(path, error)) return read(std::move(how), path);    // tells of it
    for (const std::string& table : tables_of(path)) {
      how.relation = how.query = table;
      read(how, path);
    }
  } catch (const RowFault&) {
    how.query = kTables;
    read(std::move(how), path);    // it is told with its place
  }
}

void DataReader::read(DataDeclaration how, const std::string& path) {
  const bool is_database = is_database_file(path);
  std::string name = path;
  if (is_database && how.query.find(' ') == std::string::npos && how.query != kTables) {
    if (how.query.empty()) how.query = how.relation;
    if (zarel::InputFile(path).is_open()) (name += ':') += how.query;
  }
  program_.read_facts(is_database ? "" : path, name, [&](zarel::FactBuilder& facts) {
    if (!how.is_declared() && !is_relation_name(how.relation)) {
      const zarel::SourceLocation whole{0, 0, facts.file()};
      Message message{"data-declaration", program_.files().place(whole),
                      how.relation + " is no name of a relation"};
      message.help =
          "give the file a name in small letters, or declare it in a program: %! data "
          "sold(\"" +
          how.file + "\")";
      return sink_(std::move(message));
    }
    if (is_database) {
      read_database(how, path, facts);
    } else {
      read_text(how, path, facts);
    }
  });
}

void DataReader::tell_unreadable(const DataDeclaration& how, const std::string& path,
                                 std::uint32_t file) {
  has_unreadable_file_ = true;
  const zarel::FileTable& files = program_.files();
  sink_(unreadable_file(how.is_declared() ? files.place(how.file_place)
                                          : files.place(zarel::SourceLocation{0, 0, file}),
                        path));
}

void DataReader::read_text(const DataDeclaration& how, const std::string& path,
                           zarel::FactBuilder& facts) {
  const zarel::InputFile file(path);
  if (!file.is_open()) return tell_unreadable(how, path, facts.file());
  const auto rows = is_json(path) ? json_rows(file.handle()) : csv_rows(file.handle(), how);
  FactRows(how, *rows, facts, program_.run().files, sink_).read();
}

void DataReader::read_database(const DataDeclaration& how, const std::string& path,
                               zarel::FactBuilder& facts) {
  if (!zarel::InputFile(path).is_open()) return tell_unreadable(how, path, facts.file());
  try {
    const auto rows = database_rows(path, how.query);
    FactRows(how, *rows, facts, program_.run().files, sink_).read();
  } catch (const RowFault& fault) {
    const zarel::SourceLocation whole{0, 0, facts.file()};
    Message message{fault.code, program_.files().place(whole), fault.text};
    message.help = fault.help;
    if (how.is_declared()) message.place = program_.files().place(how.file_place);
    sink_(std::move(message));
  }
}

}    // namespace workbench
