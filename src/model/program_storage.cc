#include "model/program_storage.h"

namespace zarel {

ProgramStorage& program_storage() {
  static ProgramStorage storage;
  return storage;
}

}    // namespace zarel
