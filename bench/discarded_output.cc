#include "discarded_output.h"

#include "driver/diagnostics.h"

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
  zarel::show_findings(stream_, stream_);
}

}    // namespace zarel
