// dl_fuzz.cc - dl's scanner, grammar and translation.

#include "dl_translation.h"
#include "harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Input input = fuzz::read_input(data, size);
  fuzz::mistake_of_dl(input.words, input.text);
  return 0;
}
