#include "model/json.h"
#include "model/json_document.h"  // nobody else knows how a decoded document lies in memory
