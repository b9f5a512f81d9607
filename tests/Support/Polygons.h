#pragma once

#include <vector>

#include "Geometry/Point.h"

// Outlines made in code, for tests and benchmarks. All run counter-clockwise, and none repeats its first point.

namespace KM::Test {

using Outline = std::vector<TPoint<double>>;

/// `count` points on a circle of radius 100.
Outline Circle(int count);

/// A band that winds outward `turns` times and comes back along itself.
Outline Spiral(int count, int turns);

/// A circle whose points lie far out and far in by turns.
Outline SpikyStar(int count);

/// A part's outline as a digitiser gives it: a wavy circle, each point on a grid of the given step, with doubled points and
/// straight runs. It is about a fifth as many steps wide as it has points.
Outline Digitised(int count, double step);

/// A comb of `teeth` teeth, four points each, all on a grid.
Outline Comb(int teeth);

/// A square of side 10 with `holes` by `holes` square holes, joined to it by bridges that lead in and, `gap` lower, out again.
Outline KeyHoles(int holes, double gap);

/// A curve of `count` points, there and back: no area at all.
Outline ThereAndBack(int count);

/// Random points of one kind, by the seed: anywhere, on a coarse grid, on a line, not finite. Most cross themselves.
Outline RandomOutline(unsigned seed, int count);

/// A random radius at each of ascending angles: simple, with corners of all kinds.
Outline StarShaped(unsigned seed, int count);

Outline Reversed(Outline outline);

}  // namespace KM::Test
