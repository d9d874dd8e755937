#include "view/overlay.h"

#include <utility>
#include <vector>

namespace {

// Made by the first overlay, so that it is there before and goes after all of them.
std::vector<const Overlay*>& Hung() {
  static std::vector<const Overlay*> overlays;
  return overlays;
}

}  // namespace

Overlay::Overlay(OverlayLayer where, std::function<void(DrawContext&)> how) : layer(where), draw(std::move(how)) {
  auto& overlays = Hung();
  auto at = overlays.begin();
  while (at != overlays.end() && (*at)->layer <= layer) ++at;
  overlays.insert(at, this);
}

Overlay::~Overlay() { std::erase(Hung(), this); }

void Draw_Overlays(DrawContext& context) {
  for (const Overlay* overlay : Hung()) overlay->draw(context);
}
