#include "workbench/answers/found.h"

#include "workbench/messages/words.h"

namespace workbench {
namespace {

std::string counted_or_no(std::uint64_t count, std::string_view noun) {
  return count == 0 ? std::string("no ").append(noun) : counted(count, noun);
}

std::string_view scope_of(const Asked& asked) {
  if (asked.is_brave) {
    return asked.has_weak_constraints ? "some optimal answer set" : "some answer set";
  }
  return asked.has_weak_constraints ? "every optimal answer set" : "every answer set";
}

std::string words_of_query(const Found& found, const Asked& asked, const Judgement& judgement) {
  std::string scope(scope_of(asked));
  if (judgement.has_no_answer_set) {
    return std::string("the program has no answer set, so the query ") +
           (asked.is_ground ? "is false" : "has no rows");
  }
  if (judgement.end == SearchEnd::kCut && found.rows == 0 && !judgement.holds.value_or(false))
    return "the query is not answered yet";
  if (!asked.is_ground) {
    if (found.rows == 0) return "no rows";
    return counted(found.rows, "row") + ", true in " + scope;
  }
  if (judgement.holds.value_or(false)) return "true in " + scope;
  return asked.is_brave ? "true in no answer set" : "not true in " + scope;
}

std::string words_of_difference(const Found& found) {
  if (!found.different || found.answer_sets < 2) return {};
  if (*found.different == 1) return ", all alike in what is shown";
  const bool are_all = *found.different == found.answer_sets;
  return ", " + (are_all ? std::string("all") : std::to_string(*found.different)) +
         " of them different in what is shown";
}

std::string words_of_best(const Found& found, const Judgement& judgement) {
  if (found.answer_sets == 0) return "no answer set";
  if (judgement.is_unproven) {
    return "the best answer set so far has " + cost_in_words(found.costs) +
           ", not proven to be optimal";
  }
  return counted(found.answer_sets, "optimal answer set") + words_of_difference(found) + ", " +
         cost_in_words(found.costs);
}

}    // namespace

std::string cost_in_words(const std::vector<std::pair<std::string, std::string>>& costs) {
  std::string text = "cost ";
  const char* separator = "";
  for (const auto& [weight, level] : costs) {
    (((text += separator) += weight) += " at level ") += level;
    separator = ", ";
  }
  return text;
}

std::uint64_t number_of_answers(const Found& found, const Asked& asked) {
  return asked.has_query ? found.rows : found.different.value_or(found.answer_sets);
}

std::string in_words(const Found& found, const Asked& asked, const Judgement& judgement) {
  std::string text = asked.has_query              ? words_of_query(found, asked, judgement)
                     : asked.has_weak_constraints ? words_of_best(found, judgement)
                                                  : counted_or_no(found.answer_sets, "answer set") +
                                                        words_of_difference(found);
  if (judgement.end == SearchEnd::kCut && !judgement.is_unproven && !asked.has_query) {
    text += " so far";
  }
  const bool has_more = judgement.end != SearchEnd::kAll && !judgement.is_unproven;
  const bool is_answered = asked.has_query && (asked.is_ground || found.rows == 0);
  if (has_more && !is_answered) text += ", there may be more";
  return text;
}

}    // namespace workbench
