#pragma once
#include <proj.h>

#include <memory>

// What PROJ works in: its database, opened once a thread, and what was looked up there. Opened anew it costs several
// milliseconds at each question. What is made with it is used in the thread that asked, and keeps it alive.
using ProjContext = std::shared_ptr<PJ_CONTEXT>;
// The one of the thread. It writes nothing to the console.
ProjContext Proj_Context();

struct ProjEnd {
  void operator()(PJ* object) const { proj_destroy(object); }
};
using ProjObject = std::unique_ptr<PJ, ProjEnd>;
