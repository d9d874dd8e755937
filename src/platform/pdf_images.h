#pragma once
#include <QByteArray>
#include <QImage>
#include <QString>
#include <vector>

class QPaintDevice;

// Scans in a PDF that is being made. The toolkit stores every picture with three bytes a pixel; one of 256 colours
// keeps its single byte here: a tiny stand-in is painted, and when the file is complete the scan takes its place.
class PdfImages {
 public:
  explicit PdfImages(const QPaintDevice& device);
  ~PdfImages();
  PdfImages(const PdfImages&) = delete;
  PdfImages& operator=(const PdfImages&) = delete;

  // What to paint in place of that part of the picture; a null image where it is to be painted as it is.
  QImage Stand_In(const QImage& picture, const QRect& part);
  // Puts the pictures into the complete file. Error 482 if it is not built as expected, 61 if the disk is full.
  void Put_Into(const QString& path) const;

 private:
  struct Stored {
    QSize size;
    QByteArray palette, pixels;  // RGB of the colours; packed indexes
  };
  QByteArray Object_Of(const Stored& stored, const QByteArray& number) const;

  const QPaintDevice* owner;
  std::vector<Stored> images;
};
// Of the document that is painted on the device; nullptr if it has none.
PdfImages* Pdf_Images_Of(const QPaintDevice* device);
