#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHashFunctions>
#include <cstdio>

#include "demo_sets.h"
#include "demo_table.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/picture.h"

using namespace Qt::StringLiterals;

// make_data SOURCE TARGET: makes the program folder as delivered. Every run writes the same rows and bytes.

namespace {

constexpr int scanResolution = 11811;  // points a metre = 300 dpi

void Copy_Tree(const QString& source, const QString& target) {
  const QDir folder(source);
  if (!QDir().mkpath(target)) Raise(errors::pathNotFound, target);
  for (const QFileInfo& file : folder.entryInfoList(QDir::Files, QDir::Name)) {
    File_Copy(file.filePath(), target + u'/' + file.fileName());
  }
  for (const QString& name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
    Copy_Tree(source + u'/' + name, target + u'/' + name);
  }
}

void Make_Template_File(const QString& path) {
  const auto database = Workspace::CreateDatabase(path);
  Make_Template(*database);
  database->Close();
}

struct DemoSet {
  QString name;
  void (*add)(DemoTable&);
};

void Make_Tables(const QString& folder, QSize map) {
  const DemoSet sets[] = {
      {u"KARTE.MDB"_s, Add_Overview},  // what the demo map opens with
      {u"Demo_1_Test.MDB"_s, Add_First_Try},
      {u"Demo_2_Übersicht.MDB"_s, Add_Overview},
      {u"Demo_3_Eintrag_bearbeiten.MDB"_s, Add_Editing},
      {u"Demo_4_Text_Symbol.MDB"_s, Add_Texts_And_Symbols},
      {u"Demo_5_Text_justieren.MDB"_s, Add_Justifying},
  };
  for (const auto& [name, add] : sets) {
    DemoTable table(folder + u'/' + name, u"Karte.bmp"_s, map);
    add(table);
    table.Finish();
  }
}

void Make_All(const QString& source, const QString& target) {
  if (QFileInfo::exists(target) && !QDir(target).removeRecursively()) Raise(errors::noPermission, target);
  Copy_Tree(source, target);
  Copy_Tree(source + u"/../docs/bilder"_s, target + u"/Hilfe/bilder"_s);  // the manual's pictures are the help's, too
  Make_Template_File(target + u"/MUSTER.MDB"_s);
  Make_Settings_Sheet(target + u"/Hilfe/Einstellungen.htm"_s, target + u"/Flurax-Einstellungen.pdf"_s);

  const QString examples = target + u"/Beispiele"_s;
  const QImage map = Load_Picture(examples + u"/Karte.png"_s);
  Save_Picture(map, examples + u"/Karte.bmp"_s, scanResolution);
  Kill(examples + u"/Karte.png"_s);
  Save_Picture(Draw_Bird(), examples + u'/' + birdPicture);
  Make_Tables(examples, map.size());
}

}  // namespace

int main(int argc, char** argv) {
  QHashSeed::setDeterministicGlobalSeed();  // the order of fonts in a PDF hangs on it
  const QGuiApplication application(argc, argv);
  if (argc != 3) {
    std::fputs("make_data SOURCE TARGET\n", stderr);
    return 2;
  }
  try {
    Make_All(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2]));
  } catch (const Error& error) {
    std::fprintf(stderr, "make_data: error %d: %s\n", error.number, qPrintable(error.text));
    return 1;
  }
  return 0;
}
