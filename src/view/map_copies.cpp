#include "view/map_copies.h"

#include <array>
#include <map>
#include <memory>
#include <utility>

#include "platform/error.h"
#include "platform/for_now.h"
#include "state/events.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "state/on_reset.h"
#include "view/reduce.h"

namespace {

constexpr qint64 copiesLimit = 512LL << 20;  // bytes of reduced copies kept for the way back
constexpr qint64 mostAhead = 256LL << 20;    // bytes of copies made before somebody has asked for them
constexpr qint64 longWork = 20'000'000;      // pixels of the scan: the user sees that it takes its time

using Copy = std::shared_ptr<ReducedPicture>;
std::map<float, Copy> copies;
std::array<Copy, 4> clips;  // by level; without one it is the scan
int builds = 0;
bool isNew = false;  // the zoom has not been looked at yet
const OnReset fresh(copies, clips, builds, isNew);

void Forget_Distant_Copies(float wanted) {
  qint64 bytes = 0;
  for (const auto& [factor, copy] : copies) bytes += copy->Image().sizeInBytes();
  for (auto it = copies.begin(); it != copies.end() && bytes > copiesLimit;) {
    const bool chain = it->first == 2.0F || it->first == 4.0F;
    if (chain || it->first == wanted) {
      ++it;
      continue;
    }
    bytes -= it->second->Image().sizeInBytes();
    it = copies.erase(it);
  }
}

// The scan reduced by `factor` in all; from the half-size chain where that is nearer.
const Copy& Copy_Of(float factor) {
  if (const auto found = copies.find(factor); found != copies.end()) return found->second;
  const float base = factor > 4.0F ? 4.0F : factor > 2.0F ? 2.0F : 1.0F;
  const auto step = static_cast<double>(factor / base);
  Copy copy = base == 1.0F ? std::make_shared<ReducedPicture>(Map.MapClip[0].image, step)
                           : std::make_shared<ReducedPicture>(Copy_Of(base), step);
  ++builds;
  isNew = true;
  const Copy& kept = copies[factor] = std::move(copy);
  Forget_Distant_Copies(factor);
  return kept;
}

void Use_Clip(int level, const Copy& copy, float factor) {
  MapClipState& clip = Map.MapClip[static_cast<size_t>(level)];
  clips[static_cast<size_t>(level)] = copy;
  clip.image = copy->Image();
  clip.factor = factor;
  Map.ClipLevel = level;
}

}  // namespace

void Choose_Clip() {
  const float zoom = Map.Zoom;
  if (zoom <= 1.0F) {
    Map.ClipLevel = 0;
    return;
  }
  if (zoom < 2.0F) return Use_Clip(1, Copy_Of(zoom), zoom);
  Use_Clip(1, Copy_Of(2.0F), 1.0F);
  if (zoom == 2.0F) return;
  if (zoom < 4.0F) return Use_Clip(2, Copy_Of(zoom), zoom / 2);
  Use_Clip(2, Copy_Of(4.0F), 1.0F);
  if (zoom > 4.0F) Use_Clip(3, Copy_Of(zoom), zoom / 4);
}

void Prepare_Clip(const QRect& part) {
  const Copy& copy = clips[static_cast<size_t>(Map.ClipLevel)];
  if (Map.ClipLevel == 0 || !copy) return;
  const bool first = std::exchange(isNew, false);
  if (!first && copy->Work_For(part) < longWork) return copy->Prepare(part);
  // The status bar alone: windows that were synced now would ask for a picture of a zoom that is not there yet.
  const ForNow notice(InfoBar.Zoom, QStringLiteral("Karte wird gezoomt. Bitte warten."));
  events.InfoBarChanged.Emit();
  copy->Prepare(part);
}

bool Prepare_Ahead(int milliseconds) {
  const QImage& scan = Map.MapClip[0].image;
  const qint64 pixels = qint64{scan.width()} * scan.height();
  const qint64 bytes = pixels + pixels / 4;  // 32-bit: of the half and the quarter
  if (pixels < longWork || bytes > mostAhead) return false;
  try {
    const ForNow asked(isNew, isNew);  // no zoom was chosen
    return Copy_Of(4.0F)->Prepare_Some(QDeadlineTimer(milliseconds));
  } catch (const Error&) {
    return false;  // the memory is not there
  }
}

void Forget_Copies() {
  copies.clear();
  clips = {};
  builds = 0;
}

int Clip_Builds() { return builds; }
