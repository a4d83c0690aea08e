#pragma once
// tables.h - all process-wide tables of the model at once.

namespace zarel {

// Empties every table and list of the model and registers the builtins anew: what a run starts
// with. Every test that touches a table starts with it.
void reset_tables();

}    // namespace zarel
