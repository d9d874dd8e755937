#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <ctime>

#include "bench_net_map.h"
#include "import/gps_file.h"
#include "import/gps_import.h"
#include "platform/files.h"
#include "platform/geodesy.h"

// Waypoints and tracks from their files to the rows on the disk: read, transformed into the map's net, compared with
// what is there, written in one transaction.

namespace {

constexpr int count = 100'000;
constexpr double west = 10.985, south = 49.732;  // of the map's lower left part, degrees

double Now() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

struct Place {
  double longitude, latitude;
};
// All over the map, and along a way that winds through it.
Place Scattered(int i) { return {west + 0.04 + (i * 7919 % 50000) * 1e-6, south + 0.005 + (i * 4729 % 20000) * 1e-6}; }
Place Along(int i) {
  const double t = i * 1e-5;
  return {west + 0.04 + 0.05 * t, south + 0.015 + 0.008 * std::sin(t * 60)};
}

QByteArray Packed(char side, double degrees, int digits) {
  const int whole = static_cast<int>(degrees);
  return side + QByteArray::number(whole).rightJustified(digits, '0') +
         QByteArray::number((degrees - whole) * 60, 'f', 5).rightJustified(8, '0');
}

QByteArray Pcx5_Waypoints() {
  QByteArray text =
      "I  PCX5 2.09\r\nM  G WGS 84               121 +0.0\r\nU  LAT LON DM\r\nH  IDNT   LATITUDE    LONGITUDE    DATE  "
      "    TIME     ALT   DESCRIPTION                              PROXIMITY     SYMBOL ;waypts\r\n";
  for (int i = 0; i < count; ++i) {
    const Place at = Scattered(i);
    text += "W  " + QByteArray::number(i).leftJustified(6) + ' ' + Packed('N', at.latitude, 2) + ' ' +
            Packed('E', at.longitude, 3) + " 14-MAY-26 08:00:00   433 " +
            QByteArray("Große Höckerschrecke").leftJustified(42) + "0.000000e+00  00018\r\n";
  }
  return text;
}

QByteArray Gpx(bool track) {
  QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\">\n";
  if (track) text += "<trk><name>Weg</name><trkseg>\n";
  for (int i = 0; i < count; ++i) {
    const Place at = track ? Along(i) : Scattered(i);
    text += QByteArray(track ? "<trkpt" : "<wpt") + " lat=\"" + QByteArray::number(at.latitude, 'f', 7) + "\" lon=\"" +
            QByteArray::number(at.longitude, 'f', 7) + "\"><ele>433.0</ele><time>2026-05-14T08:00:00Z</time>";
    text += track ? QByteArray("</trkpt>\n")
                  : "<name>Höckerschrecke " + QByteArray::number(i) + "</name><desc>Ort</desc><sym>Flag</sym></wpt>\n";
  }
  if (track) text += "</trkseg></trk>\n";
  return text + "</gpx>\n";
}

void Import(benchmark::State& state, const QByteArray& bytes, const char* name, GpsContent content) {
  const NetBenchMap map;
  const QString path = map.folder.filePath(QLatin1String(name));
  Replace_File(path, bytes);
  double best[3] = {1e9, 1e9, 1e9};  // all, of which reading, and planning
  for (auto _ : state) {
    frmMDI.MapOpen = false;  // the redraw is measured elsewhere
    const double start = Now();
    const GpsFile file = Read_Gps_File(path);
    const double read = Now();
    const GpsPlan plan = Plan_Gps(file, content, PlacingWay::Transformed);
    const double planned = Now();
    const GpsResult result = Import_Gps(Gps_Units(file, plan, {}), content, {});
    const double end = Now();
    best[0] = std::min(best[0], end - start);
    best[1] = std::min(best[1], read - start);
    best[2] = std::min(best[2], planned - read);
    if (content == GpsContent::Waypoints ? result.imported != count : result.imported != 1)
      qFatal("%d imported, %d usable", result.imported, plan.counts.ok);
    dbEntries->Execute(QStringLiteral("DELETE FROM MapData WHERE Typ IN (1, 4)"));
    dbEntries->Checkpoint();
    rsEntries->Requery();
  }
  frmMDI.MapOpen = true;
  state.counters["cpu_ms"] = best[0];
  state.counters["read_ms"] = best[1];
  state.counters["plan_ms"] = best[2];
}
BENCHMARK_CAPTURE(Import, pcx5_waypoints, Pcx5_Waypoints(), "a.wpt", GpsContent::Waypoints)
    ->Iterations(4)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Import, gpx_waypoints, Gpx(false), "a.gpx", GpsContent::Waypoints)
    ->Iterations(4)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Import, gpx_track, Gpx(true), "t.gpx", GpsContent::Tracks)
    ->Iterations(4)
    ->Unit(benchmark::kMillisecond);

void Transform(benchmark::State& state) {
  using Kind = ReferenceSystem::Kind;
  const ReferenceSystem wgs{Kind::Geographic, Datum::Wgs84, 0};
  const Transformation way(wgs, state.range(0) == 0 ? ReferenceSystem{Kind::Utm, Datum::Wgs84, 32}
                                                    : ReferenceSystem{Kind::GaussKrueger, Datum::Dhdn, 4});
  std::vector<QPointF> start;
  for (int i = 0; i < count; ++i) start.emplace_back(Scattered(i).longitude, Scattered(i).latitude);
  double best = 1e9;
  for (auto _ : state) {
    auto points = start;
    const double before = Now();
    way.Transform(points);
    best = std::min(best, Now() - before);
    benchmark::DoNotOptimize(points.data());
  }
  state.counters["cpu_ms"] = best;
}
BENCHMARK(Transform)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
