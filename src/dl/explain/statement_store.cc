#include "dl/explain/statement_store.h"
