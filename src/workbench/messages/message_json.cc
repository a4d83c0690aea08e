#include "workbench/messages/message_json.h"

#include <array>
#include <nlohmann/json.hpp>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const zarel::Position& position, SourceTexts& texts) {
  return {{"line", position.line}, {"column", texts.column(position)}, {"byte", position.column}};
}

// A list of one range, or of none.
Json ranges_of(const zarel::Place& place, SourceTexts& texts) {
  Json ranges = Json::array();
  if (!place.is_known()) return ranges;
  // A range that ends in another file ends, for whoever marks it, where it begins.
  const bool is_in_one_file = place.last.file == place.first.file;
  ranges.push_back({{"file", texts.name(place.first.file)},
                    {"first", json_of(place.first, texts)},
                    {"last", json_of(is_in_one_file ? place.last : place.first, texts)}});
  return ranges;
}

Json json_of(const zarel::Note& note, SourceTexts& texts) {
  return {{"message", note.text}, {"ranges", ranges_of(note.place, texts)}};
}

Json json_of(const Fix& fix, SourceTexts& texts) {
  constexpr std::array kKinds{"replace", "insert-before", "insert-behind"};
  return {{"kind", kKinds.at(static_cast<std::size_t>(fix.kind))},
          {"ranges", ranges_of(fix.place, texts)},
          {"replacement", fix.text}};
}

template <class Element>
Json list_of(const std::vector<Element>& elements, SourceTexts& texts) {
  Json list = Json::array();
  for (const Element& element : elements) list.push_back(json_of(element, texts));
  return list;
}

std::string line_of(const Json& object) {
  return object.dump(-1, ' ', false, Json::error_handler_t::replace) += '\n';
}

}    // namespace

std::string message_as_json(const Message& message, Severity severity, SourceTexts& texts) {
  return line_of({{"kind", "message"},
                  {"code", message.code},
                  {"severity", word_for(severity)},
                  {"message", message.text},
                  {"label", message.label},
                  {"help", message.help},
                  {"ranges", ranges_of(message.place, texts)},
                  {"notes", list_of(message.notes, texts)},
                  {"fixes", list_of(message.fixes, texts)}});
}

std::string note_as_json(std::string_view text) {
  return line_of({{"kind", "note"}, {"message", text}});
}

}    // namespace workbench
