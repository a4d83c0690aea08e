#pragma once
// fewer.h - how often the longest tests repeat what they do: under a sanitizer, which looks at each
// step and is slow, few are as good as many.

namespace zarel {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
constexpr bool kIsSanitized = __has_feature(address_sanitizer);
#else
constexpr bool kIsSanitized = false;
#endif

constexpr unsigned usual_or_fewer(unsigned usual, unsigned fewer) {
  return kIsSanitized ? fewer : usual;
}

}    // namespace zarel
