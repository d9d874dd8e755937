#include "windows/maps/frmNotePad.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QTextCursor>

#include "maps/note_pads.h"
#include "platform/file_dialog.h"
#include "platform/message_box.h"
#include "state/run_guarded.h"
#include "ui_frmNotePad.h"
#include "windows/common/frm_dialogs.h"
#include "windows/common/window_support.h"
#include "windows/desktop/clipboard.h"

FrmNotePad::FrmNotePad(int slotNumber, const QString& text, QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::FrmNotePad>()), slot(slotNumber) {
  ui->setupUi(this);
  setObjectName(QStringLiteral("frmNotePad"));
  setWindowIcon(Program_Icon(QStringLiteral("note")));
  setFocusProxy(ui->Text1);
  // Results are columns of figures: they stand under each other only in a font of one width.
  QFont fixed(QStringLiteral("Liberation Mono"));
  fixed.setStyleHint(QFont::Monospace);
  fixed.setPointSizeF(font().pointSizeF());
  ui->Text1->setFont(fixed);
  ui->Text1->setLineWrapMode(QPlainTextEdit::NoWrap);
  ui->Text1->setTabStopDistance(8 * QFontMetricsF(fixed).horizontalAdvance(u' '));
  ui->Text1->setPlainText(text);
  ui->Text1->installEventFilter(this);
  connect(ui->Text1->document(), &QTextDocument::modificationChanged, this, [this](bool changed) {
    Set_NotePad_Changed(slot, changed);
    Show_Title();
  });
  Show_Title();
}

FrmNotePad::~FrmNotePad() { Free_NotePad(slot); }

QString FrmNotePad::Text() const { return ui->Text1->toPlainText(); }

void FrmNotePad::Show_Text(const QString& text) {
  if (text != Text()) ui->Text1->setPlainText(text);
}

void FrmNotePad::Show_Title() {
  const QString title = NotePad_Title(slot);
  if (!title.isEmpty() && windowTitle() != title) setWindowTitle(title);
}

void FrmNotePad::Save() {
  if (!Save_NotePad(slot, Text())) return;
  ui->Text1->document()->setModified(false);
  Show_Title();
}

void FrmNotePad::Save_As() {
  if (!Save_NotePad_As(slot, Text())) return;
  ui->Text1->document()->setModified(false);
  Show_Title();
}

void FrmNotePad::Find() {
  const QString chosen = ui->Text1->textCursor().selectedText();
  const auto typed = Input_Box(QStringLiteral("Geben Sie den Suchtext ein:"), QStringLiteral("Text suchen"),
                               chosen.isEmpty() ? wanted : chosen);
  if (!typed || typed->isEmpty()) return;
  wanted = *typed;
  Find_Next();
}

void FrmNotePad::Find_Next() {
  if (wanted.isEmpty()) {
    Find();
    return;
  }
  QTextCursor cursor = ui->Text1->textCursor();
  // From where the selection begins, but a hit that is selected already is passed over.
  const bool onHit = cursor.selectedText().compare(wanted, Qt::CaseInsensitive) == 0;
  const qsizetype at = Find_Text(Text(), wanted, onHit ? cursor.selectionEnd() : cursor.selectionStart());
  if (at < 0) {
    Message_Box(QStringLiteral("Zeichenfolge wurde nicht gefunden."), MsgButtons::Ok, MsgIcon::Information,
                QStringLiteral("Text suchen"));
    return;
  }
  cursor.setPosition(static_cast<int>(at));
  cursor.setPosition(static_cast<int>(at + wanted.size()), QTextCursor::KeepAnchor);
  ui->Text1->setTextCursor(cursor);
  ui->Text1->ensureCursorVisible();
  ui->Text1->setFocus();
}

void FrmNotePad::Cut() { ui->Text1->cut(); }
void FrmNotePad::Copy() { ui->Text1->copy(); }
void FrmNotePad::Paste() {
  if (!Clipboard_Is_Empty()) ui->Text1->paste();
}

// Keys that mean the text here and the map elsewhere.
bool FrmNotePad::Key(int key, Qt::KeyboardModifiers modifiers, bool carryOut) {
  const bool control = modifiers == Qt::ControlModifier;
  void (FrmNotePad::*work)() = nullptr;
  if (control && key == Qt::Key_F) work = &FrmNotePad::Find;
  if (modifiers == Qt::NoModifier && key == Qt::Key_F3) work = &FrmNotePad::Find_Next;
  const bool save = control && key == Qt::Key_S;
  const bool help = modifiers == Qt::NoModifier && key == Qt::Key_F1;
  if (!work && !save && !help) return false;
  if (!carryOut) return true;
  Run_Guarded([&] {
    if (work) (this->*work)();
    if (save) Save();
    if (help) Show_Help(window(), QStringLiteral("Notizen.htm"));
  });
  return true;
}

bool FrmNotePad::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui->Text1 && (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress)) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool press = event->type() == QEvent::KeyPress;
    if (Key(key->key(), key->modifiers(), press)) {
      event->accept();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

bool FrmNotePad::Close_With_Map() { return Close_NotePad(slot, Text(), false); }

void FrmNotePad::closeEvent(QCloseEvent* event) {
  bool closed = !Is_Open_NotePad(slot);
  if (!closed) Run_Guarded([&] { closed = Close_NotePad(slot, Text()); });
  event->setAccepted(closed);
}
