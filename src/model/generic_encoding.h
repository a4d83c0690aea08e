#pragma once
// generic_encoding.h - the names that the generic encoding a_N(relation, space, ...) is made of,
// for both of its ends: what writes atoms for the solver, and what reads its answers.

#include <string_view>

namespace zarel {

// A space text that contains this marks a frame statement. The writer puts it behind the frame
// space's own name.
inline constexpr std::string_view kFrameMarker = "Flogic";

// The relations of frame statements.
inline constexpr std::string_view kValueOf =
    "valueOf";    // subject, attribute[, value, quoted arrow]
inline constexpr std::string_view kInstanceOf = "instanceOf";    // subject, class
inline constexpr std::string_view kSubClassOf = "subClassOf";    // subject, class

// Generic predicates are this followed by their number of arguments without the first, the
// relation.
inline constexpr std::string_view kGenericStem = "a_";
// The predicate of a frame statement without a value.
inline constexpr std::string_view kValuelessPredicate = "a_3";

inline constexpr std::string_view kDefaultSpace =
    "default";    // the frame space of what names none
inline constexpr std::string_view kServiceSpace = "service";    // atoms in it are never shown

}    // namespace zarel
