#include "calibration/world_file.h"
#include "coordinates/calibration_file.h"
#include "coordinates/conversions.h"
#include "platform/geotiff.h"
#include "platform/reference_lookup.h"

namespace {

MATCHER_P(Says, part, "") { return arg.contains(QString(part)); }

QString Refusal(const std::function<void()>& work) {
  const Error error = Raised(work);
  EXPECT_EQ(error.number, badPoints);
  return error.text;
}

class WorldFiles : public FluraxTest {
 protected:
  // A TIFF file of 400 x 300 pixels of 2.5 m, its corner at 650 000 / 5 512 000, as the tools of the surveys write it.
  QString Tiff(const QString& options, const QString& from = u"leer.bmp"_s) {
    if (!File_Exists(Path(from))) Make_Map(from, 400, 300);
    Run_Tool("gdal_translate", QString("-q " + options).split(u' ') << Path(from) << Path("Karte.tif"));
    return Path("Karte.tif");
  }
  // The place of a map pixel in the program, by the file that was made of the picture's own data.
  QPointF Place_In_Program(const QString& picture, const ReferenceWish& wish, QPoint pixel) {
    const auto reference = Find_Reference(picture);
    if (!reference) {
      ADD_FAILURE() << "nothing tells the place of " << picture;
      return {};
    }
    const CalibrationPlan plan = Plan_Of_Reference(*reference, System_To_Use(*reference, wish), "Karte.bmp");
    state = Save_Calibration(plan, Calibration_File_Of(picture)).state;
    if (state.Metric()) return Pixel_To_Koord(state, pixel.x(), pixel.y());
    QPointF place;
    Pixel_To_Grad(state, pixel.x(), pixel.y(), place.rx(), place.ry());
    if (state.NetPKG) place = QPointF(place.x() * 1000 + state.PkgR, place.y() * 1000 + state.PkgH);
    return place;
  }
  CoordinateState state;
};

const QString corners = "-a_ullr 650000 5512000 651000 5511250", utm = corners + " -a_srs EPSG:25832";

void Expect_Place(QPointF found, QPointF wanted, double tenthOfPixel) {
  EXPECT_NEAR(found.x(), wanted.x(), tenthOfPixel);
  EXPECT_NEAR(found.y(), wanted.y(), tenthOfPixel);
}

}  // namespace

TEST_F(WorldFiles, TheOriginIsTheMiddleOfTheFirstPixel) {
  const QString map = Make_Map("Karte.bmp", 400, 300);
  Put("Karte.bpw", "2.5\r\n0\r\n0\r\n-2,5\r\n650000\r\n5512000\r\n");
  const ReferenceWish wish{32, "WGS-84"};
  Expect_Place(Place_In_Program(map, wish, {0, 0}), {650000, 5512000}, 0.25);
  Expect_Place(Place_In_Program(map, wish, {399, 299}), {650000 + 399 * 2.5, 5512000 - 299 * 2.5}, 0.25);
  EXPECT_EQ(std::tuple(state.ZoneText, state.GridDatum), std::tuple("32U", "WGS-84"));
  // The net of the file bears round numbers.
  EXPECT_EQ(state.GridR % state.Gwidth, 0);
  EXPECT_GE(state.NetLLines.size(), 3U);
}

TEST_F(WorldFiles, TagsCountFromTheCornerOrFromTheMiddle) {
  const QString map = Make_Map("Karte.bmp", 400, 300);
  for (const char* orders : {"ENDIANNESS=LITTLE", "ENDIANNESS=BIG"})
    for (const char* big : {"BIGTIFF=NO", "BIGTIFF=YES"})
      for (const char* counted : {"Area", "Point"}) {
        Tiff(u"%1 -co %2 -co %3 -mo AREA_OR_POINT=%4"_s.arg(utm, orders, big, counted));
        SCOPED_TRACE(orders + std::string(big) + counted);
        Expect_Place(Place_In_Program(map, {}, {0, 0}), {650001.25, 5511998.75}, 0.25);
        Expect_Place(Place_In_Program(map, {}, {200, 100}), {650501.25, 5511748.75}, 0.25);
        EXPECT_EQ(state.GridDatum, "ETRS89");
      }
  // A tie point in the middle of the picture.
  QByteArray tied = Read_Bytes(Tiff(utm));
  const double right = 650000, middle[] = {200, 150};
  const qsizetype at = tied.indexOf(QByteArray(reinterpret_cast<const char*>(&right), 8));
  Put("Karte.tif", tied.replace(at - 24, 16, reinterpret_cast<const char*>(middle), 16));
  Expect_Place(Place_In_Program(map, {}, {200, 150}), {650001.25, 5511998.75}, 0.25);
  // A whole matrix, turned by three degrees; the world file it comes from tells the same.
  const double t = 3 * 3.14159265358979 / 180, c = 2.5 * std::cos(t), s = 2.5 * std::sin(t);
  Make_Map("gedreht.bmp", 400, 300);
  QStringList lines;
  for (const double number : {c, s, s, -c, 650000.0, 5512000.0}) lines << QString::number(number, 'f', 9);
  Write_Lines(Path("gedreht.bpw"), lines);
  Tiff("-a_srs EPSG:32632", "gedreht.bmp");
  Expect_Place(Place_In_Program(map, {}, {0, 0}), {650000, 5512000}, 0.25);
  EXPECT_NEAR(state.Inclin, std::tan(t), 2e-5);
  // The tags of the picture itself; a picture of another size beside the map says nothing of it.
  EXPECT_EQ(Find_Reference(Path("Karte.tif"))->size, QSize(400, 300));
  EXPECT_FALSE(Find_Reference(Make_Map("Karte.bmp", 410, 300)));
}

TEST_F(WorldFiles, PixelsThatAreNoSquaresAndDegreesBecomeTracedNets) {
  const QString map = Make_Map("Karte.bmp", 400, 300);
  Put("Karte.wld", "2\n0\n0\n-2.5\n650000\n5512000\n");
  const ReferenceWish wish{32, "WGS-84"};
  for (const QPoint at : {QPoint(3, 5), QPoint(390, 20), QPoint(200, 280)})
    Expect_Place(Place_In_Program(map, wish, at), {650000 + at.x() * 2.0, 5512000 - at.y() * 2.5}, 2.0);
  EXPECT_TRUE(state.NetPKG);
  Put("Karte.wld", "0.00002\n0\n0\n-0.000015\n11.0\n49.8\n");
  for (const QPoint at : {QPoint(3, 5), QPoint(390, 20), QPoint(200, 280)})
    Expect_Place(Place_In_Program(map, {0, "WGS-84"}, at), {11 + at.x() * 2e-5, 49.8 - at.y() * 1.5e-5}, 1.5e-5);
  EXPECT_TRUE(state.NetDec);
}

TEST_F(WorldFiles, ZoneAndDatumComeFromTheFilesOrAreAskedFor) {
  const QString map = Make_Map("Karte.bmp", 400, 300);
  Put("Karte.bpw", "2.5\n0\n0\n-2.5\n4450000\n5512000\n");
  const auto system = [&](const ReferenceWish& wish) { return System_To_Use(*Find_Reference(map), wish); };
  const auto refused = [&](const ReferenceWish& wish) { return Refusal([&] { system(wish); }); };
  EXPECT_THAT(refused({}), Says("Es fehlt das Datum"));
  EXPECT_THAT(refused({0, "Potsdam"}), Says("Es fehlt die Zone"));
  EXPECT_THAT(refused({4, "Mond"}), Says("Mond"));
  EXPECT_THAT(refused({7, "Potsdam"}), Says("Diese Zone gibt es nicht"));
  EXPECT_EQ(system({4, "Potsdam"}).Name(), "Gauß-Krüger 4");
  const auto plan = [&](const ReferenceWish& wish) {
    return Plan_Of_Reference(*Find_Reference(map), system(wish), "Karte.bmp");
  };
  EXPECT_THAT(Refusal([&] { plan({3, "Potsdam"}); }), Says("gehört nicht zur Zone 3"));
  EXPECT_THAT(Refusal([&] { plan({32, "WGS-84"}); }), Says("gehört zur Zone"));
  // As surveys write them.
  Put("Karte.prj",
      R"(PROJCS["DHDN_3_Degree_Gauss_Zone_4",GEOGCS["GCS_Deutsches_Hauptdreiecksnetz",DATUM["D_Deutsches_Hauptdreiecksnetz",SPHEROID["Bessel_1841",6377397.155,299.1528128]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],PROJECTION["Gauss_Kruger"],PARAMETER["False_Easting",4500000.0],PARAMETER["False_Northing",0.0],PARAMETER["Central_Meridian",12.0],PARAMETER["Scale_Factor",1.0],PARAMETER["Latitude_Of_Origin",0.0],UNIT["Meter",1.0]])");
  EXPECT_EQ(system({}).Name(), "Gauß-Krüger 4");
  EXPECT_EQ(std::tuple(plan({}).net.zone, plan({}).net.datum), std::tuple("4", "Potsdam"));
  for (const ReferenceWish& other : {ReferenceWish{3, {}}, {0, "WGS-84"}})
    EXPECT_THAT(refused(other), Says("Gauß-Krüger 4"));
  Put("Karte.prj",
      R"(PROJCS["ETRS_1989_UTM_Zone_33N",GEOGCS["GCS_ETRS_1989",DATUM["D_ETRS_1989",SPHEROID["GRS_1980",6378137.0,298.257222101]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],PROJECTION["Transverse_Mercator"],PARAMETER["False_Easting",500000.0],PARAMETER["False_Northing",0.0],PARAMETER["Central_Meridian",15.0],PARAMETER["Scale_Factor",0.9996],PARAMETER["Latitude_Of_Origin",0.0],UNIT["Meter",1.0]])");
  EXPECT_EQ(system({}).Name(), "UTM 33 ETRS89");
  Put("Karte.prj", Read_Bytes(Path("Karte.prj")).replace("15.0", "15e9"));
  EXPECT_THAT(refused({}), Says("Karte aus Geodaten"));
  // A system the program does not count in.
  Put("Karte.prj",
      R"(PROJCS["WGS_1984_Web_Mercator_Auxiliary_Sphere",GEOGCS["GCS_WGS_1984",DATUM["D_WGS_1984",SPHEROID["WGS_1984",6378137.0,298.257223563]],PRIMEM["Greenwich",0.0],UNIT["Degree",0.0174532925199433]],PROJECTION["Mercator_Auxiliary_Sphere"],PARAMETER["False_Easting",0.0],PARAMETER["False_Northing",0.0],PARAMETER["Central_Meridian",0.0],PARAMETER["Standard_Parallel_1",0.0],PARAMETER["Auxiliary_Sphere_Type",0.0],UNIT["Meter",1.0]])");
  EXPECT_THAT(refused({}), Says("Karte aus Geodaten"));
  Put("Karte.prj", "ETRS89[");  // the beginning of a name is no text of a system
  EXPECT_THAT(refused({}), Says("Karte aus Geodaten"));
  for (const int code : {3857, 32732, 5243, 4746}) EXPECT_EQ(System_Of_Epsg(code), std::nullopt) << code;
  for (const int code : {4326, 4258, 4314, 31466, 31469, 32601, 32633, 25832})
    EXPECT_EQ(Epsg_Of(System_Of_Epsg(code).value_or(ReferenceSystem{})), code);
  // Without a reference system the tags tell the place alone.
  Kill(Path("Karte.prj"));
  Kill(Path("Karte.bpw"));
  Tiff(corners);
  EXPECT_FALSE(Find_Reference(map)->system);
  EXPECT_EQ(System_To_Use(*Find_Reference(map), {32, "ETRS89"}).Name(), "UTM 32 ETRS89");
}

TEST_F(WorldFiles, NonsenseIsRefusedByItsLine) {
  for (const auto& [lines, told] : {std::pair("2\n0\n0\n-2\n650000\n", "Zeile 6"),
                                    {"2\n0\nnull\n-2\n1\n1\n", "Zeile 3"},
                                    {"0\n0\n0\n0\n650000\n5512000\n", "keine Größe"},
                                    {"2\n0\n0\n2\n650000\n5512000\n", "Vorzeichen"},
                                    {"-2\n0\n0\n-2\n650000\n5512000\n", "Vorzeichen"}})
    EXPECT_THAT(Refusal([&, text = lines] { Parse_World_File(text); }), Says(told));
  // Whatever is cut off before its names makes a TIFF file no picture; other damage is tried by the mutations.
  Make_Map("klein.bmp", 4, 3);
  const QByteArray whole = Read_Bytes(Tiff(utm, "klein.bmp"));
  for (qsizetype length = 0; length < whole.indexOf("ETRS89"); ++length) {
    Put("k.tif", whole.left(length));
    EXPECT_EQ(Error_Of([&] { Read_Geotiff(Path("k.tif")); }), errors::badPicture) << length;
  }
}

// Written by the tools of the surveys.
TEST_F(WorldFiles, TheirLinesAreReadAsTheyAreMeant) {
  Tiff(utm + " -co TFW=YES");
  EXPECT_EQ(Parse_World_File(Read_Lines(Path("Karte.tfw")).join(u'\n')),
            (PixelAffine{2.5, 0, 650001.25, 0, -2.5, 5511998.75}));
}
