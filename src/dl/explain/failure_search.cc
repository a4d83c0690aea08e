#include "dl/explain/failure_search.h"
