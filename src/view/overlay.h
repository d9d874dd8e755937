#pragma once
#include <functional>

#include "objects/draw_context.h"

// What lies over the entries of the map window. The redraw knows only this list: who has something to show there hangs
// it in, mostly by a constant beside the drawing procedure, and it stays for the life of that object.

// From below to above.
enum class OverlayLayer { Net, Mark, Preview, Hand };

class Overlay {
 public:
  // `draw` is called in every redraw, after the entries were painted and AfterRedraw was heard; it draws nothing while
  // there is nothing to show. Positions are window pixels, the context's view turns map pixels into them.
  Overlay(OverlayLayer layer, std::function<void(DrawContext&)> draw);
  ~Overlay();
  Overlay(const Overlay&) = delete;
  Overlay& operator=(const Overlay&) = delete;

 private:
  friend void Draw_Overlays(DrawContext& context);
  OverlayLayer layer;
  std::function<void(DrawContext&)> draw;
};

// All of them, layer by layer.
void Draw_Overlays(DrawContext& context);
