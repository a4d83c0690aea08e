#include "dl/explain/body_evaluator.h"
