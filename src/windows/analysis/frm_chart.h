#pragma once
#include <QByteArray>
#include <QImage>
#include <memory>

#include "analysis/diagrams.h"

class QChart;
class QGraphicsScene;
class PageSource;

// Diagrams drawn from their numbers, and as pictures. Names may hold any character.

// `of`: what the diagram is about, for its title; `unit`: of the lengths. Who calls owns the chart.
QChart* Make_Rank_Chart(const std::vector<RankedSpecies>& ranked, const DiversityIndices& indices, const QString& of);
QChart* Make_Accumulation_Chart(const AreaAccumulation& accumulation);
QChart* Make_Nearest_Chart(const NearestDistances& nearest, const QString& unit, const QString& of);

// The scene of a chart view, `scale` pixels for one of its own.
QImage Chart_Image(QGraphicsScene& scene, double scale);
QByteArray Chart_Svg(QGraphicsScene& scene, const QString& title);
// One page as large as it fits, in lines and letters. The scene must live as long.
std::unique_ptr<PageSource> Make_Chart_Page(QGraphicsScene& scene);
