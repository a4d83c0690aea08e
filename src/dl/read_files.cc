#include "dl/read_files.h"

#include <deque>
#include <set>
#include <utility>

#include "dl/source_file.h"

namespace dl {

Program survey_files(const std::vector<std::string>& paths) {
  Program program;
  std::set<FileIdentity> read;
  for (const std::string& path : paths) {
    std::deque<Include> waiting{{{}, path, {}}};
    while (!waiting.empty()) {
      const Include next = std::move(waiting.front());
      waiting.pop_front();
      const std::string file = resolve_include(next.including, next.name);
      SourceFile source = read_source_file(file, next.place);
      program.mistake = std::move(source.mistake);
      if (program.mistake) return program;
      if (!read.insert(source.identity).second) continue;
      for (Include& include : survey_text(program, file, std::move(source.text))) {
        waiting.push_back(std::move(include));
      }
      if (program.has_failed()) return program;
    }
  }
  return program;
}

}    // namespace dl
