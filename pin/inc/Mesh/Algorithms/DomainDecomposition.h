#pragma once

#include <string>
#include <vector>

#include "KmApi.h"

namespace KM {

/// Splits an STL file, text or binary, into slabs of equal thickness along one axis: one binary STL file each. The model is
/// never held in memory: the file is read twice, triangle by triangle, first for its box, then to cut each triangle.
///
/// @param file     what to split. The folder that it lies in must be writable, also where the slabs go elsewhere.
/// @param domains  number of slabs. All their files are open at the same time. With 0 or less the file is read and no slab
///                 is written.
/// @param axes     the axes allowed, as a sum: 1 is X, 2 is Y, 4 is Z. Of several the one of greatest extent is taken; of X and
///                 Y with the same extent Y, and Z only if it is greater than the other
/// @param overlap  how far each slab reaches beyond its limits, on both sides, in the unit of the file; what lies in the
///                 overlap is written to both slabs. A negative one leaves gaps between the slabs.
/// @param outBase  beginning of the names of the slabs; if empty, `file` without its extension
/// @return         the names of the slabs, in ascending order: "part.X[2 of 4].stl", or "part.Y[02 of 12].stl" from ten slabs
///                 on. Empty, with no file touched, if `axes` has none of the three, and, with one `Error` in the log, if
///                 `overlap` is no length (not a number, or -infinity)
/// @throws IO::XFileIOError  with one `Error` in the log: the file is not there or cannot be read, its extent is beyond
///                           all numbers, its folder cannot be written, or the disk is full
/// @throws int               1, with one `Error` in the log, where the file of a slab cannot be made, and where it would
///                           replace the input
/// @throws XUserAbort        if the user wants to stop; progress goes to the innermost task that runs, if there is one
///
/// The corners of every triangle, cut or not, are written in ascending order along the axis. The cut takes them so, and slabs
/// are compared byte for byte from release to release: it stays. The price is that nobody can tell any more which side was the
/// outer one. The normals in the file belong to the new order; a mesh of a slab falls into many pieces, since neighbours often
/// run their common edge the same way, which makes no twins, and `FixOrientation` only follows twins. Ask the whole part for
/// what needs sides or connected pieces: volume, normals, solids. Places, boxes and areas are those of the part.
///
/// Where a triangle crosses the limit of a slab it is cut, and what lies in the slab is written as a fan, whose last triangle
/// has no area. A triangle of which a single point lies in a slab gives that slab triangles without area.
///
/// A file that is cut short, has no triangles, or coordinates that are not finite leaves a `Warning`, and the work goes on
/// with what can be read; coordinates that are not finite do not count for the box. After a failure the slabs made so far
/// stay under their names, unfinished: their headers count no triangles. Whoever wants all or none chooses an `outBase` in a
/// folder of its own.
KM_API const std::vector<std::string> DomainDecomposition(const std::string& file, int domains, int axes,
                                                          double overlap, const std::string& outBase);

}  // namespace KM
