#pragma once
#include <QImage>
#include <QString>
#include <memory>

#include "platform/printer.h"
#include "printing/print_map.h"

class QPainter;

// Printing what is no map: a text, a table, a picture.

// Pages that know how many they are on a paper. They draw in units of 1/96 inch from the corner of what can be printed.
class PageSource {
 public:
  virtual ~PageSource() = default;
  virtual int Plan(const Paper& paper) = 0;            // number of pages on that paper
  virtual void Draw(QPainter& painter, int page) = 0;  // from 1
};
// Asks for the pages and prints them, with a progress that can be stopped. Faults are told.
PrintEnd Print_Pages(const QString& title, int orientation, PageSource& source);

// A text in a font of one width, with the title and the number of the page above.
std::unique_ptr<PageSource> Make_Text_Pages(const QString& title, const QString& text);
// A picture as large as it fits onto one page.
std::unique_ptr<PageSource> Make_Picture_Page(const QImage& picture);
void Print_Text(const QString& title, const QString& text);       // both steps in one
void Print_Picture(const QString& title, const QImage& picture);  // lies as the picture lies
