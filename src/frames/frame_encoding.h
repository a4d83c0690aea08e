#pragma once
// frame_encoding.h - one statement of a frame (object, attribute, perhaps a value) as an atom for
// the solver. Its inverse is output/frame_molecules.h; the names that both use are in
// model/generic_encoding.h.

#include <optional>

#include "frames/frame.h"
#include "model/clause.h"

namespace zarel {

// Frame syntax has its own encoding; on in every run that main starts.
bool OptionFramelogic();

// A statement as the encodings take it; subject and name may have "-" in front.
struct FrameStatement {
  bool is_negated;    // under "not"
  NameId subject;
  NameId name;
  std::optional<NameId> value;
  ARROW arrow;
  NameId framespace;
};

// name(framespace, subject, value): the encoding without higher-order names.
Literal relationToLITERALT(const FrameStatement& statement);

// The encoding inside a template definition: the labelled name over subject, framespace, value. (In
// this order.)
Literal relationToTemplateLiteral(const FrameStatement& statement);

// The generic encoding, whose first argument is the relation and whose second is the frame space
// with the frame marker:
//   arrow -1      a_3(valueOf, fFlogic, subject, name)
//   arrows 0 to 5 a_5(valueOf, fFlogic, subject, name, value, the quoted arrow)
//   arrow 6       a_3(instanceOf, fFlogic, subject, name)
//   arrow 7       a_3(subClassOf, fFlogic, subject, name)
// A "-" before subject or name is dropped there and negates the atom strongly; a subclass statement
// looks at the name's only and keeps the subject's. Arrow 8, and every arrow without frame logic,
// gives a_2(name, f, subject) or a_3(name, f, subject, value). The predicate, less a leading "-", is
// recorded with addedAtom.
Literal relationToHigherOrder(const FrameStatement& statement);

}    // namespace zarel
