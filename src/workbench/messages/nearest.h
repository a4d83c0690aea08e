#pragma once
// nearest.h - the name that was probably meant.

#include <span>
#include <string_view>

namespace workbench {

// The name that fewest slips make a word of: a letter too many, too few, another, or two exchanged.
// Empty when none is near: up to one slip in a word of four letters, two in longer ones, three from
// ten letters on. Among equals the first. Takes time linear in the names' lengths.
std::string_view nearest(std::string_view word, std::span<const std::string_view> names);

}    // namespace workbench
