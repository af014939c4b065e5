#include "service/api.h"
#include "ui/containers/view_controller.h"  // the request layer knows nothing of screens
