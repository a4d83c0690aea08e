#include "dl/explain/explained_answer.h"
