#include "driver/intermediate_files.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "driver/diagnostics.h"
#include "driver/program_text.h"
#include "model/program.h"

namespace zarel {
namespace {

[[noreturn]] void end_run(std::string_view message) {
  standard_error() << message << '\n';
  SafeExit(1);
}

[[noreturn]] void end_for_writing() {
  end_run("Intermediate rewriting file could not be written.");
}

void close_written(std::ofstream& file) {
  file.close();
  if (!file) end_for_writing();
}

// Adds the last character a second time. An empty file is one that does not hold what was written.
void append_with_doubled_end(std::ofstream& out, std::ifstream& in) {
  constexpr std::size_t kPiece = std::size_t{64} * 1024;
  std::vector<char> piece(kPiece);
  char last = '\0';
  bool is_empty = true;
  while (in.read(piece.data(), kPiece), in.gcount() > 0) {
    const auto length = static_cast<std::size_t>(in.gcount());
    out.write(piece.data(), in.gcount());
    last = piece[length - 1];
    is_empty = false;
  }
  if (in.bad() || is_empty) end_for_writing();
  out.put(last);
}

// Without anything to say the legend may stay unwritten (false); a query or a generated clause may
// not.
bool write_legend(std::ostream* shown) {
  std::ofstream legend(kLegendName, std::ios::app | std::ios::binary);
  if (!legend.is_open() && QUERIES().empty() && generated_clauses().empty()) return false;
  legend << '\n';
  write_clauses(legend, generated_clauses(), shown);
  write_queries(legend);
  if (shown != nullptr) write_queries(*shown);
  close_written(legend);
  return true;
}

}    // namespace

IntermediateFiles::IntermediateFiles()
    : verbatim_(kSourceName, std::ios::trunc | std::ios::binary) {
  const std::ofstream legend(kLegendName, std::ios::trunc | std::ios::binary);
}

std::unique_ptr<std::ostream> IntermediateFiles::legend() {
  return std::make_unique<std::ofstream>(kLegendName, std::ios::app | std::ios::binary);
}

void IntermediateFiles::begin_program() {
  verbatim_.flush();
  source_.open(kSourceName, std::ios::app | std::ios::binary);
  if (!source_.is_open()) end_run("Intermediate rewriting file could not be opened.");
  if (!verbatim_) end_for_writing();
  for (const std::string& line : Includes()) source_ << line << '\n';
}

void IntermediateFiles::write_program(std::ostream* shown) {
  write_clauses(source_, written_clauses(), shown);
  const bool has_legend = write_legend(shown);
  source_ << '\n';
  if (has_legend) {
    std::ifstream legend(kLegendName, std::ios::binary);
    append_with_doubled_end(source_, legend);
  }
  close_written(source_);
}

bool empty_output() {
  const int file = ::open(kOutputName, O_WRONLY | O_TRUNC | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return errno == ENOENT;
  struct stat status {};
  const bool is_file = ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  return ::close(file) == 0 && is_file;
}

}    // namespace zarel
