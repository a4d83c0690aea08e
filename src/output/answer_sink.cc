#include "output/answer_sink.h"

#include "output/frame_map.h"

namespace zarel {

void AnswerSink::objects(const FrameMap& frames) {
  frames.report_objects(*this);
}

}    // namespace zarel
