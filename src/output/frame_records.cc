#include "output/frame_records.h"

#include <array>
#include <bit>

#include "output/position_index.h"

namespace zarel {

void FrameRecords::add(const FrameRecord& record) {
  const auto size = [](std::string_view text) { return static_cast<std::uint32_t>(text.size()); };
  const Head head{record.hash, record.attribute, size(record.name), size(record.suffix),
                  record.has_value ? size(record.value) : kNoValue};
  const auto front = std::bit_cast<std::array<char, sizeof head>>(head);
  bytes_.append(front.data(), front.size());
  bytes_.append(record.name).append(record.suffix).append(record.value);
  checked_position(bytes_.size());    // no text of it is larger
}

}    // namespace zarel
