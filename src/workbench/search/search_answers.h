#pragma once
// search_answers.h - what clingo prints, on its way to the printer and into the result of a search.

#include "dl/answer_reader.h"
#include "dl/options.h"
#include "dl/translate.h"
#include "workbench/search/search.h"

namespace workbench {

class SearchAnswers {
 public:
  // All must outlive this. The printer and the result learn what the program asks.
  SearchAnswers(const dl::Translated& program, dl::Reasoning reasoning, AnswerPrinter& printer,
                SearchResult& result);

  dl::AnswerReader& reader() { return reader_; }                // takes the lines
  bool has_much() { return reader_.text().size() >= kMuch; }    // that waits to be printed

  // Prints what was read. Returns false when a further search is of no use.
  bool print();
  // Nothing follows, and how the search ended is known to the result: completes and prints it.
  // Throws dl::Failure like the reader.
  void finish();

 private:
  static constexpr std::size_t kMuch = std::size_t{1} << 16;

  AnswerPrinter& printer_;
  SearchResult& result_;
  dl::AnswerReader reader_;
};

}    // namespace workbench
