#include "prepare_folder.h"

#include <QCoreApplication>
#include <QDir>

#include "platform/error.h"
#include "platform/message_box.h"
#include "store/file_names.h"

namespace {

// Beside an installed program, else where it was built.
QString Delivered_Folder() {
  const QDir installed(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/flurax"));
  return installed.exists() ? installed.canonicalPath() : QStringLiteral(FLURAX_DATA_DIR);
}

}  // namespace

bool Prepare_Folder() {
  try {
    Prepare_Program_Folder(Delivered_Folder());
    return true;
  } catch (const Error& error) {
    Message_Box(QStringLiteral("Der Programmordner kann nicht angelegt oder beschrieben werden.\n") + error.text,
                MsgButtons::Ok, MsgIcon::Critical, QStringLiteral("Programmfehler "));
    return false;
  }
}
