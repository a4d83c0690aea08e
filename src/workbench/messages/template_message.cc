#include "workbench/messages/template_message.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/characters.h"
#include "model/report.h"
#include "model/run.h"
#include "templates/definitions.h"
#include "templates/invocations.h"
#include "workbench/loading.h"
#include "workbench/messages/nearest.h"
#include "workbench/messages/source_search.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using zarel::Code;
using zarel::Diagnostic;
using zarel::Note;
using zarel::Place;

// The established texts tell names in quotes, or as their first word, and numbers as words.
std::string_view quoted_name(std::string_view text) {
  const std::size_t begin = std::min(text.find('\''), text.size());
  const std::string_view rest = text.substr(std::min(begin + 1, text.size()));
  return rest.substr(0, rest.find('\''));
}

std::string_view first_word(std::string_view text) {
  return text.substr(0, text.find_first_of(" ,"));
}

std::size_t number_in(std::string_view text, std::size_t position) {
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (text[i - 1] != ' ' || !zarel::is_digit(text[i]) || position-- != 0) continue;
    std::size_t number = 0;
    for (; i < text.size() && zarel::is_digit(text[i]); ++i) {
      number = 10 * number + static_cast<std::size_t>(text[i] - '0');
    }
    return number;
  }
  return 0;
}

Message message_of(const Diagnostic& finding, std::string text) {
  Message message{zarel::kind_of(finding.code).name, finding.place, std::move(text)};
  message.notes = finding.notes;
  for (Note& note : message.notes) {
    if (note.text == "the invocation") note.text = "the template is used here";
  }
  return message;
}

// The more exact place where there is one.
void narrow(Place& place, const Place& exact) {
  if (exact.is_known()) place = exact;
}

std::string here(std::size_t number) {
  return (number == 1 ? ", here is " : ", here are ") + std::to_string(number);
}

// "value(1), edge(2)"
std::string formals_of(const zarel::DEFINITIONATOM& definition) {
  std::string text;
  for (std::size_t i = 0; i < definition.formals.size(); ++i) {
    if (i != 0) text += ", ";
    (text += definition.formals[i].name) += '(';
    (text += std::to_string(definition.formals[i].arity)) += ')';
  }
  return text;
}

// "t(X1, X2)"
std::string atom_of(std::string_view name, std::size_t arguments) {
  std::string text(name);
  for (std::size_t i = 1; i <= arguments; ++i) {
    text += i == 1 ? "(" : ", ";
    text += 'X';
    if (arguments > 1) text += std::to_string(i);
  }
  return arguments == 0 ? text : text += ')';
}

Message redefined(const Diagnostic& finding, SourceTexts& texts) {
  const std::string_view name = finding.text;
  constexpr std::string_view kBegin = "Template ";
  constexpr std::string_view kEnd = " already defined.";
  std::string text = "the template ";
  text += name.substr(kBegin.size(), name.size() - kBegin.size() - kEnd.size());
  Message message = message_of(finding, text += " is defined a second time");
  const Place& first = finding.notes.front().place;
  const bool is_same_file = first.first.file != finding.place.first.file &&
                            texts.name(first.first.file) == texts.name(finding.place.first.file);
  message.help =
      is_same_file ? "name the file only once" : "give one of them another name, or take it out";
  return message;
}

// The command that has the file in front of those that were read: "zrl maximum.zrl staff.zrl".
std::string command_with(const std::string& file, const SourceTexts& texts) {
  constexpr std::uint32_t kMost = 3;
  std::string command = "zrl " + file;
  const auto files = static_cast<std::uint32_t>(zarel::current_run().files.size());
  if (files > kMost) return command + " FILE...";
  for (std::uint32_t i = 0; i < files; ++i) {
    (command += ' ') += texts.path(i).empty() ? std::string_view("-") : texts.name(i);
  }
  return command;
}

// The template that was meant: of the program, else of the installed library with its file.
std::string help_for_undefined(std::string_view name, const SourceTexts& texts) {
  const auto file_of = [](std::string_view of) { return std::string(of) += ".zrl"; };
  const std::vector<std::string> library = library_templates();
  if (std::ranges::find(library, name) != library.end()) {
    return "name the file of the library, too: " + command_with(file_of(name), texts);
  }
  std::vector<std::string_view> known;
  for (const zarel::DEFINITIONATOM& each : zarel::defhashmap().all()) known.push_back(each.name);
  if (const std::string_view own = nearest(name, known); !own.empty()) {
    return std::string("did you mean ").append(own) += '?';
  }
  known.assign(library.begin(), library.end());
  if (const std::string_view other = nearest(name, known); !other.empty()) {
    const std::string help = std::string("did you mean ").append(other);
    return help +
           "? then name the file of the library, too: " + command_with(file_of(other), texts);
  }
  return std::string("define it with #template ").append(name) +=
         "{...}(...) { ... }, or name the file that does";
}

Message undefined(const Diagnostic& finding, SourceTexts& texts) {
  const std::string_view text = finding.text;
  std::string_view name = quoted_name(text);
  if (name.empty()) name = first_word(text.substr(text.find('#') + 1));
  Message message = message_of(finding, std::string("there is no template ").append(name));
  message.help = help_for_undefined(name, texts);
  narrow(message.place, place_of_word(texts, finding.place.first, name));
  return message;
}

Message in_head(const Diagnostic& finding, SourceTexts& texts) {
  const std::string name(quoted_name(finding.text));
  const bool is_formal = finding.code == Code::kFormalInHead;
  const std::string what = is_formal ? "the formal predicate " : "the global predicate ";
  Message message = message_of(finding, what + name + " stands in the head of a rule");
  message.label = is_formal ? "a template only reads what it is given"
                            : "a template only reads the predicates behind GLOBAL";
  message.help = is_formal
                     ? "give the head a name of its own, or that of the template"
                     : "write the rule outside of the template, or give the head another name";
  narrow(message.place, place_of_word(texts, finding.place.first, name));
  return message;
}

Message formal_arity(const Diagnostic& finding, SourceTexts& texts) {
  const std::string name(quoted_name(finding.text));
  const std::size_t wanted = number_in(finding.text, 0);
  const std::size_t seen = number_in(finding.text, 1);
  std::string text = "the formal predicate " + name + " has " + counted(wanted, "argument");
  Message message = message_of(finding, text += here(seen));
  narrow(message.place, place_of_atom(texts, finding.place.first, name, seen));
  return message;
}

Message output_arity(const Diagnostic& finding, SourceTexts& /*texts*/) {
  const std::string name(first_word(finding.text));
  const std::size_t wanted = number_in(finding.text, 0);
  std::string text = "the result of the template " + name + " has " + counted(wanted, "term");
  text += here(number_in(finding.text, 1));
  Message message = message_of(finding, std::move(text));
  message.help = "write " + counted(wanted, "term") + " in the parentheses behind the braces";
  return message;
}

Message actual_count(const Diagnostic& finding, SourceTexts& /*texts*/) {
  const std::string name(quoted_name(finding.text));
  const zarel::DEFINITIONATOM* const definition = zarel::defhashmap().find(name);
  const std::size_t wanted = number_in(finding.text, 0);
  std::string text = "the template " + name + " takes " + counted(wanted, "predicate");
  text += here(number_in(finding.text, 1));
  Message message = message_of(finding, std::move(text));
  if (definition != nullptr) message.help = "give one for each of " + formals_of(*definition);
  return message;
}

// The detail says "j:2" and "k:value(1)": what an actual predicate hands on, and what is wanted.
Message actual_arity(const Diagnostic& finding, SourceTexts& texts) {
  const zarel::DEFINITIONATOM* const definition =
      zarel::defhashmap().find(quoted_name(finding.text));
  const std::string_view detail = finding.detail;
  const std::size_t begin = detail.find("\nk:") + 3;
  const std::size_t end = detail.rfind('(');
  const std::string name(detail.substr(begin, end - begin));
  std::string spaced(detail);
  std::ranges::replace_if(
      spaced, [](char c) { return c == ':' || c == '('; }, ' ');
  const std::size_t seen = number_in(spaced, 0);
  const std::size_t wanted = number_in(std::string_view(spaced).substr(end), 0);
  std::string text = "what stands for " + name + "(" + std::to_string(wanted) + ") hands on ";
  Message message = message_of(finding, text += counted(seen, "argument"));
  message.help = "write * for " + counted(wanted, "argument") +
                 ", $ for one that is left out of account, a variable or a constant for groups";
  if (definition == nullptr) return message;
  std::size_t position = 0;
  while (position + 1 < definition->formals.size() && definition->formals[position].name != name) {
    ++position;
  }
  narrow(message.place, place_of_actual(texts, finding.place.first, position));
  return message;
}

Message result_arity(const Diagnostic& finding, SourceTexts& texts) {
  const std::string name(quoted_name(finding.text));
  const zarel::DEFINITIONATOM* const definition = zarel::defhashmap().find(name);
  const auto wanted = definition == nullptr ? 0 : static_cast<std::size_t>(definition->outputArity);
  const WrittenAtom atom = first_atom(texts, finding.place.first, name);
  std::string text = "the result of the template " + name + " has " + counted(wanted, "argument");
  if (atom.place.is_known()) text += here(atom.arguments);
  Message message = message_of(finding, std::move(text));
  message.help = "write " + atom_of(name, wanted) + ", or another number behind the braces";
  narrow(message.place, atom.place);
  return message;
}

Message result_missing(const Diagnostic& finding, SourceTexts& /*texts*/) {
  const std::string name(quoted_name(finding.text));
  const zarel::DEFINITIONATOM* const definition = zarel::defhashmap().find(name);
  Message message = message_of(finding, "no rule of the template " + name + " gives its result");
  const auto arity = definition == nullptr ? 0 : static_cast<std::size_t>(definition->outputArity);
  message.help = "write a rule with the head " + atom_of(name, arity);
  return message;
}

bool begins_at(const zarel::SourceLocation& location, const Place& place) {
  return location.file == place.first.file && location.line == place.first.line &&
         location.column == place.first.column;
}

std::string cycle_text(const std::vector<std::string>& names) {
  if (names.size() == 1) {
    return std::string("the template ").append(names.front()) += " invokes itself without an end";
  }
  std::string text = "the templates ";
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i != 0) text += i + 1 == names.size() ? " and " : ", ";
    text += names[i];
  }
  return text += " invoke each other without an end";
}

// The invocations that lead from the one which was met again back to it, from the inside outwards.
// The work stands in the innermost expansion.
Message endless(const Diagnostic& finding, SourceTexts& texts) {
  constexpr std::size_t kMostSteps = 10;
  const zarel::OriginTable& origins = zarel::current_run().origins;
  Message message = message_of(finding, "the expansion of templates has no end");
  message.label = "this leads to itself, with ever new predicates";
  message.help = "hand on a formal predicate as it is, with * for each argument";
  std::vector<Note> steps;
  std::vector<std::string> cycle;
  const zarel::Origin* origin = &origins[zarel::work().origin];
  while (origin->template_name && steps.size() < kMostSteps) {
    const std::string name(zarel::names().spelling(*origin->template_name));
    cycle.push_back(name);
    if (begins_at(origin->invocation.location, finding.place)) {
      message.text = cycle_text(cycle);
      message.notes = std::move(steps);
      return message;
    }
    Place place = place_of(origin->invocation.location);
    narrow(place, place_of_word(texts, place.first, name));
    steps.push_back({place, name + " is invoked here"});
    origin = &origins[origin->invocation.origin];
  }
  return message;
}

// Two uses of a template with different numbers of actual predicates.
Message arity_clash(const Diagnostic& finding, SourceTexts& texts) {
  const std::string name(first_word(finding.text));
  const std::size_t first = number_in(finding.text, 0);
  std::string text = "the template " + name + " gets ";
  text += counted(number_in(finding.text, 1), "predicate");
  Message message = message_of(finding, (text += " here, elsewhere ") += std::to_string(first));
  const zarel::DEFINITIONATOM* const definition = zarel::defhashmap().find(name);
  if (definition != nullptr) message.help = "give one for each of " + formals_of(*definition);
  narrow(message.place, place_of_word(texts, finding.place.first, name));
  for (const zarel::INVOCATIONATOM& other : zarel::invhashmap().all()) {
    if (other.name != name) continue;
    message.notes.push_back({place_of(other.written), "the first use"});
    break;
  }
  return message;
}

// Only where templates are literal: a global predicate of two numbers of arguments.
Message global_arity(const Diagnostic& finding, SourceTexts& texts) {
  const std::string name(first_word(finding.text));
  const std::size_t now = number_in(finding.text, 1);
  std::string text = "the global predicate " + name + " has ";
  (text += counted(now, "argument")) += " here, elsewhere ";
  Message message = message_of(finding, text += std::to_string(number_in(finding.text, 0)));
  message.help = "with --literal-templates it has one number of arguments everywhere";
  narrow(message.place, place_of_atom(texts, finding.place.first, name, now));
  return message;
}

using Wording = Message (*)(const Diagnostic& finding, SourceTexts& texts);

Wording wording_of(Code code) {
  switch (code) {
    case Code::kArityClash:
      return arity_clash;
    case Code::kTemplateRedefined:
      return redefined;
    case Code::kTemplateUndefined:
      return undefined;
    case Code::kFormalInHead:
    case Code::kGlobalInHead:
      return in_head;
    case Code::kFormalArity:
      return formal_arity;
    case Code::kGlobalArity:
      return global_arity;
    case Code::kOutputArity:
      return output_arity;
    case Code::kActualCount:
      return actual_count;
    case Code::kActualArity:
      return actual_arity;
    case Code::kResultArity:
      return result_arity;
    case Code::kResultMissing:
      return result_missing;
    case Code::kEndlessExpansion:
      return endless;
    default:
      return nullptr;
  }
}

}    // namespace

std::optional<Message> template_message(const Diagnostic& finding, SourceTexts& texts) {
  const Wording wording = wording_of(finding.code);
  if (wording == nullptr) return std::nullopt;
  return wording(finding, texts);
}

}    // namespace workbench
