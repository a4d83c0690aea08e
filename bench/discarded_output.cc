#include "discarded_output.h"

namespace zarel {

std::streamsize DiscardedOutput::Sink::xsputn(const char* /*text*/, std::streamsize count) {
  return count;
}

DiscardedOutput::DiscardedOutput() {
  begin_run();
}

void DiscardedOutput::begin_run() {
  scope_.reset();
  run_ = std::make_unique<Run>();
  scope_.emplace(*run_);
  run_->report.output = &stream_;
  run_->report.errors = &stream_;
}

}    // namespace zarel
