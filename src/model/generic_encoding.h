#pragma once
// generic_encoding.h - the names that the generic encoding a_N(relation, space, ...) is made of,
// for both of its ends: what writes atoms for the solver, and what reads its answers.

#include <string_view>

namespace zarel {

// A space text that contains this marks a frame statement. The writer puts it behind the frame
// space's own name.
inline constexpr std::string_view kFrameMarker = "Flogic";

// The relations of frame statements: of a subject, an attribute and maybe a value with its quoted
// arrow; of a subject and its class.
inline constexpr std::string_view kValueOf = "valueOf";
inline constexpr std::string_view kInstanceOf = "instanceOf";
inline constexpr std::string_view kSubClassOf = "subClassOf";

// Generic predicates are this followed by their number of arguments without the first, the
// relation.
inline constexpr std::string_view kGenericStem = "a_";
// The predicate of a frame statement without a value.
inline constexpr std::string_view kValuelessPredicate = "a_3";

// The frame space of what names none, and the one whose atoms are never shown.
inline constexpr std::string_view kDefaultSpace = "default";
inline constexpr std::string_view kServiceSpace = "service";

}    // namespace zarel
