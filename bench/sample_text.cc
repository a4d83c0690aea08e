#include "sample_text.h"

#include <cstdint>
#include <random>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "driver/diagnostics.h"
#include "driver/rewriting.h"
#include "parser/parse.h"
#include "parser/program_builder.h"

namespace zarel {
namespace {

constexpr std::size_t kPerName = 10;    // statements for each name
constexpr std::uint32_t kKinds = 1000;

class Numbers {
 public:
  explicit Numbers(std::size_t count) : names_(static_cast<std::uint32_t>(count / kPerName) + 1) {}
  std::string name() {
    std::string name = "n";
    return name.append(below(names_));
  }
  std::string kind() { return below(kKinds); }

 private:
  // The remainder of a fixed engine: distributions differ between libraries.
  std::string below(std::uint32_t limit) { return std::to_string(engine_() % limit); }

  std::mt19937 engine_{1};
  std::uint32_t names_;
};

template <class Statement>
std::string repeated(std::size_t count, Statement statement) {
  Numbers numbers(count);
  std::ostringstream text;
  for (std::size_t i = 0; i < count; ++i) statement(text, numbers);
  return std::move(text).str();
}

template <class Atom>
std::string joined(std::size_t count, Atom atom) {
  std::string separator = "{";
  return repeated(count,
                  [&](std::ostream& out, Numbers& numbers) {
                    out << std::exchange(separator, ", ");
                    atom(out, numbers);
                  }) +
         "}\n";
}

}    // namespace

std::string fact_text(std::size_t count) {
  return repeated(count, [](std::ostream& out, Numbers& of) {
    out << "edge(" << of.name() << ',' << of.name() << ',' << of.kind() << ").\n";
  });
}

std::string rule_text(std::size_t count) {
  return repeated(count, [](std::ostream& out, Numbers& of) {
    out << "path" << of.kind() << "(X,Y) :- edge" << of.kind() << "(X,Z), link" << of.kind()
        << "(Z,Y," << of.kind() << "), Z < Y, label(X,\"name " << of.kind() << "\"), not closed"
        << of.kind() << "(Y).\n";
  });
}

std::string frame_text(std::size_t count) {
  return repeated(count, [](std::ostream& out, Numbers& of) {
    out << of.name() << "[name->k" << of.kind() << ", age->" << of.kind() << ", likes->>{t"
        << of.kind() << ",t" << of.kind() << "}, lives->c" << of.kind() << ", owns->" << of.name()
        << "[rooms->" << of.kind() << "]].\n";
  });
}

std::string function_rule_text(std::size_t count) {
  return repeated(count, [](std::ostream& out, Numbers& of) {
    out << 'p' << of.kind() << "(f(X,g(Y)),Z) :- q" << of.kind() << "(g(f" << of.kind()
        << "(X)),Y), r" << of.kind() << "(h(Z,k(c" << of.kind() << ")),X).\n";
  });
}

std::string answer_set_text(std::size_t count) {
  return joined(count, [](std::ostream& out, Numbers& of) {
    out << "a_4(edge,default," << of.name() << ',' << of.name() << ',' << of.kind() << ')';
  });
}

std::string frame_answer_set_text(std::size_t count) {
  return joined(count, [](std::ostream& out, Numbers& of) {
    out << "a_5(valueOf,defaultFlogic," << of.name() << ",attribute,v" << of.kind() << ",\"->>\")";
  });
}

std::vector<std::string> spellings(std::size_t count) {
  Numbers numbers(count);
  std::vector<std::string> made;
  for (std::size_t i = 0; i < count; ++i) made.push_back(numbers.name());
  return made;
}

void read_text(std::string_view program) {
  std::ostringstream verbatim;
  ProgramBuilder builder;
  parse_text(program, current_run().files.add("sample"), builder, verbatim);
  if (current_run().findings.parser_errors != 0)
    throw std::logic_error("errors in a sample program");
}

}    // namespace zarel
