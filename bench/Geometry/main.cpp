// The geometry kit, function by function. An item is one call unless its line says something else.
// Usage: GeometryBench

#include "Geometry/GeometryBench.h"

int main() {
    KM::Bench::MeasureLines();
    KM::Bench::MeasurePlanes();
    KM::Bench::MeasureSolvers();
}
