#include "workbench/answers/answer_stages.h"

#include <utility>

#include "workbench/answers/answer_counter.h"
#include "workbench/answers/answer_filter.h"
#include "workbench/answers/answer_limit.h"
#include "workbench/answers/answer_projection.h"
#include "workbench/answers/answer_sorter.h"
#include "workbench/answers/stated_ranges.h"

namespace workbench {

template <typename Stage, typename... Arguments>
void AnswerStages::put_in_front(Arguments&&... arguments) {
  stages_.push_back(std::make_unique<Stage>(*first_, std::forward<Arguments>(arguments)...));
  first_ = stages_.back().get();
}

// The last stage first.
AnswerStages::AnswerStages(AnswerConsumer& last, const AnswerOptions& options, Found& found)
    : first_(&last) {
  if (options.sorts) put_in_front<AnswerSorter>();
  if (options.shown_sets) put_in_front<AnswerLimit>(*options.shown_sets);
  if (options.projects) put_in_front<AnswerProjection>(found, options.different_sets);
  put_in_front<AnswerFilter>(options.filters);
  if (!options.hidden_ranges.empty()) put_in_front<StatedRanges>(options.hidden_ranges);
  put_in_front<AnswerCounter>(found);
}

}    // namespace workbench
