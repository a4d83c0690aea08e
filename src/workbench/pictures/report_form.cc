// report_form.cc - a run as a page for a browser: the program, the answers, pictures, statistics.

#include <array>
#include <chrono>
#include <cstdio>
#include <map>
#include <unordered_map>

#include "dl/interruption.h"
#include "model/generic_encoding.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/json_text.h"
#include "workbench/answers/term_text.h"
#include "workbench/messages/words.h"
#include "workbench/pictures/answer_graph.h"
#include "workbench/pictures/dot_text.h"
#include "workbench/pictures/graphviz.h"
#include "workbench/pictures/report_page.h"
#include "workbench/pictures/reported_program.h"

namespace workbench {
namespace {

// A page stays one that a browser likes: the rest is counted.
constexpr std::size_t kMostSets = 100;
constexpr std::size_t kMostRows = 5000;                      // of all tables of a set
constexpr std::size_t kMostText = std::size_t{32} << 20U;    // of all sets
constexpr std::size_t kMostBoxes = 150;                      // of a picture

constexpr std::string_view kDataMark = "<!-- data -->\n";

using Cells = std::vector<std::string>;

struct Table {
  std::string name;
  Cells columns;
  std::vector<Cells> rows = {};
  std::size_t count = 0;
};

// Tables by their names, in the order of their first rows.
class Tables {
 public:
  void add(const std::string& name, Cells&& cells, const Cells& columns = {}) {
    const auto [entry, is_new] = by_name_.try_emplace(name, tables_.size());
    if (is_new) tables_.push_back({name, columns.empty() ? numbered(cells.size()) : columns});
    Table& table = tables_[entry->second];
    ++table.count;
    if (rows_ == kMostRows) return;
    ++rows_;
    table.rows.push_back(std::move(cells));
  }
  const std::vector<Table>& all() const { return tables_; }

 private:
  static Cells numbered(std::size_t count) {
    Cells names;
    for (std::size_t i = 1; i <= count; ++i) names.push_back(std::to_string(i));
    return names;
  }

  std::vector<Table> tables_;
  std::unordered_map<std::string, std::size_t> by_name_;
  std::size_t rows_ = 0;
};

void append_cells(std::string& out, const Cells& cells) {
  char separator = '[';
  for (const std::string& cell : cells) {
    out += separator;
    append_json_string(out, cell);
    separator = ',';
  }
  out += cells.empty() ? "[]" : "]";
}

void append_table(std::string& out, const Table& table) {
  out += "{\"name\":";
  append_json_string(out, table.name);
  out += ",\"columns\":";
  append_cells(out, table.columns);
  ((out += ",\"count\":") += std::to_string(table.count)) += ",\"rows\":[";
  const char* separator = "";
  for (const Cells& row : table.rows) {
    out += separator;
    append_cells(out, row);
    separator = ",";
  }
  out += "]}";
}

std::string text_of(const zarel::AnswerTerm& term) {
  std::string text;
  append_term(text, term);
  return text;
}

void add_atom(Tables& tables, const zarel::AnswerAtom& atom) {
  std::string name(atom.is_negated ? "-" : "");
  append_term(name, atom.relation);
  Cells cells;
  for (const zarel::AnswerTerm& argument : atom.arguments) cells.push_back(text_of(argument));
  if (!cells.empty()) (name += '/') += std::to_string(cells.size());
  append_space(name, atom.space);
  tables.add(name, std::move(cells));
}

void add_class(Tables& tables, const zarel::ClassStatement& statement, ItemKind kind) {
  std::string name(kind == ItemKind::kSubclass ? "subclasses" : "members");
  append_space(name, statement.space);
  std::string object(statement.is_negated ? "-" : "");
  append_term(object, statement.object);
  tables.add(name, {std::move(object), text_of(statement.class_name)},
             kind == ItemKind::kSubclass ? Cells{"class", "superclass"} : Cells{"object", "class"});
}

void add_statement(Tables& tables, const ObjectStatement& statement) {
  std::string name("objects");
  append_space(name, statement.space);
  std::string attribute(statement.is_negated ? "-" : "");
  append_term(attribute, statement.attribute);
  if (!statement.arrow.empty()) (attribute += ' ') += statement.arrow;
  tables.add(name, {text_of(statement.object), std::move(attribute), text_of(statement.value)},
             {"object", "attribute", "value"});
}

// A script element ends at the first "</script", wherever it stands; "<" stands in strings alone.
std::string for_script(std::string_view json) {
  std::string text;
  text.reserve(json.size());
  for (const char c : json) {
    if (c == '<') {
      text += "\\u003c";
    } else {
      text += c;
    }
  }
  return text;
}

std::string costs_of(const AnswerSet& set) {
  std::string text;
  for (const Cost& cost : set.costs) {
    (text += text.empty() ? "" : ", ") += cost.weight;
    (text += " at level ") += cost.level;
  }
  return text;
}

class ReportForm : public AnswerConsumer {
 public:
  ReportForm(std::ostream& out, const FormSettings& settings);

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool /*holds*/) override {}
  void flush() override {}    // nobody can read half a page
  void finish(const RunEnding& ending) override;

 private:
  void write_data(std::string_view attributes, std::string_view json);
  void draw_pictures();
  void write_ending(const RunEnding& ending);
  void say(std::string text) { notes_.push_back(std::move(text)); }

  std::ostream& out_;
  const FormSettings& settings_;
  std::size_t sets_ = 0;
  std::size_t written_sets_ = 0;
  std::size_t written_ = 0;            // bytes of sets
  std::vector<AnswerGraph> graphs_;    // of the sets that are written; empty for a large one
  std::size_t large_sets_ = 0;
  Tables rows_;
  Cells notes_;
};

ReportForm::ReportForm(std::ostream& out, const FormSettings& settings)
    : out_(out), settings_(settings) {
  out_ << kReportPage.substr(0, kReportPage.find(kDataMark));
  std::string json;
  if (settings.reported != nullptr) append_program(json, *settings.reported);
  write_data("id=\"program\"", json.empty() ? "{\"files\":[],\"messages\":[]}" : json);
}

void ReportForm::write_data(std::string_view attributes, std::string_view json) {
  out_ << "<script type=\"application/json\" " << attributes << '>' << for_script(json)
       << "</script>\n";
}

void ReportForm::answer_set(AnswerSet& set) {
  ++sets_;
  if (written_sets_ == kMostSets || written_ > kMostText) return;
  ++written_sets_;
  Tables tables;
  for (const Item& item : set.items()) {
    if (item.kind == ItemKind::kAtom) {
      add_atom(tables, set.atom(item));
    } else if (item.kind == ItemKind::kMembership || item.kind == ItemKind::kSubclass) {
      add_class(tables, set.class_statement(item), item.kind);
    } else {
      add_statement(tables, set.statement(item));
    }
  }
  std::string json("{\"number\":");
  json += std::to_string(set.number != 0 ? set.number : sets_);
  json += ",\"cost\":";
  append_json_string(json, costs_of(set));
  json += ",\"tables\":[";
  const char* separator = "";
  for (const Table& table : tables.all()) {
    json += separator;
    append_table(json, table);
    separator = ",";
  }
  json += "]}";
  written_ += json.size();
  write_data("class=\"set\"", json);
  AnswerGraph graph(settings_.picture.relations);
  const bool is_large = set.items().size() > kMostRows;
  if (is_large) ++large_sets_;
  if (!is_large) graph.add(set);
  graphs_.push_back(std::move(graph));
}

void ReportForm::row(const zarel::AnswerTerms& values) {
  Cells cells;
  for (const zarel::AnswerTerm& value : values) cells.push_back(text_of(value));
  rows_.add("rows", std::move(cells), settings_.query_variables);
}

void ReportForm::draw_pictures() {
  if (graphs_.empty()) return;
  if (const auto missing = graphviz_missing()) return say("no pictures: Graphviz is not installed");
  const auto begin = std::chrono::steady_clock::now();
  const dl::Interruption before = dl::interruption();
  std::string json("[");
  std::size_t left_out = large_sets_;
  for (const AnswerGraph& graph : graphs_) {
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    const std::size_t boxes = graph.graph().boxes.size();
    const bool is_drawn = boxes != 0 && boxes <= kMostBoxes && taken.count() < kDrawingSeconds &&
                          dl::interruption() == before;
    const Drawing drawing =
        is_drawn ? draw(graph.graph(), kDrawingSeconds - taken.count()) : Drawing{};
    if (drawing.svg.empty() || drawing.failure) {
      if (boxes != 0) ++left_out;
      json += "null,";
      continue;
    }
    append_json_string(json, std::string_view(drawing.svg).substr(drawing.svg.find("<svg")));
    json += ',';
  }
  json.back() = ']';
  write_data("id=\"pictures\"", json);
  if (left_out != 0) {
    say(counted(left_out, "answer set") + " without a picture, too large or not drawn in time");
  }
}

void ReportForm::write_ending(const RunEnding& ending) {
  std::array<char, 32> seconds{};
  std::snprintf(seconds.data(), seconds.size(), "%.3f", ending.seconds);
  const bool has_query = ending.asked.has_query;
  std::string json("{\"words\":");
  append_json_string(json, in_words(ending.found, ending.asked, ending.judgement));
  json += ",\"statistics\":[";
  const std::array<Cells, 4> rows{
      Cells{has_query ? "rows" : "answer sets",
            std::to_string(has_query ? ending.found.rows : ending.found.answer_sets)},
      Cells{"seconds", seconds.data()},
      Cells{"complete", ending.judgement.end == SearchEnd::kAll ? "yes" : "no"},
      Cells{"exit status", std::to_string(static_cast<int>(ending.status))}};
  const char* separator = "";
  for (const Cells& row : rows) {
    json += separator;
    append_cells(json, row);
    separator = ",";
  }
  json += "],\"notes\":";
  append_cells(json, notes_);
  write_data("id=\"ending\"", json += '}');
}

void ReportForm::finish(const RunEnding& ending) {
  if (sets_ > written_sets_) {
    std::string text("the report shows the first ");
    text += std::to_string(written_sets_);
    ((text += " of ") += std::to_string(sets_)) += " answer sets";
    settings_.note(text);
    say(std::move(text));
  }
  if (!rows_.all().empty()) {
    std::string json;
    append_table(json, rows_.all().front());
    write_data("id=\"rows\"", json);
  }
  draw_pictures();
  write_ending(ending);
  out_ << kReportPage.substr(kReportPage.find(kDataMark) + kDataMark.size()) << std::flush;
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_report_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<ReportForm>(out, settings);
}

}    // namespace workbench
