#pragma once
// proof_check.h - whether a proof holds, looked at step by step.

#include <map>
#include <string>

#include "dl/explain/explained_answer.h"
#include "dl/explain/proof_search.h"

namespace dl_test {

// What is wrong with the proof, which is to prove all of `atoms`, kNoAtom for a body; empty if
// nothing is. Counts its nodes by kind.
std::string fault_of(const dl::Proof& proof, const std::vector<dl::AtomNumber>& atoms,
                     dl::ExplainedAnswer& answer, std::map<dl::ProofKind, std::size_t>& kinds);

}    // namespace dl_test
