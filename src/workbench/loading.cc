#include "workbench/loading.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "workbench/progress/run_progress.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

// The library beside the program: where it is installed, and where it was built.
std::vector<fs::path> library_folders() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  if (error) return {};
  const fs::path folder = program.parent_path();
  return {folder / "../share/zarel/library", folder / "../../../library"};
}

bool is_there(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

std::string all_of_standard_input() {
  std::string text;
  std::array<char, 65536> piece{};
  std::size_t size = 0;
  while ((size = std::fread(piece.data(), 1, piece.size(), stdin)) != 0) {
    text.append(piece.data(), size);
  }
  return text;
}

}    // namespace

std::string found_file(const std::string& name, std::span<const std::string> folders) {
  if (is_there(name) || fs::path(name).is_absolute()) return name;
  for (const std::string& folder : folders) {
    if (const fs::path path = fs::path(folder) / name; is_there(path)) return path.string();
  }
  for (const fs::path& folder : library_folders()) {
    if (const fs::path path = folder / name; is_there(path))
      return fs::weakly_canonical(path).string();
  }
  return name;
}

std::vector<std::string> library_templates() {
  std::vector<std::string> names;
  for (const fs::path& folder : library_folders()) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
      names.push_back(entry->path().stem().string());
    }
  }
  std::ranges::sort(names);
  return names;
}

void load(zarel::Program& program, std::span<const std::string> files,
          std::span<const std::string> folders, LoadedTexts& texts, DataReader& data) {
  for (const std::string& file : files) {
    std::error_code unknown;
    const auto bytes = fs::file_size(found_file(file, folders), unknown);
    if (!unknown) will_read(bytes);
  }
  for (const std::string& file : files) {
    if (is_data_file(file)) {
      data.read_file(found_file(file, folders));
      continue;
    }
    if (file == "-") {
      texts.standard_input = all_of_standard_input();
      program.read_text(texts.standard_input, "<stdin>");
    } else {
      program.read_file(found_file(file, folders));
    }
    data.read_declared(folders);
  }
}

}    // namespace workbench
