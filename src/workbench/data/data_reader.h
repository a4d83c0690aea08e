#pragma once
// data_reader.h - the files of data of a program: those that it declares, and those that the
// command line names.

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "parser/written_statement.h"
#include "workbench/data/declaration.h"
#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"
#include "zarel/program.h"

namespace workbench {

class DataReader {
 public:
  // All must outlive the reader. Messages go to `sink`.
  DataReader(zarel::Program& program, SourceTexts& texts, MessageSink sink)
      : program_(program), texts_(texts), sink_(std::move(sink)) {}

  // While a program is read, in the order of its text: its remarks, and its statements, which may
  // set the frame space or be a template around a remark.
  void look_at(std::string_view remark, const zarel::SourceLocation& place);
  void look_at(const zarel::WrittenStatement& statement);

  // Reads what was declared in the file of the program that was read last. Files are looked for
  // beside it, then as found_file() does.
  void read_declared(std::span<const std::string> folders);

  // Reads a file that the command line names: a relation, called like the file; of a database, each
  // table.
  void read_file(const std::string& path);

  bool has_unreadable_file() const { return has_unreadable_file_; }

 private:
  struct Declared {
    std::string text;
    zarel::SourceLocation place;
    std::string frame_space;
    bool is_in_template = false;
  };
  void read(DataDeclaration how, const std::string& path);
  void read_text(const DataDeclaration& how, const std::string& path, zarel::FactBuilder& facts);
  void read_database(const DataDeclaration& how, const std::string& path,
                     zarel::FactBuilder& facts);
  void tell_unreadable(const DataDeclaration& how, const std::string& path, std::uint32_t file);
  void tell_fault(const DeclarationFault& fault);

  zarel::Program& program_;
  SourceTexts& texts_;
  MessageSink sink_;
  std::vector<Declared> declared_;
  std::string frame_space_ = "default";
  std::uint32_t file_ = zarel::kNoFile;    // that frame_space_ is of
  bool has_unreadable_file_ = false;
};

}    // namespace workbench
