#pragma once
// frame_translation.h - frames into literals, and into auxiliary rules where one literal cannot say
// it. The rules go straight to CLAUSES,
// as what comes from the frame that the run works on.

#include <vector>

#include "frames/frame.h"
#include "frames/frame_encoding.h"
#include "model/clause.h"

namespace zarel {

// Where a translation stands.
struct FrameContext {
  bool is_higher_order;
  bool is_in_template;
};

enum class FramePosition { kHead = 0, kBody = 1 };

// The literal of one statement, in the encoding for the context.
Literal encoded(const FrameStatement& statement, const FrameContext& context);

// The literals of a frame's statements in order; its own "not" is not looked at. A negated
// attribute with values gives "not aaaN" and the rule aaaN :- its statements.
std::vector<Literal> toLiterals(const FRAME& frame, const FrameContext& context);

// The literals that stand for the frame. In a head: the one statement of an atomic frame, else a
// new auxiliary atom. In a body: the frame's statements, or "not" and a new auxiliary atom for a
// negated frame.
std::vector<Literal> standardize(const FRAME& frame, FramePosition position,
                                 const FrameContext& context);

// A new atom faaN over the frame's variables, with the rules: statement :- faaN, one for each
// statement.
ATOMT newHeadAuxAtom(const FRAME& frame, const FrameContext& context);

// A new atom faaN over the frame's variables, with the rule: faaN :- all statements.
ATOMT newNegationAuxAtom(const FRAME& frame, const FrameContext& context);

}    // namespace zarel
