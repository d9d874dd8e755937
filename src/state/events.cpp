#include "state/events.h"

Events events;
