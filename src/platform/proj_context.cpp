#include "platform/proj_context.h"

ProjContext Proj_Context() {
  thread_local const ProjContext context = [] {
    ProjContext made(proj_context_create(), proj_context_destroy);
    proj_log_level(made.get(), PJ_LOG_NONE);
    return made;
  }();
  return context;
}
