#include "windows/common/tool_place.h"

#include <QApplication>
#include <QDialog>
#include <QHash>
#include <QScreen>
#include <vector>

#include "platform/error.h"
#include "platform/files.h"
#include "state/map_state.h"
#include "store/file_names.h"

namespace {

constexpr QSize frameRoom(4, 32);  // of a window that has none yet
constexpr int movedByUser = 48;    // pixels: less may be the frame the desktop has put round it
const char *const placedAt = "placedAt", *const askedFor = "askedFor";

// Places -------------------------------------------------------------------------------------------------------------

QString Places_File() { return Program_File(QStringLiteral("Fenster.ini")); }

QString Name_Of(const QWidget& window) { return QString::fromLatin1(window.metaObject()->className()); }

// One line a window, "FrmMass 120 300".
QHash<QString, QPoint> Read_Places() {
  QHash<QString, QPoint> places;
  try {
    if (!File_Exists(Places_File())) return places;
    for (const QString& line : Read_Lines(Places_File())) {
      const QStringList parts = line.split(u' ', Qt::SkipEmptyParts);
      if (parts.size() == 3) places[parts[0]] = {parts[1].toInt(), parts[2].toInt()};
    }
  } catch (const Error&) {
    // Then every window stands where it hides least.
  }
  return places;
}

void Write_Place(const QString& name, QPoint place) {
  auto places = Read_Places();
  places[name] = place;
  QStringList lines;
  for (auto it = places.cbegin(); it != places.cend(); ++it)
    lines << QStringLiteral("%1 %2 %3").arg(it.key()).arg(it->x()).arg(it->y());
  lines.sort();
  try {
    Write_Lines(Places_File(), lines);
  } catch (const Error&) {
    // No reason for a message: only the place is forgotten.
  }
}

// Room ---------------------------------------------------------------------------------------------------------------

QRect Screen_Around(const QWidget& window, QPoint at) {
  const QScreen* screen = QGuiApplication::screenAt(at);
  return (screen ? screen : window.screen())->availableGeometry();
}

QSize Outer_Size(const QWidget& window) {
  const QSize frame = window.frameGeometry().size();
  return frame == window.size() ? frame + frameRoom : frame;
}

QRect On_Screen(QRect place, const QRect& screen) {
  place.moveLeft(std::max(screen.left(), std::min(place.left(), screen.right() + 1 - place.width())));
  place.moveTop(std::max(screen.top(), std::min(place.top(), screen.bottom() + 1 - place.height())));
  return place;
}

// What the widget shows, on the screen; of the map's window only its picture.
QRect Shown_Part(const QWidget& asked) {
  QRect part = asked.rect();
  if (asked.objectName() == QLatin1String("pic")) part &= QRect(0, 0, Map.ViewWidth, Map.ViewHeight);
  return {asked.mapToGlobal(part.topLeft()), part.size()};
}

std::vector<QRect> Other_Windows(const QWidget& window) {
  std::vector<QRect> others;
  for (const QWidget* other : QApplication::topLevelWidgets())
    if (other != &window && other->isVisible() && qobject_cast<const QDialog*>(other))
      others.push_back(other->frameGeometry());
  return others;
}

// Corners at which the window touches the rectangle from outside, the most usual first.
void Add_Neighbours(std::vector<QPoint>& corners, const QRect& of, QSize size) {
  const int right = of.right() + 1, below = of.bottom() + 1;
  corners.insert(corners.end(), {{right, of.top()},
                                 {of.left() - size.width(), of.top()},
                                 {right - size.width(), below},
                                 {of.left(), below},
                                 {right - size.width(), of.top() - size.height()}});
}

qint64 Hidden(const QRect& place, const QRect& of) {
  const QRect common = place & of;
  return common.isEmpty() ? 0 : static_cast<qint64>(common.width()) * common.height();
}

}  // namespace

static void Fit_Size(QWidget& window, const QRect& screen) {
  const QSize most = screen.size() - frameRoom;
  if (window.width() > most.width() || window.height() > most.height()) window.resize(window.size().boundedTo(most));
}

void Keep_On_Screen(QWidget& window) {
  const QRect screen = Screen_Around(window, window.geometry().center());
  Fit_Size(window, screen);
  const QRect place = On_Screen({window.pos(), Outer_Size(window)}, screen);
  if (place.topLeft() != window.pos()) window.move(place.topLeft());
  if (window.property(placedAt).isValid()) window.setProperty(placedAt, window.pos());
}

void Place_Beside(QWidget& window, const QRect& asked) {
  const QRect screen = Screen_Around(window, asked.center());
  Fit_Size(window, screen);
  const QSize size = Outer_Size(window);
  const auto others = Other_Windows(window);
  std::vector<QPoint> corners;
  Add_Neighbours(corners, asked, size);
  for (const QRect& other : others) Add_Neighbours(corners, other, size);
  for (const QPoint corner : {screen.bottomRight(), screen.topRight(), screen.bottomLeft(), screen.topLeft()})
    corners.push_back(corner);
  QRect best;
  qint64 least = -1;
  for (const QPoint corner : corners) {
    const QRect place = On_Screen({corner, size}, screen);
    qint64 hidden = Hidden(place, asked);
    for (const QRect& other : others) hidden += Hidden(place, other);
    if (least >= 0 && hidden >= least) continue;
    least = hidden;
    best = place;
  }
  window.move(best.topLeft());
}

void Works_Beside(QDialog& dialog, QWidget* asked) {
  if (!asked && dialog.parentWidget())
    asked = dialog.parentWidget()->window()->findChild<QWidget*>(QStringLiteral("pic"));
  dialog.setProperty(askedFor, QVariant::fromValue(asked));
}

void Place_Tool_Window(QDialog& dialog) {
  if (!dialog.parentWidget()) return;
  if (dialog.windowModality() == Qt::NonModal && !dialog.property(askedFor).isValid()) Works_Beside(dialog);
  const QVariant beside = dialog.property(askedFor);
  if (!beside.isValid()) return;
  const auto* asked = beside.value<QWidget*>();
  const auto places = Read_Places();
  if (const auto left = places.constFind(Name_Of(dialog)); left != places.constEnd())
    dialog.move(On_Screen({*left, Outer_Size(dialog)}, Screen_Around(dialog, *left)).topLeft());
  else if (asked && asked->isVisible())
    Place_Beside(dialog, Shown_Part(*asked));
  else
    return;
  dialog.setProperty(placedAt, dialog.pos());
}

void Remember_Place(const QDialog& dialog) {
  const QVariant placed = dialog.property(placedAt);
  if (!placed.isValid() || (dialog.pos() - placed.toPoint()).manhattanLength() < movedByUser) return;
  Write_Place(Name_Of(dialog), dialog.pos());
}
