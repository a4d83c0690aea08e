#pragma once
// output_folder.h - a folder that gets files which are each written whole or not at all.

#include <filesystem>
#include <map>
#include <string>

#include "workbench/answers/output_file.h"

namespace workbench {

// Whether the user names a folder: one that is there, or with a slash behind it.
bool is_folder(const std::string& path);

class OutputFolder {
 public:
  explicit OutputFolder(std::string path) : path_(std::move(path)) {}
  ~OutputFolder();
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;

  // The file of that name, which begins empty. Makes the folder where there is none.
  std::ostream& file(const std::string& name);
  // The path of a file that could not be written, and the error as errno has it; 0 for none.
  struct Failure {
    std::string path;
    int error = 0;
  };
  Failure failure() const;
  // Nothing more is written: puts all files in their places. Returns failure().
  Failure put();

 private:
  std::filesystem::path path_;
  bool is_made_ = false;    // by this object
  bool is_put_ = false;
  std::map<std::string, OutputFile> files_;    // by path
};

}    // namespace workbench
