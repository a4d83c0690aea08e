#pragma once
// token_scanner.h - the input scanner: its generated part's state, freed with it.

#include "parser/scanner_actions.h"

namespace zarel {

// What reads the tokens of one input: yylex takes its state.
class scannerT {
 public:
  // Ends the run when there is no memory for it.
  explicit scannerT(ScannerActions& actions);
  ~scannerT();
  scannerT(const scannerT&) = delete;
  scannerT& operator=(const scannerT&) = delete;
  void* state() const { return state_; }

 private:
  void* state_ = nullptr;
};

}    // namespace zarel
