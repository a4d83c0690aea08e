#include "dl/explain/single_search.h"
