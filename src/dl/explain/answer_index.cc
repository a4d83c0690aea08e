#include "dl/explain/answer_index.h"
