#include "dl/explain/relaxation.h"
