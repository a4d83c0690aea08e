#include "dl/translate.h"

#include <deque>
#include <memory>
#include <set>
#include <utility>

#include "dl/folding.h"
#include "dl/instances.h"
#include "dl/parse.h"
#include "dl/translator.h"

namespace dl {
namespace {

using zarel::Code;

// What of a text the scanner cannot take, if there is anything.
std::optional<zarel::Diagnostic> unfit(const Sources& sources, std::uint32_t file,
                                       std::string_view text) {
  if (text.size() > kLongestText) {
    return too_long(sources.name(file), {});
  }
  const std::size_t nul = text.find('\0');
  if (nul == std::string_view::npos) return {};
  const FileRange range = sources.range(file, text.substr(nul, 1));
  zarel::Diagnostic diagnostic{Code::kNulByte, sources.place(range), "NUL byte in the input"};
  diagnostic.parser_line = static_cast<int>(range.range.first_line);
  return diagnostic;
}

zarel::Diagnostic at_include(Code code, std::string text, const zarel::Place& place) {
  zarel::Diagnostic diagnostic{code, place, std::move(text)};
  diagnostic.parser_line = static_cast<int>(place.first.line);
  return diagnostic;
}

// Takes the statements of a reading for the instances.
class InstanceReader : public StatementReceiver {
 public:
  explicit InstanceReader(Instances& instances) : instances_(instances) {}

  MaybeMistake fact(const Statement& statement) override {
    instances_.add_fact(statement);
    return {};
  }
  MaybeMistake rule(const Statement& statement) override { return add(statement); }
  MaybeMistake weak_constraint(const Statement& statement, const Piece&, const Piece&) override {
    return add(statement);
  }
  MaybeMistake query(const Statement& statement) override { return add(statement); }
  MaybeMistake integer_bound(std::int64_t, const Piece&) override { return {}; }
  void include(std::string_view, const Piece&) override {}
  void needs_bound(std::uint32_t, const Piece&) override {}
  std::string projection(const Statement&, const Term&, std::uint32_t, std::uint32_t) override {
    return {};
  }

  void read(std::string& text) {
    const Folding unfolded;
    StatementBuilder builder(*this, unfolded);
    builder.list_arguments();
    parse_text(text, builder);
  }

 private:
  MaybeMistake add(const Statement& statement) {
    instances_.add_rule(statement);
    return {};
  }

  Instances& instances_;
};

// Reads stretches of texts, many at a time.
class StretchReader {
 public:
  explicit StretchReader(Instances& instances) : reader_(instances) {}

  void add(std::string_view stretch) {
    (piece_ += stretch) += '\n';
    if (piece_.size() >= kPiece) end();
  }
  // No more stretches follow.
  void end() {
    piece_.append(2, '\0');
    reader_.read(piece_);
    piece_.clear();
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 20;
  InstanceReader reader_;
  std::string piece_;
};

// The rules are read once more by themselves, and the facts when all rules are known.
void read_for(Instances& instances, Sources& sources, const Survey& survey) {
  const auto files = static_cast<std::uint32_t>(sources.size());
  StretchReader rules(instances);
  for (std::uint32_t file = 0; file < files; ++file) {
    const std::string_view text = sources.text(file);
    for (const Slice rule : survey.rules(file)) rules.add(text.substr(rule.begin, rule.size()));
  }
  rules.end();
  instances.end_rules();
  for (std::uint32_t file = 0; file < files; ++file) {
    if (survey.rules(file).empty()) {
      InstanceReader(instances).read(sources.text(file));    // without a copy
      continue;
    }
    const std::string_view text = sources.text(file);
    StretchReader facts(instances);
    std::uint32_t begin = 0;
    for (const Slice rule : survey.rules(file)) {
      if (rule.begin != begin) facts.add(text.substr(begin, rule.begin - begin));
      begin = rule.end;
    }
    facts.add(text.substr(begin, text.find('\0', begin) - begin));
    facts.end();
  }
  instances.decide();
}

// Decides what of the program is folded. Nothing is returned where no atom has a variable among its
// keys.
std::unique_ptr<Instances> find_instances(Folding& folding, Sources& sources,
                                          const Survey& survey) {
  const Folding surveyed = folding;
  while (!folding.undecided().empty()) {
    auto instances = std::make_unique<Instances>(folding);
    read_for(*instances, sources, survey);
    if (!instances->has_failed()) return instances;
    folding = surveyed;
    folding.keep_attributes();
  }
  return nullptr;
}

bool survey_all(Survey& survey, std::string& text) {
  const Folding unfolded;
  StatementBuilder builder(survey, unfolded);
  return parse_text(text, builder);
}

// Note [unsurveyed facts]
// Plain facts tell a survey nothing: their keys are simple, so they can be folded. What stands
// between them is read by itself, which finds the same statements as long as it is whole ones; what
// is not, the text of a user that ends within a statement, a string, say, is read with all behind
// it.
bool survey_around(Survey& survey, std::string& text,
                   std::span<const zarel::TextStretch> plain_facts) {
  if (plain_facts.empty()) return survey_all(survey, text);
  Survey tried = survey;
  const Folding unfolded;
  StatementBuilder builder(tried, unfolded);
  PartParser parser(text, builder);
  std::size_t begin = 0;
  for (const zarel::TextStretch& facts : plain_facts) {
    if (!parser.parse(begin, facts.begin)) return survey_all(survey, text);
    builder.pass_lines(facts.lines);
    begin = facts.end;
  }
  if (!parser.parse(begin, text.size() - kEndMarks)) return survey_all(survey, text);
  survey = std::move(tried);
  return true;
}

void write_kept(const Folding& folding, const Instances* instances, Translation& out) {
  if (folding.has_open_attributes() && !folding.folds_attributes()) {
    out.text += "% frames are not folded: what their variables stand for is not known, or too much";
    out.end_line({});
  }
  if (instances == nullptr) return;
  for (const std::string& predicate : instances->kept()) {
    ((out.text += "% ") += predicate) +=
        " is not folded: which relations its variables stand for is not known, or too many";
    out.end_line({});
  }
}

}    // namespace

zarel::Diagnostic unreadable(std::string_view name, std::string_view reason,
                             const zarel::Place& place) {
  std::string text("cannot read \"");
  ((text += name) += "\": ") += reason;
  zarel::Diagnostic diagnostic = at_include(Code::kUnreadableFile, std::move(text), place);
  diagnostic.detail = name;
  return diagnostic;
}

zarel::Diagnostic too_long(std::string_view name, const zarel::Place& place) {
  std::string text("\"");
  ((text += name) += "\" has more than ") += std::to_string(kLongestText);
  return at_include(Code::kTextTooLong, text + " bytes", place);
}

std::vector<Include> survey_text(Program& program, std::string name, std::string text,
                                 std::span<const zarel::TextStretch> plain_facts) {
  const std::size_t size = text.size();
  const std::uint32_t file = program.sources.add(std::move(name), std::move(text));
  std::string& added = program.sources.text(file);
  program.mistake = unfit(program.sources, file, std::string_view(added).substr(0, size));
  if (program.mistake) return {};
  program.survey.begin_text();
  program.has_syntax_error = !survey_around(program.survey, added, plain_facts);
  if (program.has_syntax_error) return {};
  std::vector<Include> includes;
  for (IncludeLine& line : program.survey.take_includes()) {
    includes.push_back({program.sources.name(file), std::move(line.name),
                        program.sources.place(FileRange{file, line.range})});
  }
  return includes;
}

Program survey_texts(std::span<const Source> sources, const IncludedText& included) {
  Program program;
  std::set<std::string, std::less<>> asked;
  for (const Source& source : sources) asked.emplace(source.name);
  std::deque<Include> waiting;
  const auto read = [&](std::string_view name, std::string text) {
    for (Include& include : survey_text(program, std::string(name), std::move(text))) {
      if (asked.insert(include.name).second) waiting.push_back(std::move(include));
    }
  };
  for (const Source& source : sources) {
    read(source.name, std::string(source.text));
    while (!waiting.empty() && !program.has_failed()) {
      const Include next = std::move(waiting.front());
      waiting.pop_front();
      std::optional<std::string> text = included ? included(next.name) : std::nullopt;
      if (text) {
        read(next.name, std::move(*text));
      } else {
        program.mistake = unreadable(next.name, "no such text", next.place);
      }
    }
    if (program.has_failed()) break;
  }
  return program;
}

Traits traits_of(const Program& program, const Options& options) {
  const Survey& survey = program.survey;
  return {survey.has_query() && !options.leaves_out_query, survey.has_weak_constraints(),
          survey.has_sums(), options.bound || survey.bound(), survey.has_several_levels()};
}

namespace {

void add_mistake(Translated& result, zarel::Diagnostic mistake) {
  constexpr std::size_t kMostFurther = 100;
  if (!result.mistake) {
    result.mistake = std::move(mistake);
  } else if (result.further.size() < kMostFurther) {
    result.further.push_back(std::move(mistake));
  }
}

}    // namespace

Translated translate(Program program, const Options& options, TextReceiver receiver) {
  Translated result;
  result.sources = std::move(program.sources);
  result.mistake = std::move(program.mistake);
  if (result.mistake) return result;
  result.parts.traits = traits_of(program, options);
  Translation out;
  out.receiver = std::move(receiver);
  Folding folding;
  std::unique_ptr<Instances> instances;
  if (options.fold) {
    folding = program.survey.folding();
    instances = find_instances(folding, result.sources, program.survey);
    folding.begin();
  }
  Translator translator(options, result.sources, result.parts, out);
  if (options.fold) write_kept(folding, instances.get(), out);
  if (instances) translator.use_instances(*instances);
  for (std::uint32_t file = 0; file < result.sources.size(); ++file) {
    translator.begin_file(file);
    StatementBuilder builder(translator, folding);
    if (instances) builder.list_arguments();
    if (options.tell_all) {
      builder.go_on_behind_mistakes([&result, file](const Mistake& mistake) {
        add_mistake(result, diagnostic_of(mistake, result.sources, file));
      });
    }
    if (!parse_text(result.sources.text(file), builder)) {
      add_mistake(result, diagnostic_of(builder.mistake(), result.sources, file));
      return result;
    }
    result.sources.release(file);
  }
  if (auto mistake = translator.end_program()) add_mistake(result, *std::move(mistake));
  result.text = std::move(out.text);
  result.lines = std::move(out.lines);
  return result;
}

Translated translate(std::span<const Source> sources, const Options& options,
                     const IncludedText& included) {
  return translate(survey_texts(sources, included), options);
}

}    // namespace dl
