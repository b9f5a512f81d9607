#pragma once

#include <string>

#include "Bands.h"
#include "Verb.h"

namespace KM::Tool {

/// The options of verbs that make pictures: where to, and from where one looks.
Option PictureFile();
Option ViewPoint();

/// A part from some side, in the colours of the bands its values lie in, with a legend: an SVG that any browser shows, and
/// that needs nothing else.
///
/// @param title  stands above the legend
/// @param view   a unit vector towards the one who looks; Z is up, or Y for a look along Z
/// @param isClosed  then no back of a triangle is to be seen, and none is drawn
///
/// What lies behind is drawn first (painter's algorithm). Triangles that are long in the picture are cut into shorter ones
/// before, so that an order by their middles is the right one but for small errors. Reports progress and can be stopped.
std::string BandPicture(const ValuedTriangles& triangles, const Bands& bands, const std::string& title,
                        const TPoint<double>& view, bool isClosed);

}  // namespace KM::Tool
