#pragma once
// answer_terms.h - the terms of an answer, taken apart only when somebody asks.

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "model/namespaces.h"

namespace zarel {

class AnswerTerms;

// A look at one term of the solver's text, as long as that text lives. Making one looks at nothing,
// and no question allocates memory.
class AnswerTerm {
 public:
  enum class Kind : std::uint8_t { kNumber, kConstant, kString, kQualifiedConstant, kFunction };

  // A whole term without blanks between its tokens; empty, a constant, where the solver left one
  // out. Strings that begin with the URI of one of the name spaces are qualified constants; without
  // a table there are none.
  AnswerTerm() = default;
  explicit AnswerTerm(std::string_view text, const NamespaceTable* namespaces = nullptr)
      : text_(text), namespaces_(namespaces) {}

  std::string_view text() const { return text_; }    // as the solver wrote it, quotes included
  Kind kind() const;
  // A function's name, a string without its quotes, the local name of a qualified constant; of
  // anything else the text.
  std::string_view name() const;
  std::string_view prefix() const;    // of a qualified constant; else nothing
  AnswerTerms arguments() const;      // of a function; else none
  const NamespaceTable* namespaces() const { return namespaces_; }

 private:
  std::string_view text_;
  const NamespaceTable* namespaces_ = nullptr;
};

// A look at terms with commas between them. Going through them takes time linear in their text, in
// which a function counts with all its arguments: for terms nested deep there is TermWalk.
class AnswerTerms {
 public:
  class Iterator {
   public:
    using value_type = AnswerTerm;
    using difference_type = std::ptrdiff_t;

    Iterator() = default;
    Iterator(std::string_view rest, const NamespaceTable* namespaces);
    AnswerTerm operator*() const { return AnswerTerm(rest_.substr(0, size_), namespaces_); }
    Iterator& operator++();
    Iterator operator++(int);
    bool operator==(const Iterator& other) const { return rest_.size() == other.rest_.size(); }

   private:
    std::string_view rest_;    // from the term on; empty at the end
    std::size_t size_ = 0;     // of the term
    const NamespaceTable* namespaces_ = nullptr;
  };

  AnswerTerms() = default;
  explicit AnswerTerms(std::string_view text, const NamespaceTable* namespaces = nullptr)
      : text_(text), namespaces_(namespaces) {}

  std::string_view text() const { return text_; }    // as the solver wrote them, without blanks
  bool is_empty() const { return text_.empty(); }
  Iterator begin() const { return {text_, namespaces_}; }
  Iterator end() const { return {}; }
  const NamespaceTable* namespaces() const { return namespaces_; }

 private:
  std::string_view text_;
  const NamespaceTable* namespaces_ = nullptr;
};

// Goes through terms and all that is in them in the order of the text, in time linear in it
// and without a stack, however deep they are nested.
class TermWalk {
 public:
  enum class Step : std::uint8_t { kTerm, kBeginFunction, kEndFunction, kEnd };

  explicit TermWalk(const AnswerTerms& terms)
      : rest_(terms.text()), namespaces_(terms.namespaces()) {}

  Step next();
  // Behind kTerm the term, which has no arguments; behind kBeginFunction the function's name.
  AnswerTerm term() const { return AnswerTerm(term_, namespaces_); }

 private:
  std::string_view rest_, term_;
  const NamespaceTable* namespaces_;
};

// Where the first of the terms ends: at a comma outside parentheses and quotes, or with the text.
std::size_t end_of_first_term(std::string_view terms);

// The two parts of an address "URI#name" in quotes: the prefix that is declared for the URI, its
// "#" included, and the name. Without a declared prefix the first one is empty.
struct QualifiedName {
  std::string_view prefix, local_name;
};
QualifiedName qualified_name(const NamespaceTable& namespaces, std::string_view quoted);

}    // namespace zarel
