#include "Tools/KmPinDraw.h"

#include "Mesh/Core/PinDrawing.h"

namespace KM::appl {

void Draw(const PIN& mesh) { Draw(mesh, mesh.points); }

void Draw(const PIN& mesh, const std::vector<TPoint<double>>& points) { PinDrawing(mesh, points).Draw(DrawSwitches()); }

}  // namespace KM::appl
