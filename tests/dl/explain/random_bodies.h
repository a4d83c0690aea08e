#pragma once
// random_bodies.h - programs for properties of what is said of bodies.

#include <random>
#include <set>
#include <string>

#include "dl/translate.h"

namespace dl_test {

// Bodies over a few facts, with everything that a body can hold.
class RandomBodies {
 public:
  explicit RandomBodies(unsigned seed) : random_(seed) {}

  std::string facts() {
    std::string text;
    for (int i = 0; i < 5; ++i) text += "p(" + ground() + "). ";
    for (int i = 0; i < 9; ++i) text += "q(" + ground() + "," + ground() + "). ";
    for (int i = 0; i < 4; ++i) {
      text += "r(" + ground() + "," + ground() + "," + ground() + "). ";
      text += "-n(" + ground() + "). ";
    }
    return text + "n(never) :- not p(_). -p(none) :- not p(_).\n";
  }

  // The literals of a body; `variables` are those outside the braces of aggregates.
  std::string body(std::set<std::string>& variables) {
    variables_ = &variables;
    std::string text;
    const int literals = chance(20) ? 30 : 1 + pick(4);
    for (int i = 0; i < literals; ++i) (text += i == 0 ? "" : ", ") += literal();
    return text;
  }

 private:
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool chance(int one_of) { return pick(one_of) == 0; }

  std::string ground() {
    static constexpr const char* kTerms[] = {"0",       "1",    "2",    "3",      "a",      "b",
                                             "\"s t\"", "f(1)", "f(a)", "g(1,b)", "f(f(2))"};
    return kTerms[pick(chance(2) ? 4 : 11)];
  }
  std::string variable() {
    std::string name(1, "XYZ"[pick(3)]);
    if (!is_inside_) variables_->insert(name);
    return name;
  }
  std::string term() {
    if (chance(5)) return ground();
    if (chance(7)) return "_";
    return chance(9) ? "f(" + variable() + ")" : variable();
  }
  std::string operand() { return chance(4) ? std::to_string(pick(4)) : variable(); }
  std::string atom() {
    switch (pick(5)) {
      case 0:
        return "q(" + term() + "," + term() + ")";
      case 1:
        return "r(" + term() + "," + term() + "," + term() + ")";
      case 2:
        return (chance(2) ? "-n(" : "n(") + term() + ")";
      default:
        return "p(" + term() + ")";
    }
  }
  std::string compared() {
    static constexpr const char* kOperators[] = {"==", "!=", "<", ">", "<=", ">="};
    const std::string text = variable() + kOperators[pick(6)];
    return text + (chance(3) ? ground() : variable());
  }
  std::string aggregate() {
    static constexpr const char* kFunctions[] = {"#count", "#sum", "#min", "#max", "#avg"};
    static constexpr const char* kOperators[] = {"<", "<=", ">", ">="};
    const std::string guard = chance(3) ? variable() : std::to_string(pick(5));
    is_inside_ = true;
    const std::string local = chance(3) ? "V,W" : "V";
    std::string elements = kFunctions[pick(5)];
    elements += "{" + local + ":q(V," + (local == "V" ? term() : "W") + ")";
    if (chance(2)) elements += (chance(2) ? ", not " : ", ") + atom();
    elements += "}";
    is_inside_ = false;
    if (chance(3)) return guard + " = " + elements;
    if (chance(3)) return "0 <= " + elements + " < " + guard;
    return chance(2) ? guard + kOperators[pick(4)] + elements
                     : elements + kOperators[pick(4)] + guard;
  }
  std::string literal() {
    switch (pick(14)) {
      case 0:
        return "not " + atom();
      case 1:
        return compared();
      case 2:
        return operand() + " = " + operand() + " + " + operand();
      case 3:
        return operand() + " = " + operand() + " * " + operand();
      case 4:
        return "#succ(" + operand() + "," + operand() + ")";
      case 5:
        return (chance(3) ? "not #int(" : "#int(") + operand() + ")";
      case 6:
        return "#function_builtin(" + variable() + ",f," + operand() + ")";
      case 7:
        return (chance(4) ? "not " : "") + aggregate();
      default:
        return atom();
    }
  }

  std::mt19937 random_;
  std::set<std::string>* variables_ = nullptr;
  bool is_inside_ = false;
};

inline bool is_program(const std::string& text) {
  const dl::Source source{"p", text};
  return !dl::translate({&source, 1}, dl::Options()).mistake;
}

}    // namespace dl_test
