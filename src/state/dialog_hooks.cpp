#include "state/dialog_hooks.h"

DialogHooks dialogHooks;
