#pragma once
// told_conflicts.h - conflicts on their way from the search to the form that writes them.

#include <cstddef>
#include <vector>

#include "dl/explain/relaxation.h"
#include "workbench/why/teller.h"
#include "workbench/why/why_form.h"

namespace workbench {

// Tells conflicts as they are found. With a demand nothing is said of rules that could be given up.
class ToldConflicts : public dl::ConflictReceiver {
 public:
  ToldConflicts(Teller& teller, WhyForm& form, bool has_demand)
      : teller_(teller), form_(form), has_demand_(has_demand) {}

  void kind(dl::ConflictKind kind) override {
    kind_ = kind;
    switch (kind) {
      case dl::ConflictKind::kNone:
        return form_.outcome(dl::ToldOutcome::kNone, has_demand_);
      case dl::ConflictKind::kConstraints:
        return form_.outcome(dl::ToldOutcome::kConstraints, has_demand_);
      case dl::ConflictKind::kRules:
        return form_.outcome(dl::ToldOutcome::kRules, has_demand_);
      case dl::ConflictKind::kUnknown:
        return form_.outcome(dl::ToldOutcome::kUnknown, has_demand_);
    }
  }
  void give_up(const dl::ConstraintSet& lines, bool is_proven) override {
    form_.give_up(teller_.lines(lines, is_proven), has_demand_);
  }
  void conflict(const dl::ConstraintSet& lines, bool is_proven) override {
    form_.conflict(teller_.lines(lines, is_proven));
  }
  void give_up_instances(const std::vector<dl::ConstraintInstance>& instances,
                         bool is_proven) override {
    form_.give_up_instances(teller_.instances(instances, is_proven));
  }
  void instances(std::size_t conflict, const std::vector<dl::ConstraintInstance>& instances,
                 bool is_proven) override {
    form_.conflict_instances(conflict, teller_.instances(instances, is_proven));
  }
  void rules(const std::vector<dl::StatementNumber>& rules, bool is_proven) override {
    if (!has_demand_) form_.rules(teller_.lines(rules, is_proven));
  }

  dl::ConflictKind kind() const { return kind_; }

 private:
  Teller& teller_;
  WhyForm& form_;
  const bool has_demand_;
  dl::ConflictKind kind_ = dl::ConflictKind::kUnknown;
};

}    // namespace workbench
