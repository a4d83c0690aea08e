#include "model/tables.h"

#include "model/generic_atoms.h"
#include "model/name_table.h"
#include "model/names.h"
#include "model/namespaces.h"
#include "model/predicate_table.h"
#include "model/program.h"
#include "model/program_storage.h"
#include "model/term.h"

namespace zarel {

void reset_tables() {
  reset_program();    // before the storage that its clauses stand in
  reset_predicates();
  reset_generic_atoms();
  reset_term_tables();
  reset_namespaces();
  cont() = 0;
  names().clear();
  program_storage().clear();
  register_builtins();
}

}    // namespace zarel
