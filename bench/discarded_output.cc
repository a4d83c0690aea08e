#include "discarded_output.h"

#include "driver/diagnostics.h"

namespace zarel {

std::streamsize DiscardedOutput::Sink::xsputn(const char* /*text*/, std::streamsize count) {
  return count;
}

DiscardedOutput::DiscardedOutput() {
  report_state().output = &stream_;
  report_state().errors = &stream_;
}

DiscardedOutput::~DiscardedOutput() {
  reset_report_state();
}

}    // namespace zarel
