#include "dl/explain/answer_text.h"
