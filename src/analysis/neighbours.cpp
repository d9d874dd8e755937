#include "analysis/neighbours.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <nanoflann.hpp>

namespace {
constexpr qsizetype nameLength = 29;

// The distinct positions, and the entries at each of them in table order.
struct Places {
  struct Place {
    int x = 0, y = 0, first = 0, count = 0;  // a stretch of `entries`
  };
  std::vector<Place> places;
  std::vector<int> entries;

  explicit Places(std::span<const NeighbourEntry> all) : entries(all.size()) {
    for (size_t i = 0; i < all.size(); ++i) entries[i] = static_cast<int>(i);
    const auto key = [&all](int number) {
      const NeighbourEntry& entry = all[static_cast<size_t>(number)];
      return std::pair(entry.x, entry.y);
    };
    std::sort(entries.begin(), entries.end(),
              [&key](int a, int b) { return std::pair(key(a), a) < std::pair(key(b), b); });
    for (size_t i = 0; i < entries.size(); ++i) {
      const auto [x, y] = key(entries[i]);
      if (places.empty() || places.back().x != x || places.back().y != y)
        places.push_back({x, y, static_cast<int>(i), 0});
      ++places.back().count;
    }
  }

  std::span<const int> At(size_t place) const {
    return std::span(entries).subspan(static_cast<size_t>(places[place].first),
                                      static_cast<size_t>(places[place].count));
  }
  // What the tree asks for.
  size_t kdtree_get_point_count() const { return places.size(); }
  double kdtree_get_pt(size_t place, size_t dimension) const {
    return dimension == 0 ? places[place].x : places[place].y;
  }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

// The best entries so far, ordered by squared distance, then by number. Squared distances of whole pixels are whole
// numbers and exact, so that equal ones are found to be equal.
class Nearest {
 public:
  using DistanceType = double;
  Nearest(const Places& allPlaces, size_t room) : places(allPlaces), capacity(room) { best.reserve(room + 1); }
  void Clear() { best.clear(); }
  const std::vector<std::pair<double, int>>& Best() const { return best; }

  // What the tree asks for. A place as far as the last one may hold an earlier entry: the limit lies above it.
  double worstDist() const {
    return best.size() < capacity ? std::numeric_limits<double>::max() : best.back().first + 0.5;
  }
  size_t size() const { return best.size(); }
  bool full() const { return best.size() == capacity; }
  bool addPoint(double distance, size_t place) {
    for (const int number : places.At(place)) {
      const std::pair candidate(distance, number);
      if (full() && !(candidate < best.back())) break;  // the further ones at this place have larger numbers
      best.insert(std::upper_bound(best.begin(), best.end(), candidate), candidate);
      if (best.size() > capacity) best.pop_back();
    }
    return true;
  }

 private:
  const Places& places;
  size_t capacity;
  std::vector<std::pair<double, int>> best;
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Places>, Places, 2>;
}  // namespace

std::vector<NeighbourEntry> Neighbour_Entries(std::span<const EntryRow> rows) {
  std::vector<NeighbourEntry> entries;
  for (const EntryRow& row : rows) {
    const EntryType type = EntryType::Parse(row.Typ);
    if (type.hidden || row.Typ > 299 || type.base > 5 || type.base == 4) continue;
    const bool atFoot = row.Xline >= 1;
    entries.push_back({row.Eintrag.left(nameLength), atFoot ? row.Xline : row.Xmap, atFoot ? row.Yline : row.Ymap});
  }
  return entries;
}

int Reduced_Neighbours(int entries, int neighbours) { return entries <= neighbours ? entries - 1 : neighbours; }

std::span<const int> Neighbours::Of(int number) const {
  const auto count = static_cast<size_t>(perEntry);
  return std::span(entry).subspan(static_cast<size_t>(number) * count, count);
}

std::span<const double> Neighbours::Distances_Of(int number) const {
  const auto count = static_cast<size_t>(perEntry);
  return std::span(distance).subspan(static_cast<size_t>(number) * count, count);
}

std::optional<Neighbours> Find_Neighbours(std::span<const NeighbourEntry> entries, int perEntry,
                                          const std::function<bool(int)>& step) {
  Neighbours result;
  if (perEntry < 1 || static_cast<size_t>(perEntry) >= entries.size()) return result;
  const auto wanted = static_cast<size_t>(perEntry);
  result.perEntry = perEntry;
  result.entry.resize(entries.size() * wanted);
  result.distance.resize(entries.size() * wanted);
  const Places places(entries);
  Tree tree(2, places, nanoflann::KDTreeSingleIndexAdaptorParams(10));
  // One more than wanted: an entry is the first of its own.
  Nearest nearest(places, wanted + 1);
  int done = 0;
  for (size_t place = 0; place < places.places.size(); ++place) {
    const std::array<double, 2> at = {places.kdtree_get_pt(place, 0), places.kdtree_get_pt(place, 1)};
    nearest.Clear();
    tree.findNeighbors(nearest, at.data(), {});
    for (const int number : places.At(place)) {
      if (step && ++done % 1000 == 0 && !step(done)) return {};
      size_t to = static_cast<size_t>(number) * wanted;
      const size_t end = to + wanted;
      for (const auto& [square, other] : nearest.Best()) {
        if (other == number || to == end) continue;
        result.entry[to] = other;
        result.distance[to++] = std::sqrt(square);
      }
    }
  }
  return result;
}

std::optional<ClarkEvans> Clark_Evans(std::span<const double> nearest, double area, std::optional<double> perimeter) {
  if (nearest.size() < 2 || !(area > 0)) return {};
  ClarkEvans result;
  const auto count = static_cast<double>(nearest.size());
  for (const double distance : nearest) result.observed += distance;
  result.observed /= count;
  const double density = count / area;
  result.expected = 1 / (2 * std::sqrt(density));
  double error = 0.26136 / std::sqrt(count * density);
  if (perimeter) {
    result.expected += (0.0514 + 0.041 / std::sqrt(count)) * *perimeter / count;
    error = std::sqrt(0.0703 * area / (count * count) + 0.037 * *perimeter * std::sqrt(area / std::pow(count, 5)));
  }
  result.index = result.observed / result.expected;
  result.z = (result.observed - result.expected) / error;
  return result;
}

Histogram Histogram_Of(std::span<const double> values) {
  Histogram result;
  if (values.empty()) return result;
  const double largest = *std::max_element(values.begin(), values.end());
  const auto classes = static_cast<size_t>(1 + std::ceil(std::log2(static_cast<double>(values.size()))));
  result.counts.assign(classes, 0);
  result.width = largest > 0 ? largest / static_cast<double>(classes) : 1;
  for (const double value : values) {
    const auto number = static_cast<size_t>(std::max(0.0, value / result.width));
    ++result.counts[std::min(number, classes - 1)];
  }
  return result;
}
