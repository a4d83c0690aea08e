#pragma once
// told_text.h - explanations as text for people.
//
// Note [explanations as text]
// A statement is quoted where it is first needed; later its file and line stand for it, unless
// another statement of that line has been quoted since. An atom is proved once; later it says
// "[see above]". What lies too far to the right is not indented further, as the text of a chain of
// a million steps would be quadratic: it says "[see below]" and gets a paragraph of its own.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "dl/explain/told.h"

namespace dl {

// Writes the parts of one answer in the order of the calls. Each call hands on all that it writes
// before it returns, so that a search that is cut has shown what it found.
class ToldText {
 public:
  using Take = std::function<void(std::string_view)>;
  static constexpr std::uint32_t kUsualDepth = 8;
  static constexpr std::size_t kFewElements = 10;    // of an aggregate

  // `take` gets pieces of any length. `depth` says how many atoms one below the other are proved,
  // 0: all; with 0, all elements of an aggregate are written, too, else the first ten.
  explicit ToldText(Take take, std::uint32_t depth = kUsualDepth)
      : take_(std::move(take)), depth_(depth) {}

  void sentence(std::string_view text);    // a line; the text is without its line end

  void proof(const ToldProof& proof);    // of each of its roots
  void missing(const ToldMissing& missing);

  // Conflicts. With a demand the sentences are about answer sets that hold it. Instances without
  // values are not written: the lines have said it all.
  void outcome(ToldOutcome outcome, bool has_demand);
  void give_up(const ToldLines& lines, bool has_demand);
  void conflict(const ToldLines& lines);
  void give_up_instances(const ToldInstances& instances);
  void conflict_instances(const ToldInstances& instances);
  void rules(const ToldLines& lines);

  // Costs: those of the answer set, and each of its payments, followed by what avoiding it costs.
  void costs(const ToldCosts& costs, bool is_best);
  void payment(const ToldPayment& payment);
  void avoidance(const ToldAvoidance& avoidance);

 private:
  friend class ProofText;
  void indent(std::uint32_t levels) { out_.append(2 * std::size_t{levels}, ' '); }
  void place(const ToldPlace& place);
  void statement(const ToldStatement& statement);
  void values(const ToldValues& values, std::string_view before = "   with ");
  void instance(const ToldInstance& instance);
  void instances(const ToldInstances& instances, std::string_view heading);
  std::string_view conflict_heading(bool is_one) const;
  void failure(const ToldFailure& failure);
  void unfit_rules(const ToldMissing& missing);
  void lines(const ToldLines& lines);
  void end_line();    // hands on what became long
  void hand_on();

  Take take_;
  std::uint32_t depth_;
  std::string out_;    // not handed on yet
  // By "file:line", the column of the statement that was quoted last.
  std::unordered_map<std::string, std::uint32_t> quoted_;
  std::int64_t level_ = 0;     // of the payment written last
  bool has_demand_ = false;    // the conflict that is being written
};

// "[5:2] [1:1]": costs with their levels; "nothing" where there are none but 0.
std::string text_of(const ToldCosts& costs);

}    // namespace dl
