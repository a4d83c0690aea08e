#include "dl/explain/ground_terms.h"
