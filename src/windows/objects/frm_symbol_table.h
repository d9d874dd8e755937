#pragma once
#include <QPixmap>
#include <QWidget>
#include <vector>

// The 224 characters of a font in a grid: one is picked by a click, or by the arrow keys and Enter.
class SymbolTable : public QWidget {
  Q_OBJECT

 public:
  explicit SymbolTable(QWidget* parent = nullptr);
  // Symbol fonts show their own table, all others the characters of the script.
  void Set_Font(const QString& family, int charset);
  void Select(QChar character);  // of another table: none
  QChar Selected() const;        // null without
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void Picked(QChar character);  // by a click or a key

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Font_Show();  // paints the grid anew
  void Move_To(int index);
  QRect Cell(int index) const;
  int Index_At(QPoint place) const;  // -1 outside

  QString family;
  int charset = 0;
  std::vector<QChar> characters;
  int selected = -1;
  QPixmap rgcard;  // the painted grid
};

// Names of the scripts and their character set numbers, in the order of the lists.
struct Script {
  const char* name;
  int charset;
};
const std::vector<Script>& Scripts();  // in the order of the list
class QComboBox;
// Fills the list, and chooses a number; one without a name gets a line of its own.
void Fill_Scripts(QComboBox& list, int charset);
int Chosen_Script(const QComboBox& list);  // number of the chosen line; 0 without one
// Sizes 8 to 12 and every second up to 72; another one stands in the edit line.
void Fill_Font_Sizes(QComboBox& list, double size);
