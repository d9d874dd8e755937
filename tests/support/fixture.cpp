#include "support/fixture.h"

#include "tools/canvas.h"

const QByteArray& Template_Bytes() {
  static const QByteArray bytes = [] {
    const QTemporaryDir folder;
    const QString path = folder.path() + QLatin1String("/MUSTER.MDB");
    auto database = Workspace::CreateDatabase(path);
    Make_Template(*database);
    database->Close();
    database.reset();
    return Read_Bytes(path);
  }();
  return bytes;
}

namespace {
void Reset_Services() {
  File_Write_Fault = nullptr;
  Set_Message_Handler(nullptr);
  Set_File_Dialog_Handler(nullptr);
  Set_Input_Box_Handler(nullptr);
  Set_Progress_Maker(nullptr);
  Set_Shell({});
  dialogHooks = DialogHooks();
  events = Events();
}
}  // namespace

QString FolderTest::Put(const QString& name, const QByteArray& content) const {
  QFile file(Path(name));
  QDir().mkpath(QFileInfo(file).path());
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()) << name.toStdString();
  return file.fileName();
}
QStringList FolderTest::Names() const {
  return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

void FluraxTest::SetUp() {
  ASSERT_TRUE(folder.isValid()) << folder.errorString().toStdString();
  Reset_Services();
  Reset_Global_State();
  Connect_Canvas();
  ProgramFolder = Path(QStringLiteral("Programm"));
  ASSERT_TRUE(QDir().mkpath(ProgramFolder + QLatin1String("/Beispiele")));
  Replace_File(ProgramFolder + QLatin1String("/MUSTER.MDB"), Template_Bytes());
}

void FluraxTest::TearDown() {
  Reset_Services();
  Reset_Global_State();
  ProgramFolder.clear();
}

QString FluraxTest::Make_Map(const QString& name, int width, int height) {
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(Qt::white);
  picture.setDotsPerMeterX(3780);
  picture.setDotsPerMeterY(3780);
  const QString path = Path(name);
  EXPECT_TRUE(picture.save(path)) << path.toStdString();
  return path;
}
