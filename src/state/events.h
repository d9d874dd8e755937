#pragma once
#include <functional>
#include <utility>
#include <vector>

#include <QPoint>
#include <QString>

// Events: how a lower floor is heard above. Emitting calls every listener at once, in the same call.
template <typename... Args>
class Event {
 public:
  using Listener = std::function<void(Args...)>;
  // Returns a number for Disconnect; none is given twice, also not after the events were made anew.
  int Connect(Listener listener) {
    listeners.emplace_back(++last, std::move(listener));
    return last;
  }
  // Unknown numbers are passed over.
  void Disconnect(int number) {
    std::erase_if(listeners, [number](const auto& entry) { return entry.first == number; });
  }
  void Clear() { listeners.clear(); }
  // Calls all who listen when it begins, in the order of connecting.
  void Emit(Args... args) const {
    const auto copy = listeners;  // a listener may disconnect itself
    for (const auto& [number, listener] : copy) listener(args...);
  }

 private:
  std::vector<std::pair<int, Listener>> listeners;
  inline static int last = 0;
};

// Connects a listener that stays for good, once however often it is called: `number` is the caller's, kept between the
// calls.
template <typename... Args>
void Reconnect(Event<Args...>& event, int& number, typename Event<Args...>::Listener listener) {
  event.Disconnect(number);
  number = event.Connect(std::move(listener));
}

struct Events {
  Event<> RedrawWanted;          // answered by the canvas with Map_Redraw
  Event<> ChangedEntriesWanted;  // the same where nothing but rows of MapData was written since the last redraw
  Event<> BeforeRedraw;          // a redraw begins; the view is the new one, the canvas still the old picture
  Event<> AfterRedraw;           // the entries are painted, hit regions and counts are theirs; the overlays come next
  Event<> MapPainted;            // the canvas image changed: the window shows it
  Event<> TableChanged;          // rows or columns changed, the table was loaded or closed
  Event<> CurrentRowChanged;     // rsEntries stands on another row
  Event<> MapOpened;             // the common open path ended well
  Event<> MapClosed;
  Event<> HandHidden;    // what floats over the map shall be out of sight; the picture stays
  Event<> HandDropped;   // the hand lets go of its entry: what works on it ends
  Event<> StateChanged;  // menus, tool buttons, status bar, captions, layout: the windows show their structs anew
  // Light ones, sent while the mouse moves: nothing else has to be shown anew.
  Event<> InfoBarChanged;         // texts of the status bar alone
  Event<> HandChanged;            // the live controls of the map, the outline of a drag, the pointer's shape
  Event<QPoint> MapClicked;       // left button on the map, in map pixels
  Event<bool> Busy;               // hourglass on, off
  Event<> EndWanted;              // the main window shall close
  Event<> LeftHalfWanted;         // it shall make room beside itself: the left half of the screen
  Event<QString> BackgroundText;  // text on the map window while a map or table is being loaded
  Event<> PopupWanted;            // right click on the map: the popup menu at Map.PopupAt
};
extern Events events;

// Hourglass for the life of the object.
class BusyPointer {
 public:
  BusyPointer() { events.Busy.Emit(true); }
  ~BusyPointer() { events.Busy.Emit(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};
