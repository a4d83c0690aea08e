#include "workbench/pictures/dot_text.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "workbench/messages/characters.h"

namespace workbench {
namespace {

constexpr std::string_view kRed = "#b00020";
constexpr std::string_view kGrey = "#707070";
constexpr std::string_view kBegin = R"(digraph zarel {
  graph [fontname="Helvetica", fontsize=11];
  node [shape=box, fontname="Helvetica", fontsize=11, height=0.3, margin="0.1,0.05"];
  edge [fontname="Helvetica", fontsize=10, arrowsize=0.7];
)";

// The bytes of what is not to be seen as it is. A backslash stands for itself only when doubled.
void append_code(std::string& out, std::string_view bytes, char32_t code) {
  std::array<char, 16> text{};
  const bool is_wide = bytes.size() > 1;
  const unsigned value = is_wide ? code : static_cast<unsigned char>(bytes[0]);
  std::snprintf(text.data(), text.size(), is_wide ? "\\\\u{%x}" : "\\\\x%02x", value);
  out += text.data();
}

bool is_refused_by_xml(char32_t code) {
  return code == 0xFFFE || code == 0xFFFF;
}

void append_character(std::string& out, std::string_view bytes, const Character& character) {
  if (!character.is_shown || is_refused_by_xml(character.code)) {
    if (bytes == "\n" || bytes == "\t") {
      out += bytes == "\n" ? "\\\\n" : "\\\\t";
    } else {
      append_code(out, bytes, character.code);
    }
    return;
  }
  switch (bytes[0]) {
    case '&':
      out += "&amp;";
      break;
    case '<':
      out += "&lt;";
      break;
    case '>':
      out += "&gt;";
      break;
    case '"':
      out += "&quot;";
      break;
    case '\\':
      out += "\\\\";
      break;
    case ' ':
      out += "&#160;";    // of several blanks, or one at the end, nothing else stays
      break;
    default:
      out += bytes;
  }
}

class DotWriter {
 public:
  DotWriter(const Graph& graph, const DotLimits& limits) : graph_(graph), limits_(limits) {}

  std::string text();

 private:
  void sort_into_clusters();
  void add_cluster(std::uint32_t cluster, std::size_t depth);
  void add_box(std::uint32_t number, std::size_t depth);
  void add_rows(const Box& box);
  void add_place(const Box& box);
  void add_line(const Box::Line& line);
  void add_arrow(const Arrow& arrow);
  void add_text(std::string_view text);
  void indent(std::size_t depth) { out_.append(2 * depth, ' '); }
  std::size_t boxes() const { return std::min(graph_.boxes.size(), limits_.boxes); }

  const Graph& graph_;
  const DotLimits& limits_;
  std::string out_;
  std::vector<std::vector<std::uint32_t>> in_cluster_;
  std::vector<std::vector<std::uint32_t>> below_;    // clusters in clusters
};

std::string DotWriter::text() {
  out_ = kBegin;
  sort_into_clusters();
  add_cluster(kNoCluster, 0);
  std::size_t left = limits_.arrows;
  for (const Arrow& arrow : graph_.arrows) {
    if (arrow.from >= boxes() || arrow.to >= boxes()) continue;
    if (left-- == 0) break;
    add_arrow(arrow);
  }
  return std::move(out_ += "}\n");
}

void DotWriter::sort_into_clusters() {
  in_cluster_.resize(graph_.clusters.size());
  below_.resize(graph_.clusters.size());
  for (std::uint32_t i = 0; i < boxes(); ++i) {
    const std::uint32_t cluster = limits_.has_clusters ? graph_.boxes[i].cluster : kNoCluster;
    in_cluster_[cluster].push_back(i);
  }
  for (std::uint32_t i = 1; limits_.has_clusters && i < graph_.clusters.size(); ++i) {
    below_[graph_.clusters[i].parent].push_back(i);
  }
}

// Answer sets, and spaces in them: no deeper.
void DotWriter::add_cluster(std::uint32_t cluster, std::size_t depth) {
  if (cluster != kNoCluster) {
    indent(depth);
    ((out_ += "subgraph cluster_") += std::to_string(cluster)) += " {\n";
    indent(depth + 1);
    out_ += "color=\"#a0a0a0\"; label=<";
    add_text(graph_.clusters[cluster].label);
    out_ += ">;\n";
  }
  for (const std::uint32_t number : in_cluster_[cluster]) add_box(number, depth + 1);
  for (const std::uint32_t inner : below_[cluster]) add_cluster(inner, depth + 1);
  if (cluster == kNoCluster) return;
  indent(depth);
  out_ += "}\n";
}

void DotWriter::add_text(std::string_view text) {
  std::size_t left = limits_.characters;
  for (std::size_t at = 0; at < text.size();) {
    if (left-- == 0) {
      out_ += "…";
      return;
    }
    const Character character = character_at(text, at);
    append_character(out_, text.substr(at, character.bytes), character);
    at += character.bytes;
  }
}

void DotWriter::add_line(const Box::Line& line) {
  if (line.is_negated) ((out_ += "<font color=\"") += kRed) += "\">";
  add_text(line.text);
  if (line.is_negated) out_ += "</font>";
  out_ += "<br align=\"left\"/>";
}

// Where no frame says it.
void DotWriter::add_place(const Box& box) {
  if (limits_.has_clusters || box.cluster == kNoCluster) return;
  ((out_ += "<br/><font color=\"") += kGrey) += "\">";
  const char* separator = "";
  for (std::uint32_t at = box.cluster; at != kNoCluster; at = graph_.clusters[at].parent) {
    out_ += separator;
    add_text(graph_.clusters[at].label);
    separator = ", ";
  }
  out_ += "</font>";
}

void DotWriter::add_rows(const Box& box) {
  out_ += R"(<table border="0" cellborder="1" cellspacing="0" cellpadding="3">)";
  if (!box.title.empty()) {
    out_ += "<tr><td><b>";
    add_text(box.title);
    out_ += "</b>";
    add_place(box);
    out_ += "</td></tr>";
  }
  out_ += R"(<tr><td align="left" balign="left">)";
  const std::size_t shown = std::min(box.lines.size(), limits_.lines);
  for (std::size_t i = 0; i < shown; ++i) add_line(box.lines[i]);
  if (shown < box.lines.size()) {
    std::string rest("and ");
    add_line({(rest += std::to_string(box.lines.size() - shown)) += " more", false});
  }
  out_ += "</td></tr></table>";
}

void DotWriter::add_box(std::uint32_t number, std::size_t depth) {
  const Box& box = graph_.boxes[number];
  indent(depth);
  ((out_ += 'n') += std::to_string(number + 1)) += " [";
  if (box.shape == Box::Shape::kRelation) out_ += "shape=ellipse, fontsize=10, ";
  if (!box.lines.empty()) out_ += "shape=plain, ";
  if (box.is_negated) (((out_ += "style=dashed, color=\"") += kRed) += "\", ");
  if (box.is_faint) ((out_ += "fontcolor=\"") += kGrey) += "\", style=dotted, ";
  out_ += "label=<";
  if (box.lines.empty()) {
    add_text(box.title);
    if (box.title.empty()) out_ += "&#160;";    // no label at all is an error
    add_place(box);
  } else {
    add_rows(box);
  }
  out_ += ">];\n";
}

// The upper class stands above: Graphviz lays out what an arrow comes from first.
void DotWriter::add_arrow(const Arrow& arrow) {
  using enum Arrow::Kind;
  const bool is_of_class = arrow.kind == kSubclass || arrow.kind == kMembership;
  const std::uint32_t first = is_of_class ? arrow.to : arrow.from;
  const std::uint32_t last = is_of_class ? arrow.from : arrow.to;
  (out_ += "  n") += std::to_string(first + 1);
  (out_ += " -> n") += std::to_string(last + 1);
  out_ += " [";
  if (arrow.kind == kSubclass) out_ += "dir=back, arrowtail=empty, ";
  if (arrow.kind == kMembership) out_ += "dir=back, arrowtail=vee, ";
  if (arrow.is_negated || arrow.kind == kMembership || arrow.kind == kDashed)
    out_ += "style=dashed, ";
  if (arrow.is_negated) {
    ((out_ += "color=\"") += kRed) += "\", fontcolor=\"";
    (out_ += kRed) += "\", ";
  }
  if (!arrow.label.empty()) {
    out_ += "label=<";
    add_text(arrow.label);
    out_ += '>';
  } else if (out_.ends_with(", ")) {
    out_.resize(out_.size() - 2);
  }
  out_ += "];\n";
}

}    // namespace

std::string dot_text(const Graph& graph, const DotLimits& limits) {
  return DotWriter(graph, limits).text();
}

std::size_t arrows_between(const Graph& graph, std::size_t boxes) {
  return static_cast<std::size_t>(std::ranges::count_if(graph.arrows, [boxes](const Arrow& arrow) {
    return arrow.from < boxes && arrow.to < boxes;
  }));
}

}    // namespace workbench
