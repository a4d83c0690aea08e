#pragma once
// fresh_run.h - a run of a test's own, as the current one.

#include <memory>
#include <optional>

#include "model/run.h"

namespace zarel {

class FreshRun {
 public:
  FreshRun() { begin(); }
  ~FreshRun() { scope_.reset(); }
  FreshRun(const FreshRun&) = delete;
  FreshRun& operator=(const FreshRun&) = delete;

  // Another run takes its place.
  void begin(const RunOptions& options = {}) {
    scope_.reset();
    run_ = std::make_unique<Run>(options);
    scope_.emplace(*run_);
  }

 private:
  std::unique_ptr<Run> run_;
  std::optional<Run::Scope> scope_;
};

}    // namespace zarel
