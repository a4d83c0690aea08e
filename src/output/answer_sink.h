#pragma once
// answer_sink.h - what a host implements to get the solver's answers: one call for each of them.

#include <span>
#include <string_view>

#include "output/answer_terms.h"

namespace zarel {

class FrameMap;

// Everything that an event carries looks into the reader's memory and is valid during the call
// alone. Frame spaces are as the program names them; the one of what names none is "default".

// How an answer set begins. A best model, one of an optimising run, has two words of the solver's
// in front, "Best" and "model" as a rule.
struct AnswerSetStart {
  std::string_view title, subject;    // nothing for an ordinary answer set
  bool is_best_model() const { return !title.empty(); }
};

// relation(arguments)@space, or -relation(arguments)@space.
struct AnswerAtom {
  AnswerTerm relation;
  std::string_view space;     // may also be a string in its quotes or a function term
  bool is_negated = false;    // strongly, by "-"
  AnswerTerms arguments;
};

// object:class_name@space for a membership, object::class_name@space for a subclass.
struct ClassStatement {
  AnswerTerm object, class_name;
  std::string_view space;
  bool is_negated = false;
};

// What one object says under one name: all values of the same attribute, sign and arrow.
struct AnswerAttribute {
  AnswerTerm name;
  bool is_negated = false;
  std::string_view arrow;                // such as "->>", without quotes; nothing without values
  std::span<const AnswerTerm> values;    // in order of arrival; equal ones are kept
};

// object[attribute->value, ...]@space.
struct AnswerObject {
  AnswerTerm name;
  std::string_view space;
  std::span<const AnswerAttribute> attributes;    // in order of arrival
};

// What a best model costs at one level. The numbers are as the solver wrote them, of any length.
struct AnswerCost {
  std::string_view weight, level;
  // The words of a first cost, "Cost", "Weight" and "Level" as a rule; nothing for a further one,
  // which the solver writes as a string.
  std::string_view title, weight_name, level_name;
  bool is_first() const { return !title.empty(); }
};

// Gets the answers in the order of the solver's output, each as soon as it was read: an answer set
// begins, has atoms, memberships and subclasses, then all objects, and ends; a best model's costs
// come behind its end, the first one always, those of lower levels before anything else. Answers of
// queries stand outside answer sets. No filter was applied, nothing was shortened or left out.
//
// An input with an error ends wherever the error is, also within an answer set; a best model
// without a cost is such a case. A sink may throw, which ends the reading and goes on to its
// caller; std::bad_alloc and std::length_error are reported as exhausted memory instead.
class AnswerSink {
 public:
  AnswerSink() = default;
  AnswerSink(const AnswerSink&) = delete;
  AnswerSink& operator=(const AnswerSink&) = delete;
  virtual ~AnswerSink() = default;

  virtual void begin_answer_set(const AnswerSetStart& start) = 0;
  virtual void atom(const AnswerAtom& atom) = 0;
  virtual void membership(const ClassStatement& statement) = 0;
  virtual void subclass(const ClassStatement& statement) = 0;
  virtual void object(const AnswerObject& object) = 0;    // in byte-wise order of name and space
  virtual void end_answer_set() = 0;
  virtual void cost(const AnswerCost& cost) = 0;

  virtual void query_row(const AnswerTerms& values) = 0;
  virtual void truth_value(bool holds) = 0;    // of a query without variables

  // An atom in a space of frames whose relation is none of theirs: like any atom, unless the sink
  // knows better. Its space has the frames' marker in it.
  virtual void foreign_frame_atom(const AnswerAtom& atom) { this->atom(atom); }

  // All objects of an answer set that has some. Calls object() for each; a sink that wants their
  // frame notation gets it faster from frames.stringMolecules().
  virtual void objects(const FrameMap& frames);

  // The reader is about to wait for more input, to report an error, or to return: what is complete
  // should go out. Returns false when some of it is lost, so that reading on is no use.
  virtual bool flush() { return true; }
};

}    // namespace zarel
