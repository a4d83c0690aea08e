#include "dl/read_files.h"

#include <deque>
#include <set>
#include <utility>

#include "dl/source_file.h"

namespace dl {
namespace {

class FileReading {
 public:
  // Reads the texts that wait, and what they include.
  void read_all() {
    while (!waiting_.empty() && !program.has_failed()) {
      const Include next = std::move(waiting_.front());
      waiting_.pop_front();
      const std::string file = resolve_include(next.including, next.name);
      SourceFile source = read_source_file(file, next.place);
      program.mistake = std::move(source.mistake);
      if (!program.mistake && read_.insert(source.identity).second)
        take(file, std::move(source.text));
    }
  }

  void want(Include include) { waiting_.push_back(std::move(include)); }

  void take(std::string name, std::string text,
            std::span<const zarel::TextStretch> plain_facts = {}) {
    for (Include& include : survey_text(program, std::move(name), std::move(text), plain_facts)) {
      want(std::move(include));
    }
  }

  Program program;

 private:
  std::deque<Include> waiting_;
  std::set<FileIdentity> read_;
};

}    // namespace

Program survey_files(const std::vector<std::string>& paths) {
  FileReading reading;
  for (const std::string& path : paths) {
    reading.want({{}, path, {}});
    reading.read_all();
  }
  return std::move(reading.program);
}

Program survey_with_files(std::string name, std::string text,
                          std::span<const zarel::TextStretch> plain_facts) {
  FileReading reading;
  reading.take(std::move(name), std::move(text), plain_facts);
  reading.read_all();
  return std::move(reading.program);
}

}    // namespace dl
