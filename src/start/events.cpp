#include "start/events.h"

Events events;
