#pragma once

#include <vector>

#include "Facet/HostRecords.h"
#include "KmApi.h"
#include "KmTools.h"

// One polygon of points in space, cut into triangles by `KM::PointsUtils::TriangulateConcavePolygon`. Both entries give
// three indices per triangle, return 0 for success and 1 for failure, and throw nothing.
//
// Without `project` the polygon is seen along Z, and triangles come in the order and the winding of the triangulator. With
// it a polygon that is not level is first turned so that its average plane is level; and then, as the order of the
// triangulator would depend on how the polygon lies in space, each triangle has its indices ascending, whatever its
// winding, and the triangles are in lexicographical order. The host's points stay as they are.

extern "C" {

/// @param points   a list of `KsPoint`; null or empty gives no triangles and 0
/// @param indices  gets a list of 32-bit indices: a new one, the receiver's to delete, if `*indices` is null; otherwise
///                 the list is emptied and filled. Null gives 1.
/// @return         also 1 for items of another size, in either list, and when a service of the host fails; the list then
///                 may hold a part of the indices
KM_API int KmPolyToTri(int project, const KmList* points, KmList** indices);

}  // extern "C"

/// The same on vectors; the indices are added to what `indices` holds. In spite of its name the polygon may be concave.
///
/// @return  1 only when memory is short; `indices` then is as it was
KM_API int KmPolyConvexToTri(int project, const std::vector<KsPoint>& points, std::vector<int>& indices);
