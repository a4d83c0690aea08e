#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "workbench/messages/findings.h"
#include "workbench/messages/nearest.h"
#include "workbench/messages/source_search.h"
#include "workbench/messages/template_message.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

using zarel::Code;
using zarel::Diagnostic;

// The file of the same folder that may have been meant. A folder may hold very many.
std::string nearest_file(const fs::path& path) {
  constexpr std::size_t kMost = 10'000;
  std::vector<std::string> names;
  std::error_code error;
  const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end;) {
    if (names.size() == kMost) break;
    names.push_back(entry->path().filename().string());
    entry.increment(error);
  }
  const std::string wanted = path.filename().string();
  const std::vector<std::string_view> views(names.begin(), names.end());
  const std::string found(nearest(wanted, views));
  return found.empty() || found == wanted ? "" : (path.parent_path() / found).string();
}

std::string why_unreadable(const std::string& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return "there is no such file";
  if (status.type() == fs::file_type::directory) return "this is a folder, not a file";
  if (::access(path.c_str(), R_OK) == 0) return "the file cannot be read";
  if (errno == EACCES) return "there is no permission to read the file";
  return "the file cannot be read: " + std::generic_category().message(errno);
}

Message unreadable(const Diagnostic& finding, SourceTexts& texts) {
  const std::string path(texts.path(finding.place.first.file));
  return unreadable_file(finding.place, path);
}

Message replaced_query(const Diagnostic& finding, SourceTexts& texts) {
  Message message{"replaced-query", finding.place, "a second query takes the place of the first"};
  message.help = "ask one query in a run; put the others into files of their own";
  for (const zarel::Note& note : finding.notes) {
    const zarel::Place whole = place_of_query(texts, note.place.first);
    message.notes.push_back({whole.is_known() ? whole : note.place, "this query is not answered"});
  }
  return message;
}

// Findings whose words need nothing of them.
std::string_view plain_text(Code code) {
  switch (code) {
    case Code::kReadFailure:
      return "the file cannot be read to its end";
    case Code::kRoleClash:
      return "a predicate has two roles that exclude each other";
    case Code::kMarkerClash:
      return "the name of a template has another use";
    case Code::kUnsafeRule:
      return "a variable of the rule has no value";
    case Code::kUnreadableAnswers:
      return "the solver's output cannot be read";
    case Code::kAnswerSyntax:
      return "the solver's output is not in the form of answer sets";
    case Code::kAnswersTooDeep:
      return "a term of the answers is nested too deeply";
    case Code::kAnswerScanner:
      return "the solver's output cannot be read to its end";
    default:
      return {};
  }
}

}    // namespace

Message unreadable_file(const zarel::Place& place, const std::string& path) {
  Message message{"unreadable-file", place, why_unreadable(path)};
  if (const std::string other = nearest_file(path); !other.empty()) {
    ((message.help = "did you mean ") += other) += '?';
  }
  return message;
}

Message program_message(const Diagnostic& finding, SourceTexts& texts) {
  if (finding.code == Code::kUnreadableFile) return unreadable(finding, texts);
  if (finding.code == Code::kReplacedQuery) return replaced_query(finding, texts);
  if (std::optional<Message> message = template_message(finding, texts)) return *message;
  Message message{zarel::kind_of(finding.code).name, finding.place,
                  std::string(plain_text(finding.code))};
  if (message.text.empty()) message.text = finding.text;
  message.notes = finding.notes;
  return message;
}

}    // namespace workbench
