#pragma once
#include <QString>

// Carries the look of the current entry over to others.

enum class TransferTo { Equals, Similar, Marked };
struct TransferRequest {
  bool font = true, size = true, VG = true, HG = true, RA = true;
  TransferTo to = TransferTo::Equals;
  bool textsOnly = false;
};

// The trimmed text; of a similar one the leading digits go.
QString Transfer_Name(const QString& text, TransferTo to);
// "" if there is a current entry, else what is to be told.
QString Transfer_Refusal();
// One undo point, one transaction; tells the number of changed entries and returns it.
int Transfer_Properties(const TransferRequest& request);
