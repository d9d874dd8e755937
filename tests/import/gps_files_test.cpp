#include "import/gps_file.h"
#include "import/gps_guest.h"
#include "import/gpx.h"
#include "import/pcx5.h"
#include "workbook/workbook_package.h"

namespace {

using Kind = ReferenceSystem::Kind;

const QString samples = FLURAX_TEST_DATA "/gps/";

const QString dmHead =
    uR"(I  PCX5 2.09
M  G WGS 84               121 +0.000000e+00
U  LAT LON DM
H  IDNT   LATITUDE    LONGITUDE    DATE      TIME     ALT   DESCRIPTION                              PROXIMITY     SYMBOL ;waypts
)"_s;

// "name x y comment", degrees with six decimals.
QString Shown(const GpsWaypoint& point, int decimals = 6) {
  return point.name + u' ' + QString::number(point.place.x, 'f', decimals) + u' ' +
         QString::number(point.place.y, 'f', decimals) + u' ' + point.comment;
}
QStringList Faults(const GpsFile& file) {
  QStringList all;
  for (const GpsFault& fault : file.faults) all << u"%1: %2"_s.arg(fault.line).arg(fault.text);
  return all;
}
QStringList Waypoints(const QString& text, int decimals = 6) {
  QStringList all;
  for (const GpsWaypoint& point : Read_Pcx5(text).waypoints) all << Shown(point, decimals);
  return all;
}
// "name: number of points", piece by piece.
QStringList Tracks(const GpsFile& file) {
  QStringList all;
  for (const GpsTrack& track : file.tracks) all << u"%1: %2"_s.arg(track.name).arg(track.points.size());
  return all;
}
QStringList Tracks(const QString& text) { return Tracks(Read_Pcx5(text)); }

// All points of the tracks; the sample has a short route besides.
std::vector<GpsPoint> Long_Tracks(const GpsFile& file) {
  std::vector<GpsPoint> points;
  for (const GpsTrack& track : file.tracks)
    if (track.points.size() > 100) points.insert(points.end(), track.points.begin(), track.points.end());
  return points;
}

class GpsFileTest : public FluraxTest {};

}  // namespace

// The same excursion in three formats: what lies in them must be the same places.
TEST_F(GpsFileTest, TheSamplesAgreeWithEachOther) {
  const GpsFile gpx = Read_Gps_File(samples + u"exkursion.gpx"_s), pcx = Read_Gps_File(samples + u"exk_pcx5_dm.wpt"_s),
                own = Read_Gps_File(samples + u"exk_eigen_utm.wpt"_s), track = Read_Gps_File(samples + u"gb_trk.trk"_s);
  ASSERT_GT(gpx.waypoints.size(), 40U);
  ASSERT_EQ(pcx.waypoints.size(), gpx.waypoints.size());
  ASSERT_EQ(own.waypoints.size(), gpx.waypoints.size());
  for (const GpsFile* file : {&gpx, &pcx, &own, &track}) {
    EXPECT_TRUE(file->faults.empty()) << Faults(*file).join('\n');
    EXPECT_EQ(std::tuple(file->remark, file->system.datum), std::tuple(QString(), u"WGS-84"_s));
  }
  for (size_t i = 0; i < gpx.waypoints.size(); ++i) {
    EXPECT_NEAR(pcx.waypoints[i].place.x, gpx.waypoints[i].place.x, 1e-6) << i;
    EXPECT_NEAR(pcx.waypoints[i].place.y, gpx.waypoints[i].place.y, 1e-6) << i;
    EXPECT_TRUE(gpx.waypoints[i].name.startsWith(own.waypoints[i].name)) << gpx.waypoints[i].name;
  }
  EXPECT_EQ(own.system.kind, Kind::Utm);
  EXPECT_EQ(Shown(own.waypoints[3], 0), u"Jägersburg 646560 5510874 Ort; Jägersburg"_s);
  EXPECT_EQ(std::tuple(own.waypoints[3].place.zone, own.waypoints[20].place.zone), std::tuple(32, 31));
  EXPECT_EQ(Shown(pcx.waypoints[15]), u"AESKUL 11.045822 49.768693 12 Ex. Äskulapnatter (Zamenis longissimu"_s);
  ASSERT_FALSE(gpx.tracks.empty());
  ASSERT_EQ(track.tracks.size(), 2U);
  EXPECT_EQ(Tracks(track).first(), u"BegehungRegnitzaue: 300"_s);
  EXPECT_EQ(gpx.Track_Points(), 608U) << "and the route";
  EXPECT_NEAR(track.tracks[1].points.back().place.y, gpx.tracks.back().points.back().place.y, 1e-6);
}

TEST(Pcx5Test, KindsOfDegrees) {
  const auto degrees = [](const char* text, DegreeWriting writing = DegreeWriting::Unknown) {
    return Read_Gps_Degrees(QString::fromUtf8(text), writing).value_or(-999);
  };
  const std::tuple<const char*, DegreeWriting, double> written[] = {
      {"N4943.98212", DegreeWriting::Minutes, 49.733035333},
      {"E01105.84783", DegreeWriting::Minutes, 11.0974638333},
      {"E0110550.870", DegreeWriting::Seconds, 11.0974638889},
      {"W00030.0", DegreeWriting::Minutes, -0.5},
      {"S494358,927", DegreeWriting::Seconds, -49.7330352778}};
  for (const auto& [text, writing, value] : written) EXPECT_NEAR(degrees(text, writing), value, 1e-8) << text;
  for (const char* text : {"N49.7330353", "4943.98212", "N494358.927", "49 43 58.927", "N 49 43.98212",
                           "49°43'58,927\"", "+49° 43' 58.927¨", "49.7330353°"})
    EXPECT_NEAR(degrees(text), 49.7330353, 2e-7) << text;
  EXPECT_EQ(degrees("-011°30'"), -11.5);
  for (const char* text : {"", "N", "X49.7", "N4963.0", "49 63 10", "49.7.3", "1e1", "N49 43 58 11", "nan"})
    EXPECT_EQ(degrees(text, strlen(text) > 6 ? DegreeWriting::Unknown : DegreeWriting::Minutes), -999) << text;
}

TEST(Pcx5Test, ColumnsBesideTheirHeadings) {
  // Headings one or two places beside the data, a name of 20 characters with blanks, a description that ends at the
  // next column.
  EXPECT_EQ(Waypoints(uR"(I  PCX5
U  LAT LON DEG
H    IDNT                LATITUDE   LONGITUDE  DATE      TIME     ALT   DESCRIPTION    PROXIMITY
W  Weiher am Berg       N49.7330353 E011.0974638 14-MAY-26 08:00:00 433 Ort am Bach x  0.0
W  ÄÖ                   N49.7330353 E011.0974638
)"_s),
            (QStringList{u"Weiher am Berg 11.097464 49.733035 Ort am Bach x"_s, u"ÄÖ 11.097464 49.733035 "_s}));
  // A name that pushes everything aside, and one that looks like a heading.
  EXPECT_EQ(Waypoints(dmHead + u"W  "_s + QString(300, u'x') + u" N4930.0 E01130.0 14-MAY-26 08:00:00\n"_s),
            QStringList{QString(300, u'x') + u" 11.500000 49.500000 "_s});
  EXPECT_EQ(
      Waypoints(dmHead + u"H  TN LATITUDE LONGITUDE DAT\nH  R DATUM       IDX\nW  EGGOLS N4930.0     E01130.0\n"_s),
      QStringList{u"EGGOLS 11.500000 49.500000 "_s});
}

TEST(Pcx5Test, MetresOfTheWild) {
  const GpsFile wild = Read_Pcx5(
      uR"(I  PCX5 2.09
M  G European 1950         37 +0.0
U  UTM UPS
H  IDNT   Zne Eastng  Northng  ALT   DESCRIPTION
W  ONE    10U 609391  5784559   433 Ort; Fern
W  TWO    32 U 643856 5510897   433 Ort; Nah
W  SOUTH  32K 643856 5510897
)"_s);
  ASSERT_EQ(wild.waypoints.size(), 3U) << Faults(wild).join('\n');
  EXPECT_EQ(wild.system, (GivenSystem{Kind::Utm, u"European 1950"_s}));
  QStringList places;
  for (const GpsWaypoint& point : wild.waypoints)
    places << Shown(point, 0) + u"; "_s + QString::number(point.place.zone) + (point.place.southern ? u'S' : u'N');
  EXPECT_EQ(places, (QStringList{u"ONE 609391 5784559 Ort; Fern; 10N"_s, u"TWO 643856 5510897 Ort; Nah; 32N"_s,
                                 u"SOUTH 643856 5510897 ; 32S"_s}));
  const GpsFile gauss =
      Read_Pcx5(u"D  Potsdam\nM  GK\nH  Name  Rechtswert  Hochwert\nW  Eck   4431643     5513030,8\n"_s);
  EXPECT_EQ(gauss.system, (GivenSystem{Kind::GaussKrueger, u"Potsdam"_s}));
  ASSERT_EQ(gauss.waypoints.size(), 1U);
  EXPECT_EQ(gauss.waypoints[0].place.y, 5513030.8);
}

TEST(Pcx5Test, BadRecordsAreNamedWithTheirLines) {
  const GpsFile file = Read_Pcx5(u"W  FRUEH  N4930.0     E01130.0\r\n"_s + dmHead +
                                 u"W  POL    N9500.0     E01130.0\r"
                                 "W  WEST   N4930.0     E19000.1\r\n"
                                 "W  LEER\n\nS  N4930.0\nN  x\nR  Route\n#\nWas ist das?\n"
                                 "W  GUT    N4930.0     E01130.0\n"_s);
  EXPECT_THAT(Faults(file), testing::ElementsAre(u"1: steht vor der Kopfzeile mit den Spalten"_s,
                                                 u"6: \"POL\" Breite 95 gibt es nicht"_s,
                                                 u"7: \"WEST\" Länge 190,001667 gibt es nicht"_s,
                                                 u"8: \"LEER\" Breite \"\" ist keine lesbare Koordinate"_s));
  ASSERT_EQ(file.waypoints.size(), 1U);
  EXPECT_EQ(std::tuple(file.waypoints[0].line, file.remark), std::tuple(15, QString()));
  EXPECT_TRUE(Read_Pcx5(u"I  PCX5\nW  A N49 E11\n"_s).remark.contains(u"Kopfzeile"_s));
  const GpsFile zone = Read_Pcx5(u"M  UTM\nH  Name Zone Rechtswert Hochwert\nW  A    99U  643856     5510897\n"_s);
  EXPECT_THAT(Faults(zone), testing::ElementsAre(u"3: \"A\" Zone 99U gibt es nicht"_s));
}

TEST(Pcx5Test, TracksBeginAtNamesAndBreaks) {
  const QString head = u"I  PCX5\nU  LAT LON DM\n"_s, columns = u"H  LATITUDE    LONGITUDE    DATE\n"_s,
                point = u"T  N4943.75931 E01100.91891 14-MAY-26 08:00:00 290\n"_s;
  EXPECT_EQ(Tracks(head + columns + u"H  TN Weg1\n"_s + point + point + u"\n"_s + point + u"H  TN Weg1\n"_s + point +
                   u"<Weg zwei>\n"_s + point + point + point + u"S  x\nF  x\n"_s + point),
            (QStringList{u"Weg1: 2"_s, u"Weg1: 1"_s, u"Weg1: 1"_s, u"Weg zwei: 4"_s}));
  EXPECT_EQ(Tracks(u"D  WGS-84\nM  UTM\nH  Name   Zone Rechtswert Hochwert\nT  A      32U  651144     5511060\n"
                   "T  A      32U  651145     5511060\nT  B      32U  651145     5511060\n"_s),
            (QStringList{u"A: 2"_s, u"B: 1"_s}));
}

// Files that were put together: what the first records say of their coordinates is said of the file.
TEST(Pcx5Test, RecordsOfAnotherSystemAreRefused) {
  const QString columns = u"H  IDNT   LATITUDE    LONGITUDE\n"_s;
  const GpsFile file = Read_Pcx5(
      u"I  PCX5\nM  G WGS 84\nU  UTM\nH  IDNT   Zne Eastng  Northng\nW  A      32U 643856 5510897\nU  LAT LON DEG\n"_s +
      columns + u"W  B      N49.7330353 E011.0974638\nM  G Potsdam\nW  C      N49.7330353 E011.0974638\n"_s);
  EXPECT_EQ(file.system, (GivenSystem{Kind::Utm, u"WGS-84"_s}));
  ASSERT_EQ(file.waypoints.size(), 1U);
  ASSERT_EQ(file.faults.size(), 2U);
  EXPECT_EQ(Faults(file)[0],
            u"8: \"B\" hat eine andere Art von Koordinaten oder ein anderes Kartendatum als die ersten "
            "der Datei"_s);
}

TEST(GpxTest, ReadsBothVersionsAndWhatIsMissing) {
  const GpsFile file = Read_Gpx(
      uR"(<?xml version="1.0" encoding="windows-1252"?>
<!-- <gpx> --><g:gpx xmlns:g="http://www.topografix.com/GPX/1/0" version="1.0">
<g:name>Alles</g:name><g:wpt lat="49.7" lon="11.0"/>
<g:wpt lon="+11.5" lat=" 49.5 "><g:ele/><g:time>2026-05-14T08:00:00.123+02:00</g:time><g:name> Igel
 am Bach </g:name><g:cmt>c</g:cmt><g:sym>Flag</g:sym><g:extensions><name>falsch</name><wpt lat="1" lon="1"/></g:extensions></g:wpt>
<g:wpt lat="49.6" lon="11.1"><g:desc>nur &lt;Bemerkung&gt;</g:desc></g:wpt>
<g:wpt lat="95" lon="11.1"><g:name>Pol</g:name></g:wpt><g:wpt lat="acht" lon="11.1"/>
<g:rte><g:rtept lat="49.1" lon="11"><g:name>P</g:name></g:rtept><g:rtept lat="49.2" lon="11"/><g:name>Route</g:name></g:rte>
<g:trk><g:name>Gang</g:name><g:trkseg/><g:trkseg><g:trkpt lat="49.1" lon="11"/><g:trkpt lat="49.2" lon="11"><g:time/></g:trkpt></g:trkseg>
<g:trkseg><g:trkpt lat="49.1" lon="11"/></g:trkseg></g:trk><g:trk><g:trkseg><g:trkpt lat="49.1" lon="11"/></g:trkseg></g:trk>
</g:gpx>)"_s);
  EXPECT_EQ(file.remark, QString());
  QStringList points;
  for (const GpsWaypoint& point : file.waypoints) points << Shown(point, 1);
  EXPECT_EQ(points, (QStringList{u" 11.0 49.7 "_s, u"Igel am Bach 11.5 49.5 c"_s, u" 11.1 49.6 nur <Bemerkung>"_s}));
  EXPECT_EQ(Faults(file), (QStringList{u"7: Breite 95 gibt es nicht"_s, u"7: Länge oder Breite ist nicht lesbar"_s}));
  EXPECT_EQ(Tracks(file), (QStringList{u"Route: 2"_s, u"Gang: 2"_s, u"Gang: 1"_s, u": 1"_s}));
}

TEST_F(GpsFileTest, ABrokenEndKeepsWhatWasRead) {
  const QByteArray whole = Read_Bytes(samples + u"exkursion.gpx"_s);
  const qsizetype inTrack = whole.indexOf("<trkpt", whole.indexOf("<trkpt") + 1000);
  const GpsFile cut = Read_Gps_File(Put(u"ab.gpx"_s, whole.left(inTrack + 20)));
  EXPECT_TRUE(cut.remark.contains(u"nicht mehr lesbar"_s)) << cut.remark;
  EXPECT_EQ(cut.waypoints.size(), Read_Gps_File(samples + u"exkursion.gpx"_s).waypoints.size());
  ASSERT_FALSE(cut.tracks.empty());
  EXPECT_GT(cut.tracks[0].points.size(), 5U);
  EXPECT_FALSE(cut.tracks[0].name.isEmpty());
}

TEST_F(GpsFileTest, CodingsZipsAndWhatIsNone) {
  const QByteArray body = dmHead.toUtf8() +
                          "W  J\xC3\xA4"
                          "ger  N4930.0     E01130.0\n";
  // A NUL byte is a blank, and the content tells the format.
  const std::tuple<QString, QByteArray, QString> codings[] = {{u"a.wpt"_s, "J\xC3\xA4ger", u"Jäger"_s},
                                                              {u"b.txt"_s, "J\xE4ger", u"Jäger"_s},
                                                              {u"c.dat"_s, QByteArray("J\0ger", 5), u"J ger"_s}};
  for (const auto& [name, bytes, read] : codings)
    EXPECT_EQ(Read_Gps_File(Put(name, QByteArray(body).replace("J\xC3\xA4ger", bytes))).waypoints[0].name, read);
  workbook_inner::Package zip({});
  zip.Put(u"Liesmich.pdf"_s, "nichts");
  zip.Put(u"Gänge/a.wpt"_s, body);
  const QByteArray packed = zip.Bytes();
  EXPECT_EQ(Read_Gps_File(Put(u"p.zip"_s, packed)).waypoints.size(), 1U);
  EXPECT_EQ(Error_Of([&] { Read_Gps_File(Put(u"k.zip"_s, packed.left(packed.size() / 2))); }), 5000);
  // "<gpx><wpt lat='49' lon='11'><name>Ä</name></wpt></gpx>" by gzip, whatever the file is called.
  const QByteArray gzip = QByteArray::fromBase64(
      "H4sIAAAAAAACA7NJL6iwsykvKFHISSyxVTexVFfIyc+zVTc0VLezyUvMTbU73GKjD2bY6AOVAUmQDgDQXiBZNwAAAA==");
  for (const auto& name : {u"g.gpx.gz"_s, u"g.gz"_s, u"g.gpx"_s})
    EXPECT_EQ(Read_Gps_File(Put(name, gzip)).waypoints.at(0).name, u"Ä"_s) << name;
  for (const QByteArray& bad : {gzip.chopped(9), gzip.left(30) + gzip.mid(31), gzip.left(11), gzip.left(3)})
    EXPECT_EQ(Error_Of([&] { Read_Gps_File(Put(u"k.gpx.gz"_s, bad)); }), 5000);
  for (const QByteArray& none : {QByteArray(), QByteArray(" \r\n"), QByteArray(3000, '\1'), QByteArray("PK\3\4halb"),
                                 QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\10\2\0\0\0", 29)})
    EXPECT_EQ(Error_Of([&] { Read_Gps_File(Put(u"n.gpx"_s, none)); }), 5000) << none.toHex().left(20).toStdString();
  EXPECT_EQ(Error_Of([&] { Read_Gps_File(folder.path()); }), 5000);
  EXPECT_EQ(Error_Of([&] { Read_Gps_File(Path(u"fehlt.gpx"_s)); }), errors::fileNotFound);
  const QString wide = u"\uFEFF<gpx><wpt lat='49' lon='11'><name>Ä</name></wpt></gpx>"_s;
  const QByteArray wideBytes(reinterpret_cast<const char*>(wide.utf16()), wide.size() * 2);
  EXPECT_EQ(Read_Gps_File(Put(u"w.gpx"_s, wideBytes)).waypoints.at(0).name, u"Ä"_s);
}

// What the guest itself writes of the sample comes back: no point is lost on the way.
TEST_F(GpsFileTest, OtherFormatsGoThroughTheGuest) {
  ASSERT_TRUE(Has_Babel()) << "gpsbabel is not installed";
  const QString sample = samples + u"exkursion.gpx"_s;
  // How it is written and called, waypoints, points of tracks, the name of one of each, "" where the format has none.
  using Format = std::tuple<QString, QString, size_t, size_t, QString, QString>;
  const QString place = u"Jägersburg"_s, way = u"Höhenweg Lange Meile"_s;
  const std::vector<GpsPoint> wanted = Long_Tracks(Read_Gps_File(sample));
  for (const auto& [written, ending, waypoints, trackPoints, name, trackName] :
       {Format{u"kml,points=0"_s, u"kml"_s, 60, 600, place, {}},
        {u"gdb"_s, u"gdb"_s, 60, 600, place, way},
        {u"gtrnctr"_s, u"tcx"_s, 0, 600, {}, {}},
        {u"garmin_fit"_s, u"fit"_s, 0, 600, {}, {}},
        {u"nmea,gprmc=0"_s, u"nmea"_s, 34, 600, u"Egglsh"_s, {}},
        {u"unicsv"_s, u"unicsv"_s, 60, 0, place, {}},
        {u"geo"_s, u"loc"_s, 60, 0, {}, {}}}) {
    const QString path = Path(u"Gang, 1."_s + ending);
    QStringList what = {u"-w"_s, u"-t"_s};
    if (trackPoints == 0) what.removeLast();
    Run_Tool(u"gpsbabel"_s, what + QStringList{u"-i"_s, u"gpx"_s, u"-f"_s, sample, u"-o"_s, written, u"-F"_s, path});
    const GpsFile file = Read_Gps_File(path);
    const std::vector<GpsPoint> points = Long_Tracks(file);
    EXPECT_EQ(points.size(), trackPoints) << ending;
    EXPECT_GE(file.waypoints.size(), waypoints) << ending;
    const auto named = [](const auto& all, const QString& who) {
      return who.isEmpty() || std::any_of(all.begin(), all.end(), [&](const auto& one) { return one.name == who; });
    };
    EXPECT_TRUE(named(file.waypoints, name)) << ending << ' ' << file.waypoints.front().name;
    EXPECT_TRUE(named(file.tracks, trackName)) << ending;
    EXPECT_EQ(file.system, (GivenSystem{Kind::Geographic, u"WGS-84"_s}));
    for (size_t i = 0; i < points.size() && i < wanted.size(); ++i)
      EXPECT_LT(std::hypot(points[i].place.x - wanted[i].place.x, points[i].place.y - wanted[i].place.y), 1.42e-5)
          << ending << ' ' << i << ": not where it was";
  }
  EXPECT_EQ(Error_Of([&] { Read_Gps_File(Put(u"k.fit"_s, "kein FIT, nur Text")); }), guestFailed);
  EXPECT_EQ(Error_Of([&] { Babel_Device(u"garmin"_s, Path(u"kein-anschluss"_s)); }), guestFailed);
}

// In place of the real one: a device that keeps silent can be given up, one that tells what is wrong is quoted.
TEST_F(GpsFileTest, ADeviceThatDoesNotAnswerIsGivenUp) {
  const QString guest = Path(u"gpsbabel"_s);
  ProgramFolder = folder.path();
  const auto say = [&](const QByteArray& script) {
    Put(u"gpsbabel"_s, "#!/bin/sh\n" + script + '\n');
    QFile::setPermissions(guest, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  };
  say("exec sleep 600");
  QElapsedTimer since;
  since.start();
  {
    const StopWorkAt first(1);
    EXPECT_EQ(Error_Of([] { Babel_Device(u"garmin"_s, u"usb:"_s); }), guestCancelled);
  }
  EXPECT_LT(since.elapsed(), 20'000);
  say("echo 'GARMIN: Kein Anschluss' >&2; exit 1");
  const QString told = Raised([] { Babel_Device(u"garmin"_s, u"usb:"_s); }).text;
  EXPECT_TRUE(told.startsWith(u"Am Anschluss 'usb:' antwortet kein Gerät."_s) && told.endsWith(u"Kein Anschluss"_s))
      << told;
  say("exit 0");
  EXPECT_TRUE(Raised([] { Babel_Device(u"garmin"_s, u"usb:"_s); }).text.contains(u"hat nichts geschrieben"_s));
}
