#include "service/api.h"
#include "ui/view_controller.h"  // the request layer knows nothing of screens
