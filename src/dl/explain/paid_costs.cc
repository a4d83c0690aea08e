#include "dl/explain/paid_costs.h"
