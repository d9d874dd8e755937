#pragma once

// The nearest neighbours of every entry of the open map: frmNachbar's "Berechnen".

struct NeighbourOrder {
  int neighbours = 5;     // N, from 1 on
  bool detailed = false;  // every neighbour by its name
};
// Writes the report "Distanz.erg" into the program folder and shows it in a note pad. Where there are not more than N
// entries N is reduced, in `order` too, after the user has agreed. False if no report was written, for whatever reason:
// it was told.
bool Calc_Neighbours(NeighbourOrder& order);
