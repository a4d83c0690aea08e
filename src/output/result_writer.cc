#include "output/result_writer.h"

#include <ostream>

namespace zarel {
namespace {

constexpr std::size_t kLargePiece = 64UL * 1024;

}    // namespace

void ResultWriter::write(std::string_view text) {
  out_.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void ResultWriter::add(std::string_view item) {
  if (item.size() >= kLargePiece) {    // not worth a copy
    write_out();
    write(item);
    has_written_ = true;
    return;
  }
  collected_ += item;
  if (collected_.size() >= kLargePiece) write_out();
}

bool ResultWriter::write_out() {
  if (!collected_.empty()) {
    write(collected_);
    collected_.clear();
    has_written_ = true;
  }
  out_.flush();
  return !has_written_ || out_.good();
}

}    // namespace zarel
