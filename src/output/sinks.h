#pragma once
// sinks.h - the formats in which answers are written. A new one is a file like text_sink.cc, its
// line here, and its row in sinks.cc.

#include <iosfwd>
#include <memory>
#include <string_view>

#include "output/answer_sink.h"

namespace zarel {

struct Run;

// The sink that writes to `out` in the format of this name, as the run's display settings and name
// spaces say; null when there is none. Stream and run outlive it, and settings are made before.
// What cannot be written is dropped: flush() and the stream's state tell.
std::unique_ptr<AnswerSink> make_sink(std::string_view format, std::ostream& out, Run& run);

// "text": as the user writes atoms and frames, each item on a line. Only complete items are
// written, on flush() at the latest.
std::unique_ptr<AnswerSink> make_text_sink(std::ostream& out, Run& run);

}    // namespace zarel
