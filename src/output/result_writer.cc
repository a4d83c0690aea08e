#include "output/result_writer.h"

#include <ostream>

#include "driver/diagnostics.h"

namespace zarel {
namespace {

constexpr std::size_t kLargePiece = 64UL * 1024;

void write(std::string_view text) {
  standard_output().write(text.data(), static_cast<std::streamsize>(text.size()));
}

}    // namespace

void ResultWriter::add(std::string_view item) {
  if (item.size() >= kLargePiece) {    // not worth a copy
    write_out();
    write(item);
    return;
  }
  collected_ += item;
  if (collected_.size() >= kLargePiece) write_out();
}

void ResultWriter::write_out() {
  if (!collected_.empty()) write(collected_);
  collected_.clear();
  standard_output().flush();
}

}    // namespace zarel
