#pragma once
#include <QPointF>
#include <QString>
#include <vector>

// What is measured on a map: places of its printed net.

enum class NetKind { Utm, GaussKrueger, Kilometres, DegreesGms, DegreesDec };

inline bool Is_Geographic(NetKind kind) { return kind == NetKind::DegreesGms || kind == NetKind::DegreesDec; }
// One scale and one turn; all others are traced line by line.
inline bool Is_Metric(NetKind kind) { return kind == NetKind::Utm || kind == NetKind::GaussKrueger; }

struct ControlPoint {
  QPointF pixel;  // of the map; whole numbers are the middle of a pixel
  QPointF place;  // Rechtswert and Hochwert in metres (also where the net counts kilometres), or degrees
  bool used = true;
  bool operator==(const ControlPoint&) const = default;
};
using ControlPoints = std::vector<ControlPoint>;

struct NetDescription {
  NetKind kind = NetKind::Utm;
  QString zone = QStringLiteral("32U");  // "32U", "4"; degrees have none
  QString datum = QStringLiteral("WGS-84");
  double spacing = 1000;  // between lines of the net: metres, or degrees
  bool operator==(const NetDescription&) const = default;
};

// The place as the window and the messages write it: "R 646 000  H 5 512 000", "11°01'00,00¨ 49°46'00,00¨".
QString Place_Text(NetKind kind, QPointF place);
// Metres between two places; on the sphere where they are degrees.
double Metres_Between(NetKind kind, QPointF a, QPointF b);
