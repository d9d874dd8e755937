#include "start/dialog_hooks.h"

DialogHooks dialogHooks;
