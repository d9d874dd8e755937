#pragma once
#include <QHash>
#include <QPoint>
#include <QSet>
#include <QString>
#include <vector>

// What is on the map before an import: is there an entry of that name, or at that place? By hash, so that neither many
// entries nor many records make it slow.
class PresentEntries {
 public:
  // As near as this in both axes is the same position, map pixels.
  static constexpr int nearBy = 5;

  void Add(const QString& name, QPoint at);  // map pixels
  // Every entry of the open table but the header and plan squares.
  void Add_Map();
  bool Has_Name(const QString& name) const { return names.contains(name.trimmed()); }
  bool Near(QPoint at) const;                       // any entry there?
  bool Near(QPoint at, const QString& name) const;  // an entry of that name there?

 private:
  struct Spot {
    quint64 cell;
    QString name;  // "" for all names
    bool operator==(const Spot&) const = default;
    friend size_t qHash(const Spot& spot, size_t seed) { return qHashMulti(seed, spot.cell, spot.name); }
  };
  using Spots = QHash<Spot, std::vector<QPoint>>;  // the places of a cell, each once
  bool Found(QPoint at, const QString& name) const;

  QSet<QString> names;
  Spots spots;
};
