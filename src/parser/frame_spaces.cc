#include "parser/frame_spaces.h"

namespace zarel {

FrameSpaces::FrameSpaces(WrittenTree& tree)
    : tree_(tree),
      default_name_(names().intern("default")),
      currentDefaultNs_(default_name_),
      defaultFrameSpace_(default_name_) {}

void FrameSpaces::start_file() {
  reset();
}

void FrameSpaces::set_default(NameId name) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kDefaultSpace, name);
  fspace_.add(name);
  currentDefaultNs_ = name;
  defaultFrameSpace_ = name;
}

void FrameSpaces::reset_default() {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kDefaultSpace, default_name_);
  reset();
}

void FrameSpaces::reset() {
  currentDefaultNs_ = default_name_;
  defaultFrameSpace_ = default_name_;
}

NameId FrameSpaces::named(NameId name) {
  fspace_.add(name);
  defaultFrameSpace_ = name;
  return name;
}

NameId FrameSpaces::current() {
  defaultFrameSpace_ = currentDefaultNs_;
  return currentDefaultNs_;
}

}    // namespace zarel
