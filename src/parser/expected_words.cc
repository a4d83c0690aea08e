#include "parser/expected_words.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <unordered_map>

namespace zarel {
namespace {

constexpr std::size_t kMostWords = 4;

// A word, the tokens that all have to be possible for it, and those it stands for besides.
struct Word {
  std::string_view word;
  std::string_view needed;
  std::string_view covered = {};
};

// In the order in which they are told.
constexpr std::array kWords = std::to_array<Word>({
    {"a statement", "TEMPLATE INCLUDE",
     "ID VARIABLE NUMBER MAXINT ANONYMOUS OR MINUS NOT INT SUCC PLUS STAR AMPERSAND AT FLAT_FACT "
     "IMPLIES WEAK_IMPLIES NAMESPACE AGG_ANY AGG_AVG AGG_COUNT AGG_MAX AGG_MIN AGG_SUM AGG_TIMES"},
    {kFullStop, "DOT"},
    {"a comma", "COMMA"},
    {"a closing parenthesis", "RPAREN"},
    {"a closing bracket", "RBRACKET"},
    {"a closing brace", "RBRACE"},
    {"a literal", "NOT INT",
     "ID VARIABLE NUMBER MAXINT ANONYMOUS OR MINUS SUCC PLUS STAR AMPERSAND AGG_ANY AGG_AVG "
     "AGG_COUNT AGG_MAX AGG_MIN AGG_SUM AGG_TIMES"},
    {"an attribute", "ID MINUS NOT", "VARIABLE OR"},
    {"an atom", "ID MINUS OR", "VARIABLE NUMBER"},
    {"a value", "NUMBER ANONYMOUS MINUS", "ID VARIABLE MAXINT OR LBRACE"},
    {"a term", "ID NUMBER", "VARIABLE MAXINT ANONYMOUS OR DOLLAR STAR MINUS"},
    {"a name", "ID VARIABLE", "OR MINUS"},
    {"a name", "ID", "OR"},
    {"a variable", "VARIABLE"},
    {"a number", "NUMBER", "MAXINT"},
    {"an aggregate", "AGG_COUNT", "AGG_ANY AGG_AVG AGG_MAX AGG_MIN AGG_SUM AGG_TIMES"},
    {":-", "IMPLIES"},
    {"v", "BAR", "OR SEMICOLON"},
    {"a comparison", "EQ", "NEQ LT LE GT GE EQUAL"},
    {"a comparison", "LE GE", "LT GT EQUAL"},
    {"<= or <", "LE", "LT"},
    {">", "GT"},
    {"=", "EQUAL"},
    {"+ or *", "PLUS STAR"},
    {"an arrow", "ARROW",
     "SET_ARROW SIG_ARROW SIG_SET_ARROW INH_ARROW INH_SET_ARROW "
     "NEG_SIG_ARROW"},
    {kQuestionMark, "QUERY_MARK"},
    {"a colon", "COLON"},
    {"an opening parenthesis", "LPAREN"},
    {"an opening brace", "LBRACE"},
    {"an opening bracket", "LBRACKET"},
});

using TokenSet = std::bitset<128>;

// Numbers for the names, as they are met first.
class TokenNumbers {
 public:
  TokenSet set_of(std::string_view names) {
    TokenSet set;
    while (!names.empty()) {
      const std::string_view name = names.substr(0, names.find(' '));
      set.set(numbers_.try_emplace(name, numbers_.size()).first->second);
      names.remove_prefix(std::min(name.size() + 1, names.size()));
    }
    return set;
  }
  // Those that have a number.
  TokenSet known(std::span<const std::string_view> names) const {
    TokenSet set;
    for (const std::string_view name : names) {
      if (const auto found = numbers_.find(name); found != numbers_.end()) set.set(found->second);
    }
    return set;
  }

 private:
  std::unordered_map<std::string_view, std::size_t> numbers_;
};

struct WordSets {
  TokenNumbers numbers;
  std::array<TokenSet, kWords.size()> needed;
  std::array<TokenSet, kWords.size()> covered;

  WordSets() {
    for (std::size_t i = 0; i < kWords.size(); ++i) {
      needed[i] = numbers.set_of(kWords[i].needed);
      covered[i] = numbers.set_of(kWords[i].covered) | needed[i];
    }
  }
};

}    // namespace

std::vector<std::string_view> expected_words(std::span<const std::string_view> tokens) {
  static const WordSets sets;
  TokenSet left = sets.numbers.known(tokens);
  std::vector<std::string_view> words;
  for (std::size_t i = 0; i < kWords.size() && words.size() < kMostWords; ++i) {
    if ((sets.needed[i] & ~left).any()) continue;
    words.push_back(kWords[i].word);
    left &= ~sets.covered[i];
  }
  return words;
}

}    // namespace zarel
