#pragma once
#include <QGuiApplication>
#include <QTemporaryDir>
#include <cmath>
#include <random>
#include <stdexcept>

#include "edit/table_edit.h"
#include "maps/map_close.h"
#include "maps/map_open.h"
#include "platform/database.h"
#include "platform/message_box.h"
#include "platform/picture.h"
#include "platform/surface.h"
#include "state/global_state.h"
#include "state/map_state.h"
#include "state/mdi_state.h"
#include "store/entry.h"
#include "store/vertex_table.h"
#include "view/redraw.h"
#include "view/view.h"

// Maps with many entries for the measurements.

struct BenchSize {
  int texts = 10'000, areas = 1'000, lines = 200;
  int width = 1600, height = 1000;
};

inline constexpr int areaVertices = 60, lineVertices = 100;

struct BenchShapes {
  struct Text {
    int x, y, vg, hg;
    QString text;
  };
  std::vector<Text> texts;
  std::vector<std::vector<QPoint>> areas, lines;
};

// The same shapes for our own drawing and for the bare one.
inline BenchShapes Make_Shapes(const BenchSize& size) {
  std::mt19937 random(7);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  BenchShapes shapes;
  for (int i = 0; i < size.texts; ++i)
    shapes.texts.push_back(
        {below(size.width - 60), below(size.height - 20), below(15), 14 - below(7), QStringLiteral("Ort %1").arg(i)});
  for (int i = 0; i < size.areas; ++i) {
    const int x = 60 + below(size.width - 120), y = 60 + below(size.height - 120);
    auto& area = shapes.areas.emplace_back();
    for (int k = 0; k < areaVertices; ++k) {
      const double angle = k * 6.2831853 / areaVertices, radius = 25 + below(25);
      area.emplace_back(x + static_cast<int>(radius * std::cos(angle)), y + static_cast<int>(radius * std::sin(angle)));
    }
  }
  for (int i = 0; i < size.lines; ++i) {
    int x = below(size.width - 420), y = 50 + below(size.height - 100);
    auto& line = shapes.lines.emplace_back();
    for (int k = 0; k < lineVertices; ++k) line.emplace_back(x += 4, y += below(9) - 4);
  }
  return shapes;
}

class BenchMap {
 public:
  explicit BenchMap(const BenchSize& size, int pictureWidth = 0, int pictureHeight = 0) : shapes(Make_Shapes(size)) {
    Reset_Global_State();
    Set_Message_Handler(
        [](const MsgRequest& request) -> MsgAnswer { throw std::runtime_error(request.text.toStdString()); });
    ProgramFolder = folder.path();
    auto base = Workspace::CreateDatabase(folder.filePath(QStringLiteral("MUSTER.MDB")));
    Make_Template(*base);
    base->Close();
    QImage picture(pictureWidth > 0 ? pictureWidth : size.width, pictureHeight > 0 ? pictureHeight : size.height,
                   QImage::Format_Indexed8);
    picture.setColorTable({qRgb(255, 255, 255), qRgb(220, 230, 210)});
    picture.fill(0);
    path = folder.filePath(QStringLiteral("Karte.bmp"));
    Save_Picture(picture, path);
    Map.ScaleWidth = frmMDI.InnerWidth = 1600;
    Map.ScaleHeight = frmMDI.InnerHeight = 1000;
    Open_Map(path);
    Table_On_Off(QStringLiteral("Off"));  // the whole window is the map's
    Map.ScaleWidth = 1600;
    Map.ScaleHeight = 1000;
    Layout_Map();
    Fill();
    Map_Redraw();
  }
  ~BenchMap() { Close_Map(); }

  BenchShapes shapes;
  QTemporaryDir folder;
  QString path;

 private:
  void Fill() const {
    dbEntries->BeginTrans();
    EntryRow row;
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 8;
    row.RA = -1;
    const auto polygons = [&row](const std::vector<std::vector<QPoint>>& all, const QString& kind, int style) {
      for (size_t i = 0; i < all.size(); ++i) {
        row.ID = kind + QString::number(i);
        row.Groesse = -8;
        row.Typ = static_cast<int>(EntryKind::Polygon);
        row.VG = static_cast<int>(i % 15);
        row.HG = 10;
        row.Xline = 1;
        row.Yline = style;
        Create_Vertex_Table(row.ID);
        Write_Vertices(row.ID, all[i]);
        Append_Entry(row);
      }
    };
    polygons(shapes.areas, QStringLiteral("Flaeche"), 1);
    polygons(shapes.lines, QStringLiteral("Linie"), 0);
    row = {};
    row.Schrift = QStringLiteral("Arial");
    row.Groesse = 8;
    row.RA = -1;
    row.ID = QStringLiteral("Text");
    for (const auto& text : shapes.texts) {
      row.Eintrag = text.text;
      row.Xmap = text.x;
      row.Ymap = text.y;
      row.VG = text.vg;
      row.HG = text.hg;
      Append_Entry(row);
    }
    dbEntries->CommitTrans();
  }
};
