#include "parser/token_scanner.h"

int yylex_init_extra(zarel::ScannerActions* actions, void** scanner);
int yylex_destroy(void* scanner);
extern "C" int yywrap(void* scanner);

namespace zarel {

scannerT::scannerT(ScannerActions& actions) {
  if (yylex_init_extra(&actions, &state_) != 0) scanner_failed("out of dynamic memory");
}

scannerT::~scannerT() {
  yylex_destroy(state_);
}

}    // namespace zarel

// One file is one stream of tokens.
extern "C" int yywrap(void* /*scanner*/) {
  return 1;
}
