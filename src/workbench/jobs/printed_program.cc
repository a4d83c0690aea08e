// A line is a word, numbers, and a text that goes to its end:
//
//     prefix EX "http://..."       a name space, where the program uses one
//     no-facts                     facts are left out, and so are
//     range 1 3 default p          the facts p(1..3)
//     file NAME                    the next number of a file; and its
//     text TEXT
//     origin LINE VERBATIM PLACE   of a line of the rewritten program
//     step KIND PLACE TEMPLATE     that made it

#include "workbench/jobs/printed_program.h"

#include <set>
#include <sstream>
#include <string_view>
#include <utility>

#include "dl/failure.h"

namespace workbench {
namespace {

std::ostream& operator<<(std::ostream& out, const zarel::Position& position) {
  return out << ' ' << position.file << ' ' << position.line << ' ' << position.column << ' '
             << position.character;
}

std::istream& operator>>(std::istream& in, zarel::Position& position) {
  return in >> position.file >> position.line >> position.column >> position.character;
}

// Files get new numbers, in the order in which places name them.
class FileNumbers {
 public:
  void renumber(zarel::Place& place) {
    for (zarel::Position* const position : {&place.first, &place.last}) {
      if (position->file == zarel::kNoFile) continue;
      const auto [entry, is_new] = numbers_.try_emplace(position->file, files_.size());
      if (is_new) files_.push_back(position->file);
      position->file = static_cast<std::uint32_t>(entry->second);
    }
  }
  const std::vector<std::uint32_t>& files() const { return files_; }

 private:
  std::unordered_map<std::uint32_t, std::size_t> numbers_;
  std::vector<std::uint32_t> files_;
};

void add_origin(std::uint32_t line, zarel::LineOrigin origin, FileNumbers& numbers,
                std::vector<std::string>& lines) {
  numbers.renumber(origin.place);
  std::ostringstream text;
  text << "origin " << line << ' ' << origin.is_verbatim << origin.place.first << origin.place.last;
  lines.push_back(std::move(text).str());
  for (zarel::OriginStep& step : origin.steps) {
    numbers.renumber(step.invocation);
    std::ostringstream out;
    out << "step " << static_cast<int>(step.kind) << step.invocation.first << step.invocation.last
        << ' ' << step.template_name;
    lines.push_back(std::move(out).str());
  }
}

// What stands behind the numbers.
std::string rest_of(std::istream& in) {
  in.get();
  std::string rest;
  std::getline(in, rest, '\0');
  return rest;
}

[[noreturn]] void refuse() {
  throw dl::Failure{{zarel::Code::kJobFolder,
                     {},
                     "the search was not cut by this version of zrl split, so zrl cannot print its "
                     "answers"}};
}

}    // namespace

PrintedProgram::PrintedProgram(const std::vector<std::string>& lines) {
  bool is_ours = false;
  for (const std::string& line : lines) {
    const std::string_view word = std::string_view(line).substr(0, line.find(' '));
    std::string rest = line.substr(std::min(word.size() + 1, line.size()));
    std::istringstream in(word == "text" || word == "file" ? std::string() : rest);
    if (word == "zrl") {
      is_ours = rest == "1";
    } else if (word == "prefix") {
      std::string prefix;
      in >> prefix;
      run_.namespaces.declare(prefix, rest_of(in));
      run_.prefix_was_used = true;
    } else if (word == "no-facts") {
      leaves_out_facts_ = true;
    } else if (word == "range") {
      StatedRange& range = ranges_.emplace_back();
      in >> range.least >> range.most >> range.space;
      range.relation = rest_of(in);
    } else if (word == "file") {
      run_.files.add(rest);
    } else if (word == "text" && run_.files.size() != 0) {
      zarel::ReadFile& file = run_.files[static_cast<std::uint32_t>(run_.files.size() - 1)];
      file.text = texts_.emplace_back(std::move(rest));
      file.wide.note(file.text, 1, 1);
    } else if (word == "origin") {
      std::uint32_t number = 0;
      zarel::LineOrigin origin;
      in >> number >> origin.is_verbatim >> origin.place.first >> origin.place.last;
      last_ = &origins_.insert_or_assign(number, std::move(origin)).first->second;
    } else if (word == "step" && last_ != nullptr) {
      zarel::OriginStep step;
      int kind = 0;
      in >> kind >> step.invocation.first >> step.invocation.last;
      step.kind = static_cast<zarel::OriginKind>(kind);
      step.template_name = rest_of(in);
      last_->steps.push_back(std::move(step));
    }
  }
  if (!is_ours) refuse();
}

zarel::LineOrigin PrintedProgram::origin_of_line(std::uint32_t line) const {
  const auto found = origins_.find(line);
  return found == origins_.end() ? zarel::LineOrigin() : found->second;
}

std::vector<std::string> lines_of(CheckedProgram& checked, const dl::Translated& translated,
                                  bool leaves_out_facts) {
  zarel::Program& program = checked.program();
  std::vector<std::string> lines{"zrl 1"};
  if (program.run().prefix_was_used) {
    for (const auto& [prefix, uri] : program.run().namespaces.pairs()) {
      std::string line("prefix ");
      lines.push_back(((line += prefix) += ' ') += uri);
    }
  }
  if (leaves_out_facts) {
    lines.emplace_back("no-facts");
    for (const StatedRange& range : checked.ranges()) {
      std::ostringstream line;
      line << "range " << range.least << ' ' << range.most << ' ' << range.space << ' '
           << range.relation;
      lines.push_back(std::move(line).str());
    }
  }
  FileNumbers numbers;
  std::set<std::uint32_t> known;
  for (const dl::Fault& fault : translated.parts.faults) {
    const std::uint32_t first = fault.range.range.first_line;
    if (fault.range.file != 0 || !known.insert(first).second) continue;
    add_origin(first, program.origin_of_line(first), numbers, lines);
  }
  for (const std::uint32_t file : numbers.files()) {
    lines.push_back(std::string("file ").append(checked.texts().name(file)));
    lines.push_back(std::string("text ").append(checked.texts().text(file)));
  }
  return lines;
}

}    // namespace workbench
