#include "model/text.h"
#include "service/api.h"
