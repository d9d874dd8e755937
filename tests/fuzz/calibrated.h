#pragma once
#include <QByteArrayList>
#include <vector>

#include "state/coordinate_state.h"

inline constexpr int netMapWidth = 3000, netMapHeight = 2200;

// The files of a folder, in order of their names.
QByteArrayList Files_Of(const QString& folder);
// One calibrated map of every kind of net: UTM, degrees, Gauss-Krüger, kilometres.
const std::vector<CoordinateState>& Some_Nets();
// The calibration files they are read from, and more.
QByteArrayList Calibration_Seeds();

// The empty table of a map of that size, opened anew.
void Open_Empty_Table();

struct GpsFile;
// What was read must be sound; it is placed on maps of every kind of net, and now and then imported. False: nothing was
// in it.
bool Take_Gps_File(GpsFile file);
