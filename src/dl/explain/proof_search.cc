#include "dl/explain/proof_search.h"
