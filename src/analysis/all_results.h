#pragma once
#include <QImage>
#include <QStringList>

// All evaluations of the open map at once, without a question: for the program without windows.

struct ResultOrder {
  QString workbook;   // paths
  QString matrixCsv;  // "" = none
  // The report on the nearest neighbours of every entry, in the folder of the workbook; 0 = none.
  int neighbours = 0;
};

struct ResultFiles {
  QStringList sheets;    // written into the workbook: those that the map has something for
  QStringList files;     // paths of all files
  QStringList problems;  // what could not be evaluated; the rest was written all the same
  QString aside;         // where a workbook of the former binary kind was put; "" if there was none
};
// `scan`: the picture of the map, for the colours of the ground. Errors as Write_Sheets_Into and writing files have
// them; what was written before stays.
ResultFiles Write_All_Results(const ResultOrder& order, const QImage& scan);
