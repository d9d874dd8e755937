#pragma once
#include <QHash>
#include <QRgb>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <variant>
#include <vector>

// One sheet of a workbook as a value: cells with their look, widths, heights. Rows and columns count from 1.

enum class CellAlign { General = 1, Left = 2, Center = 3, Right = 4 };

struct CellStyle {
  QString font = {};  // "" = the standard font of the workbook
  double size = 0;    // points; 0 = the standard size
  bool bold = false, italic = false, underline = false;
  std::optional<QRgb> color = {}, fill = {}, border = {};  // none: as the spreadsheet program has it
  CellAlign align = CellAlign::General;
  bool wrap = false;    // long texts go on in a further line
  QString format = {};  // pattern of a number: "### ### ##0.00"; "" = as it comes
  bool operator==(const CellStyle&) const = default;
};
// For hashes by style; equal styles have the same.
size_t qHash(const CellStyle& style, size_t seed = 0);

// Empty, a number, or a text. A text is never a formula, whatever it begins with.
using CellValue = std::variant<std::monostate, double, QString>;

// Why what stands in a cell that was read is no value: its formula has failed, or was never computed.
enum class CellFlaw : unsigned char { None, Fault, NoResult };

struct CellRange {
  int row1, column1, row2, column2;  // both bounds included
};

class Sheet {
 public:
  static constexpr int maxRow = 1048576, maxColumn = 16384, maxText = 32767;
  struct Cell {
    CellValue value;
    int style = 0;  // index into Styles()
    CellFlaw flaw = CellFlaw::None;
  };
  using Row = std::vector<Cell>;  // from column 1 on

  explicit Sheet(QString sheetName = {}) : name(std::move(sheetName)) {}
  QString name;
  int frozenRows = 0;  // rows at the top that stay in sight

  // Sets the value; the look stays what it is. Of a text control characters vanish, CR and CR LF become LF, which wraps
  // the cell, and what is longer than 32767 characters is cut. A number that is none (NaN) leaves the cell empty.
  // Error 1004 beyond the bounds.
  void Put(int row, int column, CellValue value);
  void Put(int row, int column, CellValue value, const CellStyle& style);
  // For many cells of one look: its number, taken once.
  int Style_Number(const CellStyle& style);
  // Value and look at once; the number is one of Style_Number.
  void Put(int row, int column, CellValue value, int styleNumber);
  // Changes the look of every cell of the range, empty ones too.
  void Change(const CellRange& range, const std::function<void(CellStyle&)>& change);

  const CellValue& Value(int row, int column) const;  // empty beyond the cells that are there
  QString Text(int row, int column) const;            // a number as plain text with "."; "" for an empty cell
  double Number(int row, int column) const;           // 0 if it holds none
  const CellStyle& Style(int row, int column) const;  // that of an empty cell without one
  CellFlaw Flaw(int row, int column) const;           // None beyond the cells that are there
  void Set_Flaw(int row, int column, CellFlaw flaw);  // of a cell that is there

  void SetColumnWidth(int column, double characters) { widths[column] = characters; }
  void SetRowHeight(int row, double points) { heights[row] = points; }
  // Cells shown as one. Their value stands in the first.
  void Merge(const CellRange& range) { merges.push_back(range); }
  void Merge(int row, int column1, int column2) { Merge({row, column1, row, column2}); }
  // Points. Of a row without a given height: room for the lines of its wrapped cells; nothing if it needs none.
  std::optional<double> RowHeight(int row) const;

  int RowCount() const { return static_cast<int>(rows.size()); }
  int ColumnCount() const;  // of the widest row
  const std::vector<Row>& Rows() const { return rows; }
  const std::vector<CellStyle>& Styles() const { return styles; }  // the first is the plain look
  const std::map<int, double>& Widths() const { return widths; }
  const std::vector<CellRange>& Merges() const { return merges; }

 private:
  Cell& At(int row, int column);
  const Cell* Find(int row, int column) const;
  int Lines_Of(int row, int column) const;
  std::vector<Row> rows;
  std::vector<CellStyle> styles{CellStyle()};
  QHash<CellStyle, int> numbers;
  std::map<int, double> widths, heights;
  std::vector<CellRange> merges;
};

// A text as it can stand in a cell.
QString Sheet_Text(QString text);
// "A", "Z", "AA"; "B7".
QString Column_Name(int column);
QString Cell_Name(int row, int column);  // rows and columns from 1
// Whether a sheet can have this name: 1 to 31 characters, none of []:*?/\ and no control character, no "'" at its ends.
bool Is_Sheet_Name(const QString& name);
