#include "maps/result_output.h"

#include "analysis/analysis_texts.h"
#include "analysis/result_book.h"
#include "maps/note_pads.h"
#include "platform/error.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/progress.h"
#include "platform/shell.h"
#include "state/dialog_hooks.h"
#include "state/global_state.h"

namespace {

bool Ask_Again(const QString& text) {
  return Message_Box(text + QStringLiteral("\n\nOK: noch einmal versuchen. Abbrechen: die Arbeitsmappe bleibt, wie sie "
                                           "ist."),
                     MsgButtons::OkCancel, MsgIcon::Warning, QStringLiteral("Arbeitsmappe sichern.")) == MsgAnswer::Ok;
}

QString Where_They_Are(const std::vector<Sheet>& sheets, const ResultBook& book) {
  QStringList names;
  for (const Sheet& sheet : sheets) names += u'"' + sheet.name + u'"';
  QString text = (names.size() == 1 ? QStringLiteral("Das Blatt %1 steht in der Arbeitsmappe:\n%2")
                                    : QStringLiteral("Die Blätter %1 stehen in der Arbeitsmappe:\n%2"))
                     .arg(names.join(QStringLiteral(" und ")), book.path);
  if (!book.aside.isEmpty())
    text += QStringLiteral("\n\nDie vorhandene Datei hatte ein altes Format. Sie heißt jetzt:\n") + book.aside;
  return text + QStringLiteral("\n\nSoll sie geöffnet werden?");
}

}  // namespace

bool Tell_Result_Error(const QString& title, const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const Error& error) {
    Message_Box(QString::number(error.number) + u'\n' + Error_Text(error), MsgButtons::OkCancel, MsgIcon::Critical,
                title);
    return false;
  }
}

bool Write_Result(const std::vector<Sheet>& sheets, std::unique_ptr<Progress> steps) {
  const auto book = Write_Result_Sheets(TableFile, sheets, Ask_Again, [&steps](const QString& step) {
    if (steps) steps->Say(step);
  });
  steps.reset();
  if (!book) return false;
  const auto answer = Message_Box(Where_They_Are(sheets, *book), MsgButtons::YesNo, MsgIcon::Question,
                                  QStringLiteral("Arbeitsmappe gesichert"));
  if (answer == MsgAnswer::Yes && !Open_With_Desktop(book->path))
    Message_Box(QStringLiteral("Die Arbeitsmappe kann nicht geöffnet werden:\n") + book->path, MsgButtons::Ok,
                MsgIcon::Warning, QStringLiteral("Arbeitsmappe"));
  return true;
}

// Names of other scripts are kept: a text that Windows-1252 cannot hold is written as UTF-8.
bool Show_Report(const QString& path, const QString& text) {
  if (NotePad_Changed(NotePad_Of(path))) {
    Message_Box(QStringLiteral("Der Text in [") + path +
                    QStringLiteral("] wurde geändert.\nSpeichern Sie ihn unter einem anderen Namen, oder schließen Sie "
                                   "sein Fenster, bevor Sie ihn neu berechnen."),
                MsgButtons::Ok, MsgIcon::Warning, QStringLiteral("Notizen"));
    return false;
  }
  const QByteArray bytes = To_1252(text);
  Replace_File(path, From_1252(bytes) == text ? bytes : text.toUtf8());
  if (dialogHooks.NotePad) dialogHooks.NotePad(path);
  return true;
}

bool Tell_Too_Large(const QStringList& texts, const QString& title) {
  if (texts.isEmpty()) return true;
  constexpr qsizetype shown = 10;
  QString text = analysis_texts::Too_Large(texts.mid(0, shown));
  if (texts.size() > shown) text += QStringLiteral(" und %1 weitere").arg(texts.size() - shown);
  return Message_Box(text, MsgButtons::OkCancel, MsgIcon::Warning, title) == MsgAnswer::Ok;
}
