#include "dl/parts/job_folder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "dl/failure.h"
#include "dl/options.h"
#include "dl/parts/sha256.h"

namespace dl {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFormat = "dl-jobs 1";
constexpr std::string_view kResultFormat = "dl-part 1 ";
constexpr std::string_view kDivisionFormat = "dl-cubes 1 ";
constexpr std::string_view kAnswers = "answers ";    // and their length
constexpr std::string_view kEnd = "complete\n";

[[noreturn]] void refuse(std::string text) {
  throw Failure{{zarel::Code::kJobFolder, {}, std::move(text)}};
}

[[noreturn]] void fail_to_write(const std::string& name) {
  const int error = errno;
  throw Failure{
      {zarel::Code::kOutputFailure, {}, "cannot write \"" + name + "\": " + std::strerror(error)}};
}

std::optional<std::string> read_file(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

// Another name first: whoever looks finds all of it or nothing, and a machine that fails leaves
// nothing half.
class NewFile {
 public:
  explicit NewFile(std::string name) : name_(std::move(name)), own_name_(name_ + ".XXXXXX") {
    file_ = Descriptor(::mkostemp(own_name_.data(), O_CLOEXEC));
    if (!file_.is_open()) fail_to_write(name_);
    constexpr mode_t kForAll = 0644;
    ::fchmod(file_.number(), kForAll);
  }
  ~NewFile() { ::unlink(own_name_.c_str()); }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  void write(std::string_view text) {
    while (!text.empty()) {
      const ssize_t written = ::write(file_.number(), text.data(), text.size());
      if (written < 0 && errno != EINTR) fail_to_write(name_);
      if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void replace() {
    sync();
    if (::rename(own_name_.c_str(), name_.c_str()) != 0) fail_to_write(name_);
  }
  // Returns false where somebody else has put a file there.
  bool put() {
    sync();
    if (::link(own_name_.c_str(), name_.c_str()) == 0) return true;
    if (errno == EEXIST) return false;
    fail_to_write(name_);
  }

 private:
  void sync() {
    if (::fsync(file_.number()) != 0) fail_to_write(name_);
  }

  std::string name_, own_name_;
  Descriptor file_;
};

void write_file(const std::string& name, std::string_view text) {
  NewFile file(name);
  file.write(text);
  file.replace();
}

std::string_view take_line(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

// The rest of a line that begins with the word; nothing for another line.
std::optional<std::string_view> behind(std::string_view word, std::string_view line) {
  if (!line.starts_with(word) || !line.substr(word.size()).starts_with(' ')) return std::nullopt;
  return line.substr(word.size() + 1);
}

template <typename Number>
bool read_number(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

std::string text_of(const Manifest& manifest) {
  std::string text(kFormat);
  const auto add = [&text](std::string_view word, std::string_view value) {
    (((text += '\n') += word) += ' ') += value;
  };
  add("dl", manifest.dl_version);
  add("clingo", manifest.clingo_version);
  add("base", manifest.base);
  add("cubes", manifest.cubes);
  add("tables", manifest.tables);
  for (const std::string& argument : manifest.arguments) add("argument", argument);
  return text += '\n';
}

std::string text_of(const std::vector<Cube>& cubes) {
  std::string text;
  for (const Cube& cube : cubes) (text += spelled(cube)) += '\n';
  return text;
}

}    // namespace

std::string ranges(const std::vector<std::size_t>& numbers, std::string_view separator,
                   std::string_view last) {
  std::vector<std::string> all;
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t end = i + 1;
    while (end < numbers.size() && numbers[end] == numbers[end - 1] + 1) ++end;
    std::string& range = all.emplace_back(std::to_string(numbers[i]));
    if (end - i > 1) (range += '-') += std::to_string(numbers[end - 1]);
    i = end;
  }
  std::string text;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i != 0) text += i + 1 == all.size() ? last : separator;
    text += all[i];
  }
  return text;
}

void JobFolder::expect_unused(const std::string& folder) {
  std::error_code error;
  if (!fs::is_directory(folder, error) || fs::is_empty(folder, error)) return;
  refuse("the folder \"" + folder + "\" is not empty; take another one, or remove it");
}

void JobFolder::make(const std::string& folder, Manifest manifest, const GroundProgram& program,
                     const std::vector<Cube>& cubes, const AnswerTables& tables) {
  std::error_code error;
  expect_unused(folder);
  fs::create_directories(folder + "/out", error);
  if (error) {
    throw Failure{
        {zarel::Code::kOutputFailure, {}, "cannot make \"" + folder + "\": " + error.message()}};
  }
  const std::string cube_lines = text_of(cubes);
  const std::string table_lines = dl::text_of(tables);
  manifest.base = sha256(program.text());
  manifest.cubes = sha256(cube_lines);
  manifest.tables = sha256(table_lines);
  write_file(folder + "/base.aspif", program.text());
  write_file(folder + "/cubes", cube_lines);
  write_file(folder + "/tables", table_lines);
  write_file(folder + "/manifest", text_of(manifest));    // with it, the folder is one
}

JobFolder::JobFolder(std::string folder) : folder_(std::move(folder)) {
  read_manifest();
  read_cubes();
  while (read_division(divisions_ + 1)) ++divisions_;
  for (std::size_t part = 0; part < undivided_; ++part) list_order(part);
}

void JobFolder::read_manifest() {
  const std::optional<std::string> text = read_file(folder_ + "/manifest");
  if (!text) {
    refuse("\"" + folder_ + "\" is no folder of a search in parts: cannot read \"" + folder_ +
           "/manifest\"");
  }
  std::string_view rest(*text);
  if (take_line(rest) != kFormat) {
    refuse("\"" + folder_ + "/manifest\" is not of the format that this version reads");
  }
  const std::pair<std::string_view, std::string*> fields[] = {{"dl", &manifest_.dl_version},
                                                              {"clingo", &manifest_.clingo_version},
                                                              {"base", &manifest_.base},
                                                              {"cubes", &manifest_.cubes},
                                                              {"tables", &manifest_.tables}};
  while (!rest.empty()) {
    const std::string_view line = take_line(rest);
    if (const auto argument = behind("argument", line)) manifest_.arguments.emplace_back(*argument);
    for (const auto& [word, field] : fields) {
      if (const auto value = behind(word, line)) *field = *value;
    }
  }
  if (manifest_.dl_version != kDlVersion) {
    refuse("this is dl " + std::string(kDlVersion) + ", and the search was cut by dl " +
           manifest_.dl_version);
  }
  digest_ = sha256(*text);
  aim_ = aim_of(manifest_.arguments);
}

void JobFolder::read_cubes() {
  const std::optional<std::string> text = read_file(folder_ + "/cubes");
  if (!text || sha256(*text) != manifest_.cubes) {
    refuse("\"" + folder_ + "/cubes\" is not what it was when the search was cut");
  }
  for (std::string_view rest(*text); !rest.empty();) {
    PartEntry part;
    if (!read_cube(take_line(rest), part.cube)) refuse("\"" + folder_ + "/cubes\" is damaged");
    parts_.push_back(std::move(part));
  }
  undivided_ = parts_.size();
}

bool JobFolder::read_division(std::size_t number) {
  const std::string name = folder_ + "/cubes." + std::to_string(number);
  const std::optional<std::string> text = read_file(name);
  if (!text) return false;
  std::string_view rest(*text);
  std::size_t divided = 0;
  std::string begin(kDivisionFormat);
  (begin += digest_) += ' ';
  const std::string_view line = take_line(rest);
  if (!line.starts_with(begin) || !read_number(line.substr(begin.size()), divided) ||
      divided >= parts_.size() || parts_[divided].is_divided) {
    refuse("\"" + name + "\" does not belong to this search");
  }
  while (!rest.empty()) {
    PartEntry part;
    if (!read_cube(take_line(rest), part.cube)) refuse("\"" + name + "\" is damaged");
    parts_[divided].pieces.push_back(parts_.size());
    parts_.push_back(std::move(part));
  }
  parts_[divided].is_divided = true;
  return true;
}

void JobFolder::list_order(std::size_t part) {
  std::vector<std::size_t> waiting{part};
  while (!waiting.empty()) {
    const std::size_t next = waiting.back();
    waiting.pop_back();
    if (!parts_[next].is_divided) order_.push_back(next);
    waiting.insert(waiting.end(), parts_[next].pieces.rbegin(), parts_[next].pieces.rend());
  }
}

GroundProgram JobFolder::program() const {
  std::optional<std::string> text = read_file(folder_ + "/base.aspif");
  if (!text || sha256(*text) != manifest_.base) {
    refuse("\"" + folder_ + "/base.aspif\" is not what it was when the search was cut");
  }
  return GroundProgram(std::move(*text));
}

AnswerTables JobFolder::tables() const {
  const std::optional<std::string> text = read_file(folder_ + "/tables");
  if (!text || sha256(*text) != manifest_.tables) {
    refuse("\"" + folder_ + "/tables\" is not what it was when the search was cut");
  }
  std::optional<AnswerTables> tables = read_tables(*text);
  if (!tables) refuse("\"" + folder_ + "/tables\" is damaged");
  return std::move(*tables);
}

void JobFolder::divide(std::size_t part, const std::vector<Cube>& cubes) {
  const std::string name = folder_ + "/cubes." + std::to_string(divisions_ + 1);
  NewFile file(name);
  std::string text(kDivisionFormat);
  ((text += digest_) += ' ') += std::to_string(part);
  file.write((text += '\n') += text_of(cubes));
  if (!file.put()) refuse("another part was divided at the same time; divide this one again");
  parts_[part].is_divided = true;
  for (const Cube& cube : cubes) {
    parts_[part].pieces.push_back(parts_.size());
    parts_.push_back({cube});
  }
  ::unlink(result_name(part, false).c_str());
}

std::optional<std::int64_t> JobFolder::bound() const {
  const std::optional<std::string> text = read_file(folder_ + "/bound");
  if (!text) return std::nullopt;
  std::string_view rest(*text);
  std::int64_t bound = 0;
  if (take_line(rest) != digest_ || !read_number(take_line(rest), bound)) return std::nullopt;
  return bound;
}

void JobFolder::offer_bound(std::int64_t highest) const {
  const std::optional<std::int64_t> known = bound();
  if (known && *known <= highest) return;
  write_file(folder_ + "/bound", digest_ + '\n' + std::to_string(highest) + '\n');
}

std::string JobFolder::result_name(std::size_t part, bool is_complete) const {
  std::string name = folder_ + "/out/" + std::to_string(part);
  return is_complete ? name : name += ".cut";
}

std::string JobFolder::first_line(std::size_t part) const {
  std::string line(kResultFormat);
  ((line += digest_) += ' ') += std::to_string(part);
  return ((line += ' ') += sha256(spelled(parts_[part].cube))) += '\n';
}

void JobFolder::put_result(std::size_t part, const ResultHead& head,
                           const PartOutput& output) const {
  NewFile file(result_name(part, head.is_complete));
  std::string text = first_line(part);
  (((text += "dl ") += manifest_.dl_version) += "\nclingo ") += head.clingo_version;
  (text += "\nfound ") += std::to_string(head.found);
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "\nseconds %.3f\n", head.seconds);
  text += seconds;
  if (head.costs) text += costs_text(*head.costs);
  if (head.has_consequences) text += "consequences\n";
  const std::string line = output.consequences ? *output.consequences + '\n' : std::string();
  const std::string& answers = output.consequences ? line : output.sets;
  ((text += kAnswers) += std::to_string(answers.size())) += '\n';
  file.write(text);
  file.write(answers);
  file.write(kEnd);
  file.replace();
  if (head.is_complete) ::unlink(result_name(part, false).c_str());
}

// Of a result, its head, and where its answers begin and how many bytes they are.
JobFolder::Result JobFolder::read_head(std::size_t part, bool is_complete, ResultHead& head,
                                       std::size_t* begin, std::size_t* size) const {
  std::ifstream file(result_name(part, is_complete), std::ios::binary);
  if (!file) return Result::kMissing;
  std::string line;
  if (!std::getline(file, line) || line + '\n' != first_line(part)) return Result::kForeign;
  head = {};
  head.is_complete = is_complete;
  while (std::getline(file, line) && !line.starts_with(kAnswers)) {
    if (const auto value = behind("found", line)) read_number(*value, head.found);
    if (const auto value = behind("clingo", line)) head.clingo_version = *value;
    if (const auto value = behind("seconds", line)) {
      head.seconds = std::strtod(std::string(*value).c_str(), nullptr);
    }
    if (line == "consequences") head.has_consequences = true;
    if (auto costs = read_part_costs(line)) head.costs = std::move(costs);
  }
  std::size_t length = 0;
  if (!file || !read_number(std::string_view(line).substr(kAnswers.size()), length)) {
    return Result::kForeign;
  }
  const auto answers = static_cast<std::size_t>(file.tellg());
  file.seekg(static_cast<std::streamoff>(answers + length));
  std::string end(kEnd.size() + 1, '\0');
  file.read(end.data(), static_cast<std::streamsize>(end.size()));
  if (static_cast<std::size_t>(file.gcount()) != kEnd.size() || !end.starts_with(kEnd)) {
    return Result::kForeign;
  }
  if (head.clingo_version != manifest_.clingo_version) return Result::kForeign;
  *begin = answers;
  *size = length;
  return Result::kComplete;
}

JobFolder::Result JobFolder::look_at_result(std::size_t part, ResultHead& head) const {
  std::size_t begin = 0;
  std::size_t size = 0;
  return read_head(part, true, head, &begin, &size);
}

std::optional<ResultHead> JobFolder::look_at_cut_result(std::size_t part) const {
  ResultHead head;
  std::size_t begin = 0;
  std::size_t size = 0;
  if (read_head(part, false, head, &begin, &size) != Result::kComplete) return std::nullopt;
  return head;
}

bool JobFolder::read_answers(std::size_t part, bool is_complete,
                             const std::function<bool(std::string_view)>& take) const {
  ResultHead head;
  std::size_t begin = 0;
  std::size_t size = 0;
  const std::string name = result_name(part, is_complete);
  if (read_head(part, is_complete, head, &begin, &size) != Result::kComplete) {
    refuse("\"" + name + "\" has changed");
  }
  std::ifstream file(name, std::ios::binary);
  file.seekg(static_cast<std::streamoff>(begin));
  std::string line;
  for (std::size_t read = 0; read < size; read += line.size() + 1) {
    if (!std::getline(file, line)) refuse("cannot read \"" + name + "\"");
    if (!take(line)) return false;
  }
  return true;
}

}    // namespace dl
