#pragma once
#include <QDialog>
#include <functional>
#include <memory>
#include <optional>

#include "edit/text_font.h"
#include "objects/text_box.h"

namespace Ui {
class FrmSchrift;
}
class FrmTblSymb;

// The font of something that is no entry of the map: where it starts, and who takes it.
struct OtherFont {
  QString title, sample;
  FontChoice start;
  std::function<void(const FontChoice&)> taken;
};

// Font, size, style, angle and background of the entry in hand, of the text being typed or of the next text. The
// preview shows it before it is taken. It stays open beside the map and follows the entry in hand.
class FrmSchrift : public QDialog {
  Q_OBJECT

 public:
  explicit FrmSchrift(QWidget* parent = nullptr, std::optional<OtherFont> other = {});
  ~FrmSchrift() override;
  // Title while this entry is in hand.
  void Set_Caption(const QString& bookmark, const QString& caption);

 private:
  void Fill_Lists();
  void Connect_Controls();
  void Sync();         // entry in hand -> controls
  void Show_Choice();  // shown -> controls
  void Show_Title();
  void Show_Preview();  // controls -> preview
  void Set_Buttons();
  void Rotate();
  void Show_Characters();
  void Take();
  void Put(QChar character);
  bool Check_Numbers();  // false, and a message, if size or angle is no number
  FontChoice Read_Controls() const;
  TextLook Look() const;
  QString Sample() const;

  std::unique_ptr<Ui::FrmSchrift> ui;
  std::optional<OtherFont> other;
  FontChoice shown;
  QString shownFor;  // which target the controls show
  QString captionFor, caption;
  FrmTblSymb* characters = nullptr;
  int syncing = 0;
  int closedListener = 0, stateListener = 0;
};

// Font of the entry in hand or of the next text; stays open beside the map. While that entry is in hand the title is
// the caption.
void Show_frmSchrift(QWidget* parent, const QString& bookmark = {}, const QString& caption = {});
