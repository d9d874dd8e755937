#include "import/gpx.h"
#include "fuzz/calibrated.h"
#include "fuzz/driver.h"
#include "platform/zip_reader.h"
#include "workbook/workbook_package.h"

// GPX, also packed.

namespace {

constexpr qint64 mostUnpacked = 1 << 20;

// A point of each kind and what may stand in them; the sample is too long to be looked at ten thousand times.
QByteArrayList Seeds() {
  const QByteArray small =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\">"
      "<wpt lat=\"49.75\" lon=\"11.05\"><ele>300</ele><time>2026-05-14T08:00:00.5Z</time><name>B\xC3\xBCg</name>"
      "<cmt>c</cmt><desc>d &lt;</desc></wpt><rte><name>R</name><rtept lat=\"49.7\" lon=\"11\"/></rte>"
      "<trk><name>Weg</name><trkseg><trkpt lat=\"49.74\" lon=\"11.04\"/><trkpt lat=\"49.76\" lon=\"11.06\"/></trkseg>"
      "<trkseg><trkpt lat=\"-90\" lon=\"180\"><extensions><x y=\"1\"/></extensions></trkpt></trkseg></trk></gpx>";
  const QByteArray older =
      "<!-- x --><g:gpx xmlns:g='http://www.topografix.com/GPX/1/0'><g:trk><g:trkseg><g:trkpt lon='11' lat='49.5'/>"
      "</g:trkseg><g:name><![CDATA[a & b]]></g:name></g:trk></g:gpx>";
  workbook_inner::Package zip({});
  zip.Put(u"a.gpx"_s, small);
  const QByteArray gzip = QByteArray::fromBase64(
      "H4sIAAAAAAACA7NJL6iwsykvKFHISSyxVTexVFfIyc+zVTc0VLezyUvMTbU73GKjD2bY6AOVAUmQDgDQXiBZNwAAAA==");
  return {small, older, zip.Bytes(), gzip};
}

// Packed after it was damaged, so that the damage comes through.
void Shape(QByteArray& bytes, Mutator& dice) {
  if (dice.Number(4) != 0) return;
  workbook_inner::Package zip({});
  zip.Put(u"a.gpx"_s, bytes);
  bytes = zip.Bytes();
}

bool Run(const QByteArray& input) {
  QByteArray bytes = input;
  if (Is_Gzip(bytes)) bytes = Unpack_Gzip(bytes, mostUnpacked).value_or(QByteArray());
  if (Is_Zip(bytes))
    if (const auto part = First_In_Zip(bytes, {u"gpx"_s}, mostUnpacked)) bytes = part->content;
  if (bytes.size() > mostUnpacked) throw std::runtime_error("more was unpacked than asked for");
  const QString text = Decode_Text(bytes);
  Is_Gpx(text);
  return Take_Gps_File(Read_Gpx(text));
}

}  // namespace

FuzzTarget Make_Target() {
  return {
      "gpx",
      Seeds(),
      {"<gpx>", "</gpx>", "<trk>", "</trk>", "<trkseg>", "<trkpt lat=\"95\" lon=\"11\">", "</trkpt>", "<wpt ", "<rte>",
       "<name>", "</name>", "<!DOCTYPE gpx [<!ENTITY a \"aa\">]>", "&a;", "<![CDATA[", "]]>", "encoding=\"utf-16\""},
      Run,
      Shape};
}
