#pragma once
// reading_scope.h - the work at another construct for a while.

#include <utility>

#include "model/report.h"

namespace zarel {

// What is reported and made until the scope ends stands at the place, which has to last as long;
// null: at the work's span.
class ReadingScope {
 public:
  ReadingScope(Work& work, const SourceRange* place)
      : work_(work), before_(std::exchange(work.reading, place)) {}
  ~ReadingScope() { work_.reading = before_; }
  ReadingScope(const ReadingScope&) = delete;
  ReadingScope& operator=(const ReadingScope&) = delete;

 private:
  Work& work_;
  const SourceRange* before_;
};

}    // namespace zarel
