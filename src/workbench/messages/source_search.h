#pragma once
// source_search.h - looks in a source text for what a finding names and has no place for.

#include <cstddef>
#include <string_view>

#include "base/place.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// Each looks at the text from that place to the end of the statement there, strings and comments
// excepted, and gives a place that is not known when it does not find what it looks for.

// The first word of that spelling.
zarel::Place place_of_word(SourceTexts& texts, const zarel::Position& from, std::string_view word);

// The first atom of that name, whole, and its number of arguments.
struct WrittenAtom {
  zarel::Place place;
  std::size_t arguments = 0;
};
WrittenAtom first_atom(SourceTexts& texts, const zarel::Position& from, std::string_view name);

// The first one with that number of them.
zarel::Place place_of_atom(SourceTexts& texts, const zarel::Position& from, std::string_view name,
                           std::size_t arguments);

// The actual predicate at that position, from 0, of the invocation that begins there.
zarel::Place place_of_actual(SourceTexts& texts, const zarel::Position& invocation,
                             std::size_t position);

// The query that begins there, up to its question mark.
zarel::Place place_of_query(SourceTexts& texts, const zarel::Position& from);

}    // namespace workbench
